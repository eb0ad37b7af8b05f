#include "api/reading/source_range/range_finder.h"

#include <limits>
#include <string>

#include "api/reading/source_range/range_rules.h"

namespace vsa {

namespace {

using Type = StatementTokens::Type;
using Found = RangeRules::Found;

}  // namespace

bool isPathToken(Type type) {
  return type == Type::Id || type == Type::Dot || type == Type::Brackets;
}

Assignment::Assignment(const StatementTokens& tokens) {
  while (pathEnd < tokens.size() && isPathToken(tokens[pathEnd].type)) ++pathEnd;
  value = pathEnd;
  if (tokens[value].type == Type::Pipe) ++value;
  if (tokens[value].type == Type::Equals) ++value;
  valueEnd = value;
  while (valueEnd < tokens.size() && tokens[valueEnd].type != Type::Semicolon &&
         tokens[valueEnd].type != Type::Eof && tokens[valueEnd].type != Type::Invalid) {
    ++valueEnd;
  }
}

Found RangeRules::tokens(std::size_t begin, std::size_t end) const {
  if (begin >= end || end > tokens_.size()) return std::nullopt;
  return SourceRange{tokens_[begin].begin, tokens_[end - 1].end};
}

// Returns the empty range after a token, where something is missing.
Found RangeRules::placeAfter(std::size_t token) const {
  if (token >= tokens_.size()) return std::nullopt;
  return SourceRange{tokens_[token].end, tokens_[token].end};
}

// Returns the range of a token that the grammar does not allow. For a string or list that is cut
// off, it is the range of its opening quote or bracket. At the end of the text, it is the empty
// range after the last token, or at the end if there is no other token.
Found RangeRules::tokenOrPlace(std::size_t token) const {
  if (token >= tokens_.size()) return std::nullopt;
  if (tokens_[token].type != Type::Eof) return whole(token);
  if (tokens_[token].isCutOff) return opening(token);
  return token > 0 ? placeAfter(token - 1)
                   : SourceRange{tokens_[token].begin, tokens_[token].begin};
}

// Returns the range of an opening quote or bracket without a closing one.
Found RangeRules::opening(std::size_t token) const {
  const std::uint64_t begin = tokens_[token].begin;
  return SourceRange{begin, begin + 1};
}

Found RangeRules::number(std::size_t list, const NumberField& field) const {
  const std::uint64_t begin = tokens_[list].begin;
  return SourceRange{begin + field.begin, begin + field.end, field.index};
}

// Returns the statement up to the token at which the problem was detected. For a link, `noticed` is
// the start of the statement, and the function returns the whole statement.
Found RangeRules::statement() const {
  const std::uint64_t end =
      isNoticedBeforeStatement() ? std::numeric_limits<std::uint64_t>::max() : problem_.noticed;
  return tokens(0, tokens_.countUpTo(end));
}

Found RangeRules::find() const {
  if (problem_.character) return invalidCharacter();
  if (tokens_.size() == 0) return std::nullopt;
  switch (problem_.diagnostic.id) {
    case DiagnosticId::UnexpectedEof:
      return tokenOrPlace(tokens_.size() - 1);
    case DiagnosticId::BadToken:
      return badToken();
    case DiagnosticId::UnrecognizedToken:
      return unrecognized();
    case DiagnosticId::BadVersion:
    case DiagnosticId::NodeNotFound:
      return whole(0);
    case DiagnosticId::WithNodeNotSet:
    case DiagnosticId::NestedTooDeeply:
      return path();
    case DiagnosticId::InputNotFound:
      return tokens(firstInput(), parts_.pathEnd);
    case DiagnosticId::InvalidArrayIndex:
      return badIndex();
    case DiagnosticId::CannotAssignType:
      return typeClash();
    case DiagnosticId::Narrowing:
    case DiagnosticId::WrongType:
    case DiagnosticId::BadEnumValue:
    case DiagnosticId::InvalidOutput:
    case DiagnosticId::NoNodeToAssign:
    case DiagnosticId::CannotAssignNode:
      return value();
    case DiagnosticId::NoNodeToConnect:
      return whole(parts_.value);
    case DiagnosticId::NoOutputToConnect:
      return whole(parts_.value + 2);
    case DiagnosticId::InvalidElementCount:
    case DiagnosticId::CannotAllocate:
      return whole(parts_.value + 1);
    case DiagnosticId::TooManyElements:
      return surplusNumber();
    case DiagnosticId::UnreadableBuffer:
      return unreadableNumber();
    case DiagnosticId::TooFewElements:
    case DiagnosticId::CompressedDataEmpty:
    case DiagnosticId::CompressedDataBadCharacter:
    case DiagnosticId::CompressedDataEndsEarly:
    case DiagnosticId::CompressedDataCorrupt:
    case DiagnosticId::CompressedDataWrongChecksum:
    case DiagnosticId::CompressedDataTooLarge:
      return whole(parts_.value + 2);
    case DiagnosticId::TooManyEmptyElements:
    case DiagnosticId::TooManyArrayElements:
      return tokens(firstInput() + 1, parts_.pathEnd);
    case DiagnosticId::OverLimit:
      return overLimit();
    case DiagnosticId::HostError:
    case DiagnosticId::HostMessage:
      return statement();
    default:
      return std::nullopt;
  }
}

std::string pathAsWritten(const StatementTokens& tokens, std::string_view withNode) {
  std::size_t begin = 0;
  std::string node(withNode);
  for (std::size_t i = 0; i + 1 < tokens.size(); ++i) {
    const Type type = tokens[i].type;
    if (type == Type::Semicolon || type == Type::Colon || type == Type::Comment) begin = i + 1;
    if (type == Type::Colon && i > 0) node = tokens[i - 1].text.view();
  }
  const bool isOfWithNode = tokens[begin].type == Type::Dot;
  std::string path = isOfWithNode ? node : std::string();
  std::size_t at = begin;
  for (; isPathToken(tokens[at].type); ++at) path += tokens[at].text.view();
  const Type end = tokens[at].type;
  const bool isPath = isOfWithNode || tokens[begin + 1].type == Type::Dot;
  const bool isAssignment = end == Type::Equals || end == Type::Pipe || end == Type::Invalid;
  return isPath && isAssignment ? path : std::string();
}

std::optional<SourceRange> findSourceRange(const Problem& problem, const StatementTokens& tokens) {
  return RangeRules(problem, tokens).find();
}

}  // namespace vsa
