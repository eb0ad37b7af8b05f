// Whether a text ends inside a statement. Internal.
#pragma once

#include "vsa/parser.h"

namespace vsa {

/// Whether the text ends inside the statement at which the parser has stopped, and all that it has
/// of the statement fits the grammar. The end is often some tokens behind the one that the parser
/// stopped at: it looks at three tokens before it takes the first.
bool endsInsideStatement(const zn::korvo_sdk::impl::VsaParser& parser);

}  // namespace vsa
