// Fills a ReadReport after parsing. Internal.
#pragma once

#include <vsa/foundation/vector.h>
#include <vsa/parse.h>
#include "vsa/lex/lexer.h"
#include "vsa/lex/token.h"

namespace zn::korvo_sdk::impl {

/// Returns the report of a finished parse. `tokens` is the parser's ring. It still contains the Eof
/// token, because no statement consumes one.
ReadReport reportOf(const Lexer& lexer, const ds::Vector<Token>& tokens);

}  // namespace zn::korvo_sdk::impl
