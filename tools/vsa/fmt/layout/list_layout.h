// The line breaks in the lists of a formatted text.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "tools/vsa/fmt/layout/output_buffer.h"

namespace vsa_tools {

/// The maximum columns of a line with numbers. Other lines are not broken.
inline constexpr std::size_t FORMATTED_WIDTH = 120;

/// How the elements of a list are arranged when it does not fit one line.
struct ListShape {
  /// The number of numbers in each line; 0 for as many as fit.
  std::size_t numbersPerLine = 0;
  /// The number of lines of one matrix, whose columns are aligned; 0 if the list has no matrices. A
  /// list of matrices is always broken.
  std::size_t matrixRows = 0;
};

/// The shape of `keyword(...)`.
ListShape shapeOfTuple(std::string_view keyword);
/// The shape of `keyword[count] {...}`.
ListShape shapeOfBuffer(std::string_view keyword);

/// Writes one list after another, number by number. Needs memory for one line or matrix.
class ListLayout {
 public:
  explicit ListLayout(OutputBuffer& out) : out_(out) {}

  /// Begins a list with its opening bracket. `indent` is that of the statement.
  void begin(char open, const ListShape& shape, std::size_t indent);
  /// Appends characters to the last number, or, without `continues`, begins a new number with them.
  void add(std::string_view text, bool continues);
  /// Appends the result of plainNumbers(). At least one more number must follow.
  void addNumbers(std::string_view numbers);
  /// Ends the list. With `blank`, a blank precedes the bracket: "(1 )".
  void end(char close, bool blank);

 private:
  void finishNumber();
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
  bool isSpilled_ = false;  // whether the last number is too long for `number_`: written at once
  bool hasNumber_ = false;  // whether there is a last number, in `number_` or written already
  std::size_t count_ = 0;   // the count of numbers that were placed
  std::size_t inLine_ = 0;  // the count of numbers in the current line of a broken list
  std::string number_;      // the last number, which may continue
  std::string line_;        // the numbers before `number_`, until the list is broken
  std::vector<std::string> cells_;  // the cells of a matrix that is not complete
  std::size_t cellCount_ = 0;
};

}  // namespace vsa_tools
