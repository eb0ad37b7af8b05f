// Fills a ReadReport after parsing. Internal.
#pragma once

#include <vsa/parse.h>
#include "vsa/lex/lexer.h"

namespace zn::korvo_sdk::impl {

/// Returns the report of a finished parse. `lexer` is the lexer that the parser used.
inline ReadReport reportOf(const Lexer& lexer) {
  const bool isCutOff = lexer.problem().id == DiagnosticId::UnexpectedEof;
  return {.endedAtMark = lexer.endsAtMark(),
          .cutOff = isCutOff ? lexer.problem().text : String(),
          .line = lexer.line,
          .column = lexer.column};
}

}  // namespace zn::korvo_sdk::impl
