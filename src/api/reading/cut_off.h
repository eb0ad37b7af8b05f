// Detects whether a text ends inside a statement. Internal.
#pragma once

#include "vsa/parser.h"

namespace vsa {

/// Call this function after the parser has stopped inside a statement. Returns true if the text
/// ends inside this statement. Returns false if the statement contains an error before that: a
/// token that does not match the grammar. The parser has three tokens of lookahead, so it may stop
/// up to three tokens before the end of the text.
bool endsInsideStatement(const zn::korvo_sdk::impl::VsaParser& parser);

}  // namespace vsa
