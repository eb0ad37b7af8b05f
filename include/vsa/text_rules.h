// What the text format can carry, as functions that a program can ask before it puts something into
// a scene. Node and Input ask them.
#pragma once

#include <cstddef>
#include <span>

#include <vsa/edit_status.h>
#include <vsa/foundation/api.h>
#include <vsa/text_parameter.h>
#include <vsa/value_types.h>

namespace vsa {

/// Whether a node, a node type, an input or a member can have this name: a letter (bytes
/// from 0x80 to 0xFE are letters) or "_", then letters, digits and "_", and not "true", "false" or
/// "null" in any letter case.
VSA_API bool isName(TextParameter text) noexcept;

/// Whether a connection can name an output so: a name, and then any number of bracket lists, which
/// are a part of it: "color", "colors[2]".
VSA_API bool isOutputName(TextParameter text) noexcept;

/// None, PlusInfinity or NotANumber. Texts have one NaN outside of lists, with the sign bit set
/// ("-nan": 0xFFF8000000000000).
VSA_API Status checkReal(double value) noexcept;

/// None or NotANumber: of the numbers of tuples. Lists have that NaN with either sign.
VSA_API Status checkNumbers(std::span<const double> numbers) noexcept;

/// None or NulCharacter. Any other byte can be in a string.
VSA_API Status checkString(TextParameter text) noexcept;

/// None, BadBufferType, BufferSize or NotANumber: of a buffer with these bytes. Takes time
/// proportional to the bytes of a buffer of floats or doubles.
VSA_API Status checkBuffer(ElementType type, std::span<const std::byte> bytes) noexcept;

/// None, BadComment, NulCharacter or BadVersionComment. The comment is one line, with or without
/// its "#".
VSA_API Status checkComment(TextParameter comment) noexcept;

/// None, NulCharacter or BadTime. An empty time is allowed: it means that there is no time.
VSA_API Status checkTime(TextParameter time) noexcept;

}  // namespace vsa
