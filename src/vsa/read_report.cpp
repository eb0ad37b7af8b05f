#include "vsa/read_report.h"

namespace zn::korvo_sdk::impl {

ReadReport reportOf(const Lexer& lexer) {
  ReadReport report;
  report.endedAtMark = lexer.endsAtMark();
  report.line = lexer.line;
  report.column = lexer.column;
  if (lexer.problem().id == DiagnosticId::UnexpectedEof) report.cutOff = lexer.problem().text;
  return report;
}

}  // namespace zn::korvo_sdk::impl
