// Status: whether a change of a scene was made, and if not, why.
#pragma once

#include <cstdint>

#include <vsa/foundation/api.h>

namespace vsa {

/// Why a change was refused. A refused change changes nothing, except after OutOfMemory: see
/// edit.h.
enum class EditError : std::uint8_t {
  None,
  // The change does not fit the node or input.
  Missing,           ///< The node or input does not exist.
  Removed,           ///< The node or input was removed from its scene.
  OtherScene,        ///< The link is to a node of another scene.
  NotAnArray,        ///< The change needs an array, and the input is not an array.
  NotAnObject,       ///< The change needs an object, and the input has another type.
  OtherElementType,  ///< The elements of the array have another type.
  NotDeclared,       ///< The node's type is declared and has no such input or output.
  DeclaredType,      ///< The node's type declares another type for this input.
  TakesNoValue,      ///< The node's type declares that this input takes links only.
  TooDeep,           ///< The input would exceed the depth limit of the scene.
  TooMany,           ///< The array would have more than 2^32 - 1 elements.
  // The change needs something that no text can represent.
  BadName,            ///< The name is not an identifier, or is true, false or null: see isName.
  NameTaken,          ///< There is a node of that name.
  FormerName,         ///< The node's type declares the name as a former name of something else.
  PlusInfinity,       ///< The Real is plus infinity. Only lists and buffers can contain it.
  NotANumber,         ///< A NaN that no text can produce: see checkReal and checkNumbers.
  NulCharacter,       ///< The string, the comment or the time contains a NUL.
  BadElementType,     ///< Arrays cannot have this element type. For references, use a Null array.
  BadBufferType,      ///< Buffers cannot have this type, or the array element needs a buffer.
  BufferSize,         ///< The memory is not whole elements, or the numbers have another type.
  BadComment,         ///< The comment contains a line end or a byte 0xFF.
  BadVersionComment,  ///< The comment contains "version:" and no number after its first ":".
  /// The time has white space at its beginning or end, or contains a line end, a byte 0xFF or
  /// "version:".
  BadTime,
  OutOfMemory,  ///< Memory could not be allocated.
};

/// The stable name of an error in kebab case: "bad-name". Never null; "unknown" for a value that is
/// not in the enumeration.
VSA_API const char* name(EditError error) noexcept;

/// Whether a change was made, and if not, why. A plain value.
class [[nodiscard]] Status {
 public:
  constexpr Status() noexcept = default;
  constexpr Status(EditError error) noexcept
      : error_(error) {}  // implicit: `return EditError::...`

  /// Whether the change was made.
  constexpr explicit operator bool() const noexcept { return error_ == EditError::None; }
  constexpr EditError error() const noexcept { return error_; }
  /// The reason as a sentence for people; empty after a success. Never null.
  VSA_API const char* message() const noexcept;
  /// For programs that prefer exceptions: throws std::bad_alloc for OutOfMemory and
  /// std::invalid_argument with the message for any other error.
  VSA_API void orThrow() const;

  friend constexpr bool operator==(Status, Status) noexcept = default;

 private:
  EditError error_ = EditError::None;
};

}  // namespace vsa
