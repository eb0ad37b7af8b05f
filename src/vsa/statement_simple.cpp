// Executes the simple statements that the scanner recognises, without tokens.
#include "vsa/apply/path_resolver.h"
#include "vsa/apply/values/value_assigner.h"
#include "vsa/lex/lexer_fast_path.h"
#include "vsa/lex/statement_scanner.h"
#include "vsa/parser.h"

namespace zn::korvo_sdk::impl {

using Kind = SimpleStatement::Kind;

// Executes statements up to the first one that is not simple. Meanwhile the ring of tokens is not
// updated, which a scene cannot observe.
void VsaParser::parseSimpleStatements() {
  StatementScanner scanner(*lexer, current);
  try {
    while (scanner.scan(simple_)) {
      if (!begin(simple_) || !convertValue(simple_)) break;
      scanner.accept(simple_);
      execute(simple_);
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

// Returns false if the statement may exceed a limit before it is executed. The parser then reads
// its tokens.
bool VsaParser::begin(const SimpleStatement& statement) const {
  return session == nullptr || session->beginSimple(statement, current.line, current.column);
}

// Returns false if the statement has a value that does not convert. The parser then reads its
// tokens and reports the value.
bool VsaParser::convertValue(const SimpleStatement& statement) {
  assignment_.clearValue();
  return statement.kind != Kind::Value || convert(statement, assignment_.data);
}

void VsaParser::execute(const SimpleStatement& statement) {
  current.line = statement.line;
  current.column = statement.column;
  if (statement.kind == Kind::Comment) {
    recordComment(statement.text);
  } else if (statement.kind == Kind::Declaration) {
    declareNode(statement.text, statement.name, statement.isWith);
  } else {
    assign(statement);
  }
}

void VsaParser::assign(const SimpleStatement& statement) {
  AttrData& data = assignment_.data;
  const std::span<const Token> path = statement.path();
  PathResolver target(*targetNode(path), path, data.type, emitter(), session);
  IInput* const input = resolve(target, path);
  if (statement.kind == Kind::Connection) {
    const std::uint64_t sourceBytes = statement.source.size() + statement.output.len();
    connections.setLink(input, statement.source, statement.output, beginLink(*input, sourceBytes));
  } else if (statement.kind == Kind::Reference) {
    const std::uint64_t sourceBytes = statement.source.size();
    references.setLink(input, statement.source, String(), beginLink(*input, sourceBytes));
  } else {
    ValueAssigner assigner(emitter(), typedElements_, session);
    unassigned_.end(assigner.assign(data, statement.value, target));
  }
}

}  // namespace zn::korvo_sdk::impl
