#include "vsa/read_report.h"

namespace zn::korvo_sdk::impl {

ReadReport reportOf(const Lexer& lexer, const ds::Vector<Token>& tokens) {
  ReadReport report;
  report.endedAtMark = lexer.endsAtMark();
  report.line = lexer.line;
  report.column = lexer.column;
  for (const Token& token : tokens) {
    const bool isCutOff = token.type == Token::Type::Eof && !(token.text == "EOF");
    if (isCutOff) report.cutOff = token.text;
  }
  return report;
}

}  // namespace zn::korvo_sdk::impl
