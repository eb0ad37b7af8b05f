// The rules for what a text can contain: names, numbers, strings, buffers, comments and times.
// Node, Input and Scene check these rules before each change. A program can check them, too.
#pragma once

#include <cstddef>
#include <span>

#include <vsa/edit_status.h>
#include <vsa/foundation/api.h>
#include <vsa/text_parameter.h>
#include <vsa/values/value_types.h>

namespace vsa {

/// Whether `text` can be the name of a node, a node type, an input or a member. A name begins with
/// a letter or "_". Letters, digits and "_" follow. All bytes from 0x80 to 0xFE are letters. The
/// words "true", "false" and "null" in any letter case are no names.
VSA_API bool isName(TextParameter text) noexcept;

/// Whether `text` can be the name of an output in a connection. It is a name as in isName, and
/// bracket lists may follow it. They are a part of the name, as in "colors[2]". Between their
/// brackets, digits, "*", "[", white space and unprintable bytes other than NUL and 0xFF are
/// allowed. There may be nothing between them.
VSA_API bool isOutputName(TextParameter text) noexcept;

/// Checks the value of a Real. Returns None, PlusInfinity or NotANumber. Minus infinity is allowed.
/// Only one NaN is allowed: "-nan", with the bits 0xFFF8000000000000.
VSA_API Status checkReal(double value) noexcept;

/// Checks the numbers of a tuple. Returns None or NotANumber. Both infinities are allowed. Two NaNs
/// are allowed: the NaN of checkReal and the same NaN with the sign bit 0.
VSA_API Status checkNumbers(std::span<const double> numbers) noexcept;

/// Checks the characters of a string. Returns None or NulCharacter. All bytes except NUL are
/// allowed.
VSA_API Status checkString(TextParameter text) noexcept;

/// Checks whether a buffer of this type can contain these bytes. Returns None, BadBufferType,
/// BufferSize if the bytes do not fill whole elements, or NotANumber if a number is a NaN that
/// checkNumbers rejects. For floats and doubles, the time is proportional to the number of bytes,
/// because each number may be a NaN.
VSA_API Status checkBuffer(ElementType type, std::span<const std::byte> bytes) noexcept;

/// Checks a comment with or without its "#". Returns None, BadComment, NulCharacter,
/// BadVersionComment or OutOfMemory.
VSA_API Status checkComment(TextParameter comment) noexcept;

/// Checks a time. Returns None, NulCharacter or BadTime. An empty time is allowed and means no
/// time.
VSA_API Status checkTime(TextParameter time) noexcept;

}  // namespace vsa
