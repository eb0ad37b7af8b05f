// JsonValue: a JSON text in memory, and the function that creates it. Internal.
#pragma once

#include <cstddef>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

namespace vsa {

struct JsonMember;

/// A JSON value, with the offset of its first byte in the text.
struct JsonValue {
  enum class Kind { Null, Bool, Number, String, Array, Object };

  Kind kind = Kind::Null;
  std::size_t offset = 0;
  bool boolean = false;
  double number = 0;
  std::string text;  ///< The characters of a string.
  std::vector<JsonValue> elements;
  /// The members of an object, in the order of the text. No name occurs twice.
  std::vector<JsonMember> members;
};

struct JsonMember {
  std::string name;
  JsonValue value;
};

/// The reason why a text is invalid, and the offset of the problem.
class JsonError : public std::runtime_error {
 public:
  JsonError(std::size_t offset, const std::string& message)
      : std::runtime_error(message), offset_(offset) {}
  std::size_t offset() const noexcept { return offset_; }

 private:
  std::size_t offset_;
};

/// Reads a text that contains one JSON value (RFC 8259). Throws JsonError if the text is invalid. A
/// repeated name in an object, a number that is too large for a double, an escape sequence that is
/// only half of a surrogate pair, and a value inside more than 32 objects and arrays are invalid,
/// too.
JsonValue readJson(std::string_view text);

}  // namespace vsa
