// Detects whether a text ends inside a statement. Internal.
#pragma once

#include "vsa/parser.h"

namespace vsa {

/// Returns whether the text ends inside the statement at which the parser has stopped. The tokens
/// of the statement before the end must match the grammar. The parser has three tokens of
/// lookahead, so the end of the text may be up to three tokens after the token at which it stopped.
bool endsInsideStatement(const zn::korvo_sdk::impl::VsaParser& parser);

}  // namespace vsa
