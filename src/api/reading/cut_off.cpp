#include "api/reading/cut_off.h"

#include <vsa/scene/data_type.h>
#include "vsa/type_keywords.h"

namespace vsa {

namespace {

using zn::korvo_sdk::DataType;
using zn::korvo_sdk::impl::AssignInfo;
using zn::korvo_sdk::impl::bufferTypeOf;
using zn::korvo_sdk::impl::Token;
using zn::korvo_sdk::impl::VsaParser;
using Type = Token::Type;

/// Gives access to the tokens that the parser has not consumed.
class Lookahead {
 public:
  explicit Lookahead(const VsaParser& parser) : parser_(parser) {}

  Type operator[](std::int32_t ahead) const {
    const std::int32_t slot = (parser_.head + ahead) % parser_.lookahead;
    return parser_.tokens[static_cast<std::uint64_t>(slot)].type;
  }

 private:
  const VsaParser& parser_;
};

bool isNameAndEnd(const Lookahead& next) {
  return next[0] == Type::Id && next[1] == Type::Eof;
}

bool isDotAndEnd(const Lookahead& next) {
  return next[0] == Type::Dot && next[1] == Type::Eof;
}

// Whether the text ends after the node or the first period of a path, as in `sun`, `sun.` or `.`.
bool isBeginOfPath(const Lookahead& next) {
  const bool isNode = next[0] == Type::Id && next[1] == Type::Dot && next[2] == Type::Eof;
  return isNameAndEnd(next) || isDotAndEnd(next) || isNode;
}

// Whether the text ends after the first two names of a declaration or directive, as in `lamp sun`.
bool isBeginOfDirective(const Lookahead& next) {
  return next[0] == Type::Id && next[1] == Type::Id && next[2] == Type::Eof;
}

// Whether the value is a buffer without its list, as in `float[3]`. The parser reads `float` as a
// reference, and `[3]` as a list after it.
bool isBufferWithoutList(const AssignInfo& info, const Lookahead& next) {
  return info.isReference && next[0] == Type::Brackets && next[1] == Type::Eof &&
         bufferTypeOf(info.referenceToken.text) != DataType::Null;
}

// Whether the text ends inside an assignment whose path was read.
bool endsInsideAssignment(const AssignInfo& info, const VsaParser& parser, const Lookahead& next) {
  if (isBufferWithoutList(info, next)) return true;
  const bool isBeforeSource = info.sourcePath.size == 0 && parser.current.type == Type::Equals;
  if (isBeforeSource) return isBeginOfPath(next);
  const bool isAfterPath = parser.current.type == Type::Id || parser.current.type == Type::Brackets;
  return isAfterPath && !info.isReference && isDotAndEnd(next);
}

}  // namespace

bool endsInsideStatement(const VsaParser& parser) {
  const Lookahead next(parser);
  if (next[0] == Type::Eof) return true;
  const AssignInfo* const info = parser.session->assignment();
  if (info != nullptr) return endsInsideAssignment(*info, parser, next);
  return isBeginOfPath(next) || isBeginOfDirective(next);
}

}  // namespace vsa
