// VsaParser: parses statements and applies them to the scene. Internal.
//
// A grammar function returns false and consumes nothing if the next tokens do not match its
// production. It throws DiagnosticError if the first tokens match and a later token does not. Three
// functions may also return false after they have consumed tokens: parseAssign if neither "=" nor
// "|" follows the path, and `scalar` and its part `tuple` if the literal does not convert. In this
// class, only parseText turns DiagnosticError into a result; other handlers throw it again.
#pragma once

#include <cstdarg>
#include <cstdint>
#include <span>
#include <string_view>

#include <vsa/foundation/file.h>
#include <vsa/foundation/string.h>
#include <vsa/foundation/vector.h>
#include <vsa/scene/attr_data.h>
#include <vsa/scene/scene_interface.h>
#include "diagnostics/emitter.h"
#include "scene/library_scene.h"
#include "vsa/apply/assign_info.h"
#include "vsa/apply/links/pending_link.h"
#include "vsa/apply/path_resolver.h"
#include "vsa/apply/read_session.h"
#include "vsa/apply/unassigned_value.h"
#include "vsa/apply/values/typed_elements.h"
#include "vsa/lex/lexer.h"
#include "vsa/lex/statement_scanner.h"
#include "vsa/lex/token.h"

namespace zn::korvo_sdk::impl {

/// The parser of one text. It does not own the scene or the lexer.
class VsaParser {
 public:
  using AssignInfo = impl::AssignInfo;
  using PendingTable = impl::PendingTable;
  using IInput = interfaces::IInput;
  using INode = interfaces::INode;
  using IScene = interfaces::IScene;

  struct RemoveInfo {
    Token name;
  };
  struct DefineInfo {
    Token name;
  };
  struct WithInfo {
    Token name;
  };
  struct DeclareInfo {
    Token type;
    Token name;
    bool isWith = false;  ///< The declaration ends in ":", so its node becomes the "with" node.
  };

  Lexer* lexer = nullptr;
  std::int32_t lookahead = 3;  ///< The number of slots in the token ring.
  std::int32_t head = 0;       ///< The slot of the next token to consume.
  ds::Vector<Token> tokens;    ///< The token ring.
  /// The token consumed last. After a simple statement, `line` and `column` are those of its end.
  Token current;
  Token lastLexed;  ///< The token lexed last.
  String spare;     ///< Not used.
  IScene* scene = nullptr;
  INode* withNode = nullptr;  ///< The node for paths that begin with ".".
  /// The nodes of the `define` statements, in this order. A node may be contained several times.
  ds::Vector<INode*> definedNodes;
  /// The connections. They are resolved after the last statement.
  PendingTable connections;
  /// The references. They are resolved after the connections.
  PendingTable references;
  ReadSession* session = nullptr;  ///< The limits and counts. Null for the plain entry points.

  // parser.cpp: the ring of tokens and the statement loop.

  bool parse(IScene* into, String text);
  bool parse(IScene* into, File file);
  bool parse(IScene* into, Lexer* from);
  Token consume();
  bool match(Token& out, Token::Type type);

  // statement_comment.cpp, statement_directive.cpp, statement_assign.cpp

  bool parseComment();
  bool parseRemove();
  bool parseDefine();
  bool parseDeclare();
  bool parseWith();
  bool parseAssign();
  bool remove(RemoveInfo& info);
  bool define(DefineInfo& info);
  bool declare(DeclareInfo& info);
  bool with(WithInfo& info);

  // input_path.cpp: input paths as tokens.

  bool path(ds::Vector<Token>& tokensOfPath);
  bool arrayattr(ds::Vector<Token>& tokensOfPath);
  bool scalarattr(ds::Vector<Token>& tokensOfPath);
  static String collapse(const ds::Vector<Token>& tokensOfPath);

  // right_hand_side.cpp, value_scalar.cpp, value_buffer.cpp

  bool connect(AssignInfo& info);
  bool value(AssignInfo& info);
  bool reference(AssignInfo& info);
  bool scalar(AssignInfo& info);
  bool buffer(AssignInfo& info);
  bool parseElem(const String& text, DataType type, unsigned char* out);

  // parser.cpp: these functions call LinkResolver (apply/links).

  void resolveConnections();
  void resolveReferences();

  // parser_diagnostics.cpp: messages at the position of `current`, except the two functions
  // tokenError.

  [[noreturn]] void parseError(const char* format, ...) VSA_PRINTF(2, 3);
  [[noreturn]] void bufferError(const char* format, ...) VSA_PRINTF(2, 3);
  [[noreturn]] void internalError(const String& kind, const char* format, va_list args)
      VSA_PRINTF(3, 0);
  [[noreturn]] void tokenError(const Token& invalid);
  [[noreturn]] void tokenError(const String& expected, const Token& found);
  [[noreturn]] void typeError(const String& typeName, IInput* input, bool isArray);
  void narrowTypeWarning(const String& typeName, IInput* input);
  void wrongTypeWarning(const String& found, IInput* input);
  void badEnumValueWarning(const String& value, IInput* input);

 private:
  // Returns the token `ahead` positions after the next token. `ahead` must be 0, 1 or 2.
  const Token& peek(std::int32_t ahead) const {
    if (ahead == 0) return tokens.data[head];
    const std::int32_t slot = head + ahead;
    return tokens.data[slot < lookahead ? slot : slot - lookahead];
  }
  bool nextIs(Token::Type type) const { return peek(0).type == type; }
  void advance();
  void advanceInto(Token& out) {
    advance();
    out = current;
  }
  // Consumes a token that the grammar requires. Throws DiagnosticError if the next token has
  // another type.
  void expect(Token::Type type, const char* expected) {
    if (!nextIs(type)) tokenError(expected, peek(0));
    advance();
  }
  bool parseText(IScene* into, Lexer* from);
  void prime();
  bool parseStatement();

  // statement_simple.cpp: simple statements, which StatementScanner recognises without the ring of
  // tokens. `convert` is in value_scalar.cpp.

  void parseSimpleStatements();
  bool convertValue(const SimpleStatement& statement);
  void execute(const SimpleStatement& statement);
  void assign(const SimpleStatement& statement);
  void assignInLibrary(const SimpleStatement& statement, INode& node);
  void setLink(const SimpleStatement& statement, IInput& input);
  bool convert(const ScalarLiteral& literal, AttrData& data);

  void recordComment(const String& comment);
  void declareNode(const String& type, const String& name, bool isWith);
  IInput* resolve(PathResolver& target, std::span<const Token> path);
  IInput* addInLibrary(INode& node, const String& name, std::span<const Token> path);
  [[noreturn]] void inputNotFound(INode& node, std::span<const Token> path) const;

  bool directive(std::string_view keyword, Token::Type end, Token& name);
  void appendNext(ds::Vector<Token>& tokensOfPath);
  bool tuple(AssignInfo& info);
  INode* targetNode(std::span<const Token> path);
  void setValue(std::string_view literal, IInput& input, IInput* array = nullptr,
                std::uint64_t countBefore = 0);
  TextPlace beginLink(IInput& input, std::uint64_t sourceBytes) const;
  template <class Create>
  INode* findOrCreate(const String& name, std::uint64_t typeBytes, const Create& create);
  char* makeString(std::string_view literal, bool hasBackslash);
  void hold(void* memory, std::uint64_t bytes);

  IScene& sceneOrNone() const;
  Emitter emitter() const { return {current.line, current.column}; }

  AssignInfo assignment_;            // the current statement; the next one reuses its memory
  SimpleStatement simple_;           // the current simple statement
  TypedElements typedElements_;      // caches the typed elements of this text's arrays
  LibraryScene* library_ = nullptr;  // the scene if it is one of the library, otherwise null
  UnassignedValue unassigned_;       // the value of the current statement, if there is no session
};

}  // namespace zn::korvo_sdk::impl
