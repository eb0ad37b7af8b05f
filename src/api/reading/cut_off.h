// Whether a text ends inside a statement. Internal.
#pragma once

#include "vsa/parser.h"

namespace vsa {

/// Whether the text ends inside the statement at which the parser has stopped, and the tokens of
/// the statement so far match the grammar. The end is often some tokens after the one that the
/// parser stopped at: it looks at three tokens before it consumes the first.
bool endsInsideStatement(const zn::korvo_sdk::impl::VsaParser& parser);

}  // namespace vsa
