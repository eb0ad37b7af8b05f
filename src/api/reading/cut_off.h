// Determines whether a text ends inside a statement. Internal.
#pragma once

#include "vsa/parser.h"

namespace vsa {

/// Whether the text ends inside the statement at which the parser has stopped, and the tokens of
/// the statement so far match the grammar. The end of the text may be up to three tokens after the
/// token at which the parser stopped, because the parser has three tokens of lookahead.
bool endsInsideStatement(const zn::korvo_sdk::impl::VsaParser& parser);

}  // namespace vsa
