// PathSteps: the steps in the path of an assignment or connection. The path "keys[0].time" has the
// steps "keys", "[0]" and "time".
#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

namespace vsa_tools {

class PathSteps {
 public:
  /// `path` must be the path of a vsa::StatementOutline.
  explicit PathSteps(std::string_view path) : rest_(path) {}

  /// Stores the next step, which is a name, or an index with its brackets. Returns false at the end
  /// of the path.
  bool next(std::string_view& step);
  /// Returns the part of the path after the last step. It begins with the period or bracket of the
  /// next step.
  std::string_view rest() const { return rest_; }

 private:
  void skipWhite();

  std::string_view rest_;
};

inline bool isIndex(std::string_view step) {
  return step.starts_with('[');
}

/// Returns whether an index is "[*]", possibly with blanks.
inline bool isStar(std::string_view index) {
  return index.find('*') != std::string_view::npos;
}

/// Returns the number in an index, or nothing if it has none. Returns 0 for a number that exceeds
/// 64 bits.
std::optional<std::uint64_t> numberIn(std::string_view index);

/// Returns the last name in a path, or an empty text if it has none. It is the name of the input or
/// member that the statement assigns, or of the array whose element it assigns.
std::string_view lastName(std::string_view path);

}  // namespace vsa_tools
