// Shortening of the names and values that messages quote: the library quotes them in full, at any
// length.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include <vsa/reading/read_diagnostic.h>

namespace vsa_tools {

/// Quoted parts up to this length are printed in full.
inline constexpr std::size_t MAX_QUOTED_BYTES = 200;

/// `text`, or its beginning and its end with the number of bytes left out between them: "aaaa[...
/// 1840 bytes ...]aaaa". UTF-8 characters are not split.
std::string shortened(std::string_view text);

/// The message with each of its arguments shortened. A message that is not in the table of
/// diagnostics, or that comes without its arguments, is shortened as a whole.
std::string withShortQuotes(const vsa::Diagnostic& diagnostic);

}  // namespace vsa_tools
