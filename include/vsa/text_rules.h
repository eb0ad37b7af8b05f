// The rules for names, numbers, strings, buffers and comments that a text can represent. Node,
// Input and Scene check them before each change; a program can check them before that.
#pragma once

#include <cstddef>
#include <span>

#include <vsa/edit_status.h>
#include <vsa/foundation/api.h>
#include <vsa/text_parameter.h>
#include <vsa/values/value_types.h>

namespace vsa {

/// Whether a node, a node type, an input or a member can have this name: a letter (bytes
/// from 0x80 to 0xFE are letters) or "_", then letters, digits and "_", and not "true", "false" or
/// "null" in any letter case.
VSA_API bool isName(TextParameter text) noexcept;

/// Whether an output can have this name in a connection: a name as in isName, followed by any
/// number of bracket lists, which are part of the name: "color", "colors[2]".
VSA_API bool isOutputName(TextParameter text) noexcept;

/// Checks the value of a Real. Returns None, PlusInfinity or NotANumber. The only NaN that a text
/// can have outside of lists is "-nan", with the bits 0xFFF8000000000000.
VSA_API Status checkReal(double value) noexcept;

/// Checks the numbers of a tuple. Returns None or NotANumber. In lists, the NaN of checkReal is
/// allowed with either sign; no other NaN is allowed.
VSA_API Status checkNumbers(std::span<const double> numbers) noexcept;

/// Checks the characters of a string. Returns None or NulCharacter. Any byte but NUL is allowed.
VSA_API Status checkString(TextParameter text) noexcept;

/// Checks a buffer with these bytes. Returns None, BadBufferType, BufferSize or NotANumber. For
/// floats and doubles, takes time proportional to the number of bytes.
VSA_API Status checkBuffer(ElementType type, std::span<const std::byte> bytes) noexcept;

/// Checks a comment with or without its "#". Returns None, BadComment, NulCharacter or
/// BadVersionComment.
VSA_API Status checkComment(TextParameter comment) noexcept;

/// Checks a time. Returns None, NulCharacter or BadTime. An empty time is allowed: it means that
/// there is no time.
VSA_API Status checkTime(TextParameter time) noexcept;

}  // namespace vsa
