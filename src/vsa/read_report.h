// Fills a ReadReport after parsing. Internal.
#pragma once

#include <vsa/parse.h>
#include "vsa/lex/lexer.h"

namespace zn::korvo_sdk::impl {

/// Returns the report of a finished parse. `lexer` is the lexer that the parser used.
ReadReport reportOf(const Lexer& lexer);

}  // namespace zn::korvo_sdk::impl
