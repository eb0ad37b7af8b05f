// Status: whether a change of a scene succeeded, and the reason if it failed.
#pragma once

#include <cstdint>

#include <vsa/foundation/api.h>

namespace vsa {

/// The reason why a change failed. A change that fails has no effect, except after OutOfMemory: see
/// edit.h.
enum class EditError : std::uint8_t {
  /// The change succeeded.
  None,
  // The change is not possible for this node or input.
  Missing,           ///< The node or input does not exist.
  Removed,           ///< The node or input was removed from its scene.
  OtherScene,        ///< The node belongs to another scene.
  NotAnArray,        ///< The change requires an array, and the input is not an array.
  NotAnObject,       ///< The change requires an object, and the input has another type.
  OtherElementType,  ///< The elements of the array have another type.
  NotDeclared,       ///< The type of the node is declared and has no such input or output.
  DeclaredType,      ///< The type of the node declares another type for this input.
  TakesNoValue,      ///< The type of the node declares that this input accepts links only.
  TooDeep,           ///< The nesting level of the input would exceed the depth limit of the scene.
  TooMany,           ///< The array would have more than 2^32 - 1 elements, or the scene more than
                     ///< 2^32 - 1 nodes or names of outputs.
  // No text can represent the result.
  BadName,       ///< The name is not an identifier, or it is true, false or null: see isName
                 ///< and, for outputs, isOutputName.
  NameTaken,     ///< The scene has a node with this name.
  FormerName,    ///< The type declares the name as a former name of another input or output.
  PlusInfinity,  ///< The Real is plus infinity. A text can contain it only in lists and buffers.
  NotANumber,    ///< A number is a NaN that no text can represent: see checkReal and checkNumbers.
  NulCharacter,  ///< The string, the comment or the time contains a NUL.
  BadElementType,  ///< Arrays cannot have this element type. For references, use the type Null.
  /// Buffers cannot have this type. Or the change would add elements without a buffer to an array
  /// of buffers.
  BadBufferType,
  /// The bytes or numbers do not fill whole elements, or the type of the numbers is not that of the
  /// buffer's elements. Or Input::setBuffer got a null pointer as the memory of elements, or a
  /// count that is too large.
  BufferSize,
  BadComment,         ///< The comment contains a line end or a byte 0xFF.
  BadVersionComment,  ///< The comment contains "version:", but its first ":" is not followed by an
                      ///< integer from 0 to 2^64 - 1.
  /// The time begins or ends with white space, or it contains a line end, a byte 0xFF or
  /// "version:".
  BadTime,
  OutOfMemory,  ///< Memory could not be allocated.
};

/// Returns the stable name of an error in kebab case, such as "bad-name". Returns "unknown" for any
/// other number. The result is never null.
VSA_API const char* name(EditError error) noexcept;

/// Whether a change succeeded, and the reason if it failed. It is a plain value.
class [[nodiscard]] Status {
 public:
  /// Success.
  constexpr Status() noexcept = default;
  /// The status for this error; success for EditError::None.
  constexpr Status(EditError error) noexcept
      : error_(error) {}  // implicit, for `return EditError::Missing;`

  /// Whether the change succeeded.
  constexpr explicit operator bool() const noexcept { return error_ == EditError::None; }
  /// The reason of the failure, or EditError::None.
  constexpr EditError error() const noexcept { return error_; }
  /// The reason as a sentence for people. It is empty after a success. The result is never null.
  VSA_API const char* message() const noexcept;
  /// Throws an exception if the change failed: std::bad_alloc for OutOfMemory, and
  /// std::invalid_argument with the message for any other error.
  VSA_API void orThrow() const;

  friend constexpr bool operator==(Status, Status) noexcept = default;

 private:
  EditError error_ = EditError::None;
};

}  // namespace vsa
