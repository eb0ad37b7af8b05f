// Status: whether a change of a scene was made, and if not, why.
#pragma once

#include <cstdint>

#include <vsa/foundation/api.h>

namespace vsa {

/// Why a change was refused. Nothing has changed then.
enum class EditError : std::uint8_t {
  None,
  // The place.
  Missing,           ///< The node or input does not exist.
  Removed,           ///< The node or input was removed from its scene.
  OtherScene,        ///< A link to a node of another scene.
  NotAnArray,        ///< Elements for an input that is no array.
  NotAnObject,       ///< Members for an input that holds something else.
  OtherElementType,  ///< An element of an array holds the array's element type and nothing else.
  NotDeclared,       ///< The node's type is declared and has no such input or output.
  DeclaredType,      ///< The node's type declares another type for this input.
  TakesNoValue,      ///< The node's type declares that this input takes links only.
  TooDeep,           ///< Beyond the scene's depth limit.
  TooMany,           ///< More than 2^32 - 1 elements.
  // What the text format cannot carry.
  BadName,            ///< Not a letter or "_", then letters, digits and "_"; or true, false, null.
  NameTaken,          ///< There is a node of that name.
  FormerName,         ///< The node's type declares it as a former name of something else.
  PlusInfinity,       ///< A Real that is plus infinity; lists and buffers can have it.
  NotANumber,         ///< A NaN with other bits than a text gives it; a Real needs the sign, too.
  NulCharacter,       ///< A string, a comment or a time with a NUL.
  BadElementType,     ///< An array of nodes (a Null array takes them), or a type that none is.
  BadBufferType,      ///< A buffer of Null, Bool, Ptr, Xform, Aabb or Obb.
  BufferSize,         ///< Memory that is not a whole number of elements, or numbers of other types.
  BadComment,         ///< A comment with a line end or a byte 0xFF.
  BadVersionComment,  ///< A comment that contains "version:" and names no number after its first
                      ///< ":".
  BadTime,  ///< A time with white space at its ends, a line end, a byte 0xFF or "version:".
  // The machine.
  OutOfMemory,
};

/// The stable name of an error in kebab case: "bad-name". Never null; "unknown" for a value that is
/// none of the enumeration.
VSA_API const char* name(EditError error) noexcept;

/// What became of a change. A plain value.
class [[nodiscard]] Status {
 public:
  constexpr Status() noexcept = default;
  constexpr Status(EditError error) noexcept
      : error_(error) {}  // implicit: `return EditError::...`

  /// Whether the change was made.
  constexpr explicit operator bool() const noexcept { return error_ == EditError::None; }
  constexpr EditError error() const noexcept { return error_; }
  /// One sentence for people; empty after a success. Never null.
  VSA_API const char* message() const noexcept;
  /// For programs that prefer exceptions: throws std::bad_alloc for OutOfMemory and
  /// std::invalid_argument with the message for any other error.
  VSA_API void orThrow() const;

  friend constexpr bool operator==(Status, Status) noexcept = default;

 private:
  EditError error_ = EditError::None;
};

}  // namespace vsa
