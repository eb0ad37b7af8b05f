#include "tools/vsa/stats/text_table.h"

#include <algorithm>

namespace vsa_tools {

namespace {

/// Returns the number of characters: counts only the first byte of each character.
std::size_t widthOf(const std::string& cell) {
  return static_cast<std::size_t>(
      std::count_if(cell.begin(), cell.end(), [](char c) { return (c & 0xC0) != 0x80; }));
}

}  // namespace

std::string TextTable::text() const {
  std::vector<std::size_t> widths(columns_.size(), 0);
  for (const auto& row : rows_) {
    for (std::size_t i = 0; i < row.size(); ++i) widths[i] = std::max(widths[i], widthOf(row[i]));
  }
  std::string text;
  for (const auto& row : rows_) {
    std::string line;
    for (std::size_t i = 0; i < row.size(); ++i) {
      const std::string padding(widths[i] - widthOf(row[i]), ' ');
      if (i > 0) line += "  ";
      line += columns_[i] == Align::Right ? padding + row[i] : row[i] + padding;
    }
    line.erase(line.find_last_not_of(' ') + 1);
    text += line + '\n';
  }
  return text;
}

}  // namespace vsa_tools
