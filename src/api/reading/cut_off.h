// Detects whether a text ends inside a statement. Internal.
#pragma once

#include "vsa/parser.h"

namespace vsa {

/// Returns true if the text ends inside the statement at which the parser has stopped. Returns
/// false if a token of the statement before the end does not match the grammar. The parser has
/// three tokens of lookahead, so it may stop up to three tokens before the end of the text.
bool endsInsideStatement(const zn::korvo_sdk::impl::VsaParser& parser);

}  // namespace vsa
