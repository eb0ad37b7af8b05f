// Executes the simple statements that the scanner recognises, without tokens.
#include <vsa/scene/name_update.h>
#include "vsa/apply/path_resolver.h"
#include "vsa/lex/lexer_fast_path.h"
#include "vsa/lex/statement_scanner.h"
#include "vsa/parser.h"

namespace zn::korvo_sdk::impl {

using Kind = SimpleStatement::Kind;

// Executes statements up to the first one that is not simple or must be read from tokens (see
// ReadSession::beginSimple and `convertValue`). Also stops if the scene has read from the file. The
// ring of tokens is updated once after the last statement, and not after each statement. A scene
// cannot observe this.
void VsaParser::parseSimpleStatements() {
  StatementScanner scanner(*lexer, current);
  try {
    while (scanner.scan(simple_)) {
      const bool mayBegin =
          session == nullptr || session->beginSimple(simple_, current.line, current.column);
      if (!mayBegin || !convertValue(simple_)) break;
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

// Converts the value of the statement, if it has a value. Returns false if the value does not
// convert. The parser then reads the statement from tokens and reports the value.
bool VsaParser::convertValue(const SimpleStatement& statement) {
  assignment_.clearValue();
  return statement.kind != Kind::Value || convert(statement.literal, assignment_.data);
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
  const std::span<const Token> path = statement.path();
  INode& node = *targetNode(path);
  if (library_ != nullptr && !anyNodeTypes()) return assignInLibrary(statement, node);
  PathResolver target(node, path, assignment_.data.type, emitter(), session);
  IInput* const input = resolve(target, path);
  if (statement.kind != Kind::Value) return setLink(statement, *input);
  setValue(statement.literal.text, *input);
}

// Executes an assignment in the library's scene if no node type is declared. Searches for the input
// only once: if the input does not exist, the scene adds it without a second search. The value of a
// new input is assigned without checks, because the input has the type of the value. This saves a
// fifth of the instructions of the benchmark nodes.
void VsaParser::assignInLibrary(const SimpleStatement& statement, INode& node) {
  const std::span<const Token> path = statement.path();
  const String& name = path.back().text;
  if (session != nullptr) session->beginTarget(node);
  IInput* const existing = library_->findInput(node, name);
  IInput& input = existing != nullptr ? *existing : *addInLibrary(node, name, path);
  if (statement.kind != Kind::Value) return setLink(statement, input);
  if (existing != nullptr) return setValue(statement.literal.text, input);
  if (session != nullptr) session->transferValue(input, assignment_.data);
  input.assign(assignment_.data);
  unassigned_.end(true);
}

interfaces::IInput* VsaParser::addInLibrary(INode& node, const String& name,
                                            std::span<const Token> path) {
  if (session != nullptr) session->chargeInput(name.len());
  IInput* const input = library_->addInput(node, name, assignment_.data.type);
  if (input == nullptr) inputNotFound(node, path);
  return input;
}

void VsaParser::setLink(const SimpleStatement& statement, IInput& input) {
  const std::uint64_t sourceBytes = statement.source.size();
  if (statement.kind == Kind::Connection) {
    const TextPlace place = beginLink(input, sourceBytes + statement.output.len());
    connections.setLink(&input, statement.source, statement.output, place);
  } else {
    references.setLink(&input, statement.source, String(), beginLink(input, sourceBytes));
  }
}

}  // namespace zn::korvo_sdk::impl
