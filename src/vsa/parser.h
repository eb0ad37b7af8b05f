// VsaParser: tokens to statements, statements to the scene. Internal; the door is vsa.h.
//
// Grammar functions return bool: false with nothing consumed means that the text ahead is not of
// this form; a malformed form after an accepted beginning raises an error. What raises never
// returns: it throws std::runtime_error, and `parse` is the one place that catches it.
#pragma once

#include <cstdarg>
#include <cstdint>
#include <string_view>

#include <vsa/foundation/file.h>
#include <vsa/foundation/string.h>
#include <vsa/foundation/vector.h>
#include <vsa/parse.h>
#include <vsa/scene/attr_data.h>
#include <vsa/scene/scene_interface.h>
#include "foundation/containers/hash_map.h"
#include "vsa/apply/assign_info.h"
#include "vsa/apply/pending_link.h"
#include "vsa/apply/typed_elements.h"
#include "vsa/lex/lexer.h"
#include "vsa/lex/token.h"

namespace zn::korvo_sdk::impl {

class InputWalk;

/// Serves one call of an entry point and is not used again. Owns neither scene nor lexer.
class VsaParser {
 public:
  using AssignInfo = impl::AssignInfo;
  using IInput = interfaces::IInput;
  using INode = interfaces::INode;
  using IScene = interfaces::IScene;
  /// Links by target input, until they are resolved.
  using PendingTable = ds::HashMap<IInput*, PendingLink>;

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
    bool isWith = false;  ///< Ends in ":": the node becomes the "with" node.
  };

  Lexer* lexer = nullptr;
  std::int32_t lookahead = 3;  ///< Slots of the token ring.
  std::int32_t head = 0;       ///< Slot of the next token that is not consumed yet.
  ds::Vector<Token> tokens;    ///< The ring.
  Token current;               ///< The token consumed last: its position is that of every message.
  Token lastLexed;             ///< The token produced last.
  String spare;                ///< Not used.
  IScene* scene = nullptr;
  INode* withNode = nullptr;        ///< The node of statements that begin with ".".
  ds::Vector<INode*> definedNodes;  ///< In the order of their `define` statements.
  PendingTable connections;         ///< Resolved after the last statement.
  PendingTable references;          ///< Resolved after the connections.
  ReadReport* report = nullptr;     ///< Where to say what became of the source; may be null.

  // parser.cpp: the ring of tokens and the statement loop.

  bool parse(IScene* into, String text);
  bool parse(IScene* into, File file);
  bool parse(IScene* into, Lexer* from);
  Token consume();
  bool match(Token& out, Token::Type type);

  // parser_diagnostics.cpp

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

  // statement_comment.cpp, statement_directive.cpp

  bool parseComment();
  bool parseRemove();
  bool parseDefine();
  bool parseDeclare();
  bool parseWith();
  bool remove(RemoveInfo& info);
  bool define(DefineInfo& info);
  bool declare(DeclareInfo& info);
  bool with(WithInfo& info);

  // statement_assign.cpp

  bool parseAssign();

  // input_path.cpp: the left-hand side as tokens.

  bool path(ds::Vector<Token>& tokensOfPath);
  bool arrayattr(ds::Vector<Token>& tokensOfPath);
  bool scalarattr(ds::Vector<Token>& tokensOfPath);
  static String collapse(const ds::Vector<Token>& tokensOfPath);

  // value_form.cpp: the right-hand side.

  bool connect(AssignInfo& info);
  bool value(AssignInfo& info);
  bool reference(AssignInfo& info);

  // value_scalar.cpp, value_buffer.cpp

  bool scalar(AssignInfo& info);
  bool buffer(AssignInfo& info);
  bool parseElem(const String& text, DataType type, unsigned char* out);

  // resolve.cpp

  void resolveConnections();
  void resolveReferences();

 private:
  friend class InputWalk;
  // parser.cpp
  IScene& target();
  // The token `ahead` places behind the next one, 0 to 2.
  const Token& peek(std::int32_t ahead) const {
    if (ahead == 0) return tokens.data[head];
    const std::int32_t slot = head + ahead;
    return tokens.data[slot < lookahead ? slot : slot - lookahead];
  }
  bool nextIs(Token::Type type) const { return peek(0).type == type; }
  void advance();
  void refill(Token& slot) const;
  void take(Token& out);
  void atLast(const Token& next);
  void prime();
  void statements();
  bool statement();
  void reportSource() const;

  // statement_directive.cpp
  bool isDirective(std::string_view keyword, Token::Type end) const;
  void directive(Token& name);
  INode* definedNodeOfType(const String& type) const;

  // input_path.cpp
  void appendNext(ds::Vector<Token>& tokensOfPath);

  // statement_assign.cpp
  INode* nodeOf(const AssignInfo& info);
  String pathText(const AssignInfo& info, INode* node) const;
  void file(PendingTable& table, const InputWalk& walk, const AssignInfo& info);
  void apply(AssignInfo& info, IInput* input, IInput* array);
  bool accepts(AssignInfo& info, IInput* input);
  bool acceptsBuffer(const AssignInfo& info, IInput* input);
  void typeHoles(const AssignInfo& info, IInput* array);
  static bool isEnumValue(const AssignInfo& info, const IInput* input);

  // value_form.cpp
  void expect(Token::Type type, const char* expected);

  // value_scalar.cpp
  bool integer(AssignInfo& info);
  void string(AssignInfo& info);
  bool tuple(AssignInfo& info);

  // value_buffer.cpp
  void describeBuffer(AssignInfo& info, DataType type);
  [[noreturn]] void cannotAllocate(const AssignInfo& info);
  void allocateElements(AssignInfo& info);
  void compressedElements(AssignInfo& info);
  void listedElements(AssignInfo& info);

  // resolve.cpp
  void resolveConnection(IInput* input, const PendingLink& link);
  void resolveReference(IInput* input, const PendingLink& link);
  void connectTo(IInput* input, const String& nodeName, const String& outputName,
                 const PendingLink& link);

  AssignInfo assignment_;        // of the statement at hand; the next one uses its memory again
  bool hasRemoved_ = false;      // a "remove" has been read
  String cutOff_;                // what the lexer had in hand when the text ended inside it
  TypedElements typedElements_;  // of arrays that already hold no untyped element
};

}  // namespace zn::korvo_sdk::impl
