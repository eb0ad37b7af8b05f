// Messages quote names and values of a text in full, and they may have any length. A command
// shortens them.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include <vsa/reading/read_diagnostic.h>

namespace vsa_tools {

/// Quoted parts up to this length are printed in full.
inline constexpr std::size_t MAX_QUOTED_BYTES = 200;

/// `text`, or its beginning and its end with the number of bytes left out between them:
/// "aaaa[... 1840 bytes ...]aaaa". Characters of UTF-8 stay whole.
std::string shortened(std::string_view text);

/// The message with each part that is quoted from the text shortened. The other words of the
/// message are found by the format of the diagnostic.
std::string withShortQuotes(vsa::DiagnosticId id, std::string_view message);

}  // namespace vsa_tools
