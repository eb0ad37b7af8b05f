// PathSteps: the steps of the path of an assignment or connection, such as "keys", "[0]" and "time"
// of "keys[0].time".
#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

namespace vsa_tools {

class PathSteps {
 public:
  /// `path` is the path of a vsa::StatementOutline.
  explicit PathSteps(std::string_view path) : rest_(path) {}

  /// Stores the next step: a name, or an index with its brackets. Returns false at the end of the
  /// path.
  bool next(std::string_view& step);
  /// The rest of the path after the last step, including the period or bracket before the next
  /// step.
  std::string_view rest() const { return rest_; }

 private:
  void skipWhite();

  std::string_view rest_;
};

inline bool isIndex(std::string_view step) {
  return step.starts_with('[');
}

/// Whether an index is "[*]".
inline bool isStar(std::string_view index) {
  return index.find('*') != std::string_view::npos;
}

/// The number in an index; nothing if it has none.
std::optional<std::uint64_t> numberIn(std::string_view index);

/// The last name of a path: that of the input or member that is assigned to.
std::string_view lastName(std::string_view path);

}  // namespace vsa_tools
