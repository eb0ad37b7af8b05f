// Functions that shorten the names and values in messages. The library puts names and values of any
// length into messages.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include <vsa/reading/read_diagnostic.h>

namespace vsa_tools {

/// The maximum number of bytes of a name or value that is printed without being shortened.
inline constexpr std::size_t MAX_QUOTED_BYTES = 200;

/// Returns `text`, shortened if it is longer than MAX_QUOTED_BYTES. About 120 bytes of its
/// beginning and 60 of its end remain, with the number of omitted bytes between them: "aaaa[...
/// 1840 bytes ...]aaaa". No UTF-8 character is split.
std::string shortened(std::string_view text);

/// Returns the message of a diagnostic. If it is longer than MAX_QUOTED_BYTES, each of its
/// arguments is shortened. If the diagnostic does not have the arguments of its row in the table of
/// diagnostics, the message is shortened as a whole. If it is not in that table, the message is
/// shortened as a whole if it is longer than 500 bytes.
std::string withShortQuotes(const vsa::Diagnostic& diagnostic);

}  // namespace vsa_tools
