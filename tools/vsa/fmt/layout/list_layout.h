// ListLayout: chooses the line breaks in the lists of a formatted text.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "tools/vsa/fmt/layout/output_buffer.h"

namespace vsa_tools {

/// The number of columns that a line of numbers does not exceed. Exceptions: a line that has a
/// fixed number of numbers (see ListShape), or only one number. Other lines may be longer, too.
inline constexpr std::size_t FORMATTED_WIDTH = 120;

/// The arrangement of the elements of a list that does not fit into one line.
struct ListShape {
  /// The number of numbers in each line. 0 means as many as fit.
  std::size_t numbersPerLine = 0;
  /// The number of lines of each matrix, whose columns are aligned. 0 means that the list has no
  /// matrices. A list of matrices has several lines, unless it has only one number.
  std::size_t matrixRows = 0;
};

/// Returns the shape of the list in `keyword(...)`.
ListShape shapeOfTuple(std::string_view keyword);
/// Returns the shape of the list in `keyword[count] {...}`.
ListShape shapeOfBuffer(std::string_view keyword);

/// Writes lists, one after another, number by number. Keeps at most one line or matrix in memory.
class ListLayout {
 public:
  explicit ListLayout(OutputBuffer& out) : out_(out) {}

  /// Begins a list with its opening bracket. `indent` is the indentation of the statement, at most
  /// 14 blanks.
  void begin(char open, const ListShape& shape, std::size_t indent);
  /// Adds a number. If `continues` is true, appends the characters to the last number instead.
  void add(std::string_view text, bool continues);
  /// Adds the numbers that plainNumbers() returned. At least one more number must follow.
  void addNumbers(std::string_view numbers);
  /// Ends the list with its closing bracket. `blank` adds a blank and a comma before the bracket,
  /// "(1 ,)": the normalized list then ends with a blank.
  void end(char close, bool blank);

 private:
  void finishNumber();
  void addWhole(std::string_view number);
  bool putRun(std::string_view& numbers);
  std::size_t roomInLine(bool isNewLine) const;
  void place(std::string_view number);
  void placeOnLine(std::string_view number);
  void placeInLines(std::string_view number);
  void breakList();
  void spill();
  void putMatrix();

  OutputBuffer& out_;
  ListShape shape_;
  std::size_t indent_ = 0;
  bool isBroken_ = false;
  // Whether the last number is too long for `number_` and is written in parts.
  bool isSpilled_ = false;
  bool hasNumber_ = false;  // whether there is a last number, in `number_` or already written
  std::size_t count_ = 0;   // how many numbers were placed
  std::size_t inLine_ = 0;  // how many numbers are in the current line of a broken list
  std::string number_;      // the last number, which may continue
  std::string line_;        // the numbers before `number_` while the list is not broken
  std::vector<std::string> cells_;  // the numbers of an incomplete matrix
  std::size_t cellCount_ = 0;
};

}  // namespace vsa_tools
