// Simple statements: executed from what the scanner recognises, without tokens.
#include "vsa/apply/path_resolver.h"
#include "vsa/apply/value_assigner.h"
#include "vsa/lex/lexer_fast_path.h"
#include "vsa/lex/statement_scanner.h"
#include "vsa/parser.h"

namespace zn::korvo_sdk::impl {

using Kind = SimpleStatement::Kind;

// Executes statements up to the first one that is not simple. Meanwhile the ring of tokens is out
// of date; a scene cannot see it.
void VsaParser::parseSimpleStatements() {
  StatementScanner scanner(*lexer, current);
  SimpleStatement statement;
  try {
    while (scanner.scan(statement) && prepare(statement)) {
      scanner.accept(statement);
      execute(statement);
      if (!scanner.isWindowKept()) break;
    }
  } catch (...) {
    if (scanner.hasAccepted()) scanner.skipLookahead();
    throw;
  }
  if (!scanner.hasAccepted()) return;
  head = 0;
  scanner.readLookahead(tokens);
  lastLexed = tokens[tokens.size - 1];
}

// Converts the value. If it does not convert, nothing has changed.
bool VsaParser::prepare(const SimpleStatement& statement) {
  if (statement.kind == Kind::Comment || statement.kind == Kind::Declaration) return true;
  assignment_.clear();
  return statement.kind != Kind::Value || convert(statement, assignment_.data);
}

void VsaParser::execute(const SimpleStatement& statement) {
  current.line = statement.line;
  current.column = statement.column;
  if (statement.kind == Kind::Comment) {
    recordComment(statement.first);
  } else if (statement.kind == Kind::Declaration) {
    declareNode(statement.first, statement.second, statement.isWith);
  } else {
    assign(statement);
  }
}

void VsaParser::assign(const SimpleStatement& statement) {
  AssignInfo& info = assignment_;
  if (!statement.isWith) info.targetPath.push_back({Token::Type::Id, statement.first});
  info.targetPath.push_back({Token::Type::Dot, dot_});
  info.targetPath.push_back({Token::Type::Id, statement.second});
  PathResolver target(*targetNode(info), info, emitter());
  IInput* const input = resolve(target, info);
  if (statement.kind == Kind::Connection) {
    connections.setLink(input, PendingLink(statement.source, statement.output));
  } else if (statement.kind == Kind::Reference) {
    references.setLink(input, PendingLink(statement.source, String()));
  } else {
    ValueAssigner(emitter(), typedElements_).assign(info.data, statement.value, target);
  }
}

}  // namespace zn::korvo_sdk::impl
