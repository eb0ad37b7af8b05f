// What became of the source of a reading. Internal.
#pragma once

#include <vsa/foundation/vector.h>
#include <vsa/parse.h>
#include "vsa/lex/lexer.h"
#include "vsa/lex/token.h"

namespace zn::korvo_sdk::impl {

/// The report of a reading that has ended. `tokens` is the parser's ring: an Eof token stays in it,
/// for no statement consumes one.
ReadReport reportOf(const Lexer& lexer, const ds::Vector<Token>& tokens);

}  // namespace zn::korvo_sdk::impl
