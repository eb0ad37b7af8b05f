// TextTable: a table of text with aligned columns.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

namespace vsa_tools {

/// Rows of cells in aligned columns. Blanks at the end of a line are removed.
class TextTable {
 public:
  enum class Align { Left, Right };

  explicit TextTable(std::vector<Align> columns) : columns_(std::move(columns)) {}

  /// Adds a row with at most as many cells as there are columns. Cells must be UTF-8.
  void add(std::vector<std::string> cells) { rows_.push_back(std::move(cells)); }
  /// Returns all rows, each with a line feed, and with two blanks between columns.
  std::string text() const;

 private:
  std::vector<Align> columns_;
  std::vector<std::vector<std::string>> rows_;
};

}  // namespace vsa_tools
