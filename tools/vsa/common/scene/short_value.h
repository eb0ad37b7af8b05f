// Functions that return values as short text for people, similar to the notation of the format.
// Long lists and strings are shortened.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include <vsa/view.h>

namespace vsa_tools {

/// Returns the first characters of `text`, at most `capacity`, escaped by printable(). Backslashes
/// are doubled, as in the strings of the format, so an escape differs from a backslash of the text.
/// "..." follows if `text` is longer. Reads only the beginning of `text`, at most 4 bytes for each
/// character of `capacity`.
std::string shortText(std::string_view text, std::size_t capacity = 60);

/// Returns the value of an input on one line, escaped for terminals. At most four numbers or
/// elements are shown. Examples: `2.5`, `"red"`, `vec3(0 1 2)`, `vec3f[24049] 0.1 0.9 0 0.2 ...`,
/// `real[3] 1.0 2.0 3.0`, `{4 members}`, and for a reference the name of its node or `null`.
std::string shortValue(vsa::InputView input);

/// Returns the output that the input is connected to, such as `dusk.outColor`. Returns an empty
/// text if the input has no connection.
std::string shortConnection(vsa::InputView input);

/// Returns the element of the buffer at `index`: `0.1`, or `(0 1 2)` if an element has several
/// numbers. At most four of them are shown.
std::string shortElement(const vsa::BufferView& buffer, std::uint64_t index);

}  // namespace vsa_tools
