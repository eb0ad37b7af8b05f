// Values as short text for people, in the notation of the format; long lists are shortened.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include <vsa/view.h>

namespace vsa_tools {

/// At most `capacity` characters of `text`, escaped by printable(), then "..." if `text` was
/// longer. Reads only the part of the text that it returns.
std::string shortText(std::string_view text, std::size_t capacity = 60);

/// The value of an input on one line: `2.5`, `"red"`, `vec3(0 1 2)`, `vec3f[24049] 0.1 0.9 ...`,
/// `real[3] 1.0 2.0 3.0`, `{4 members}`, or the name of the node that it refers to. Safe for
/// terminals.
std::string shortValue(vsa::InputView input);

/// The output that the input is connected to: `dusk.outColor`; empty if it has no connection.
std::string shortConnection(vsa::InputView input);

/// The numbers of the buffer's element at `index`: `0.1`, or `(0 1 2)` for an element of several
/// numbers.
std::string shortElement(const vsa::BufferView& buffer, std::uint64_t index);

}  // namespace vsa_tools
