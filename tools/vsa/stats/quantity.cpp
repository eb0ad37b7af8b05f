#include "tools/vsa/stats/quantity.h"

#include <fmt/format.h>

namespace vsa_tools {

std::string countText(std::uint64_t count) {
  std::string text = std::to_string(count);
  for (std::size_t at = text.size(); at > 3; at -= 3) text.insert(at - 3, ",");
  return text;
}

std::string sizeText(std::uint64_t bytes) {
  if (bytes < 1000) return std::to_string(bytes) + " B";
  const char* unit = "KMGTPE";
  double size = static_cast<double>(bytes) / 1000;
  while (size >= 999.95) {
    size /= 1000;
    ++unit;
  }
  return fmt::format("{:.1f} {}B", size, *unit);
}

std::string shareText(std::uint64_t part, std::uint64_t whole) {
  if (whole == 0) return "-";
  return fmt::format("{:.1f} %", 100 * static_cast<double>(part) / static_cast<double>(whole));
}

}  // namespace vsa_tools
