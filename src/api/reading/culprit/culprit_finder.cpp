#include "api/reading/culprit/culprit_finder.h"

#include <algorithm>
#include <string>

#include <vsa/foundation/string.h>
#include <vsa/scene/attr_type.h>
#include <vsa/scene/data_type.h>
#include "api/reading/culprit/number_fields.h"
#include "api/reading/culprit/value_words.h"

namespace vsa {

namespace {

using zn::korvo_sdk::DataType;
using Item = StatementTokens::Item;
using Type = StatementTokens::Type;
using Found = std::optional<Culprit>;

bool isPathToken(Type type) {
  return type == Type::Id || type == Type::Dot || type == Type::Brackets;
}

/// An assignment: `path "=" value ";"` or `path "|" "=" source ";"`, as far as it goes.
struct Assignment {
  explicit Assignment(const StatementTokens& tokens) {
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

  std::size_t pathEnd = 0;  // the token behind the path
  std::size_t value = 0;    // the first token of the value
  std::size_t valueEnd = 0;
};

class Rules {
 public:
  Rules(const Mistake& mistake, const StatementTokens& tokens)
      : mistake_(mistake), tokens_(tokens), parts_(tokens) {}

  Found find() const;

 private:
  Found whole(std::size_t token) const { return tokens(token, token + 1); }
  Found tokens(std::size_t begin, std::size_t end) const;
  Found placeBehind(std::size_t token) const;
  Found tokenOrPlace(std::size_t token) const;
  Found opening(std::size_t token) const;
  Found value() const { return tokens(parts_.value, parts_.valueEnd); }
  Found path() const { return tokens(0, parts_.pathEnd); }
  Found number(std::size_t list, const NumberField& field) const;

  Found invalidCharacter() const;
  Found numberWith(const Item& invalid, std::uint64_t at) const;
  Found badToken() const;
  Found missingSemicolon(std::size_t found) const;
  Found wrongList(std::size_t found) const;
  Found badValue(std::size_t found) const;
  Found badTuple() const;
  Found unrecognized() const;
  std::size_t tokensThatFit(std::size_t head) const;
  Found typeClash() const;
  Found badIndex() const;
  Found surplusNumber() const;
  Found unreadableNumber() const;
  Found overLimit() const;

  // Whether the text ends inside the token, a string or a list.
  bool isCutOff(std::size_t token) const {
    return tokens_[token].type == Type::Eof && tokens_[token].text.startsWith("UNEXPECTED", false);
  }
  bool expects(std::string_view what) const {
    return mistake_.message.starts_with("expected '" + std::string(what) + "'");
  }
  bool isOnLaterLine(std::size_t token) const {
    return token > 0 && tokens_[token].firstLine > tokens_[token - 1].lastLine;
  }
  std::size_t firstInput() const { return tokens_[0].type == Type::Dot ? 1 : 2; }
  std::size_t pathTokenBehind(std::string_view inputPath) const;

  const Mistake& mistake_;
  const StatementTokens& tokens_;
  const Assignment parts_;
};

Found Rules::tokens(std::size_t begin, std::size_t end) const {
  if (begin >= end || end > tokens_.size()) return std::nullopt;
  return Culprit{tokens_[begin].begin, tokens_[end - 1].end};
}

// Where something is missing.
Found Rules::placeBehind(std::size_t token) const {
  if (token >= tokens_.size()) return std::nullopt;
  return Culprit{tokens_[token].end, tokens_[token].end};
}

// A token that the grammar does not allow; at the end of the text, the place behind the last one.
Found Rules::tokenOrPlace(std::size_t token) const {
  if (token >= tokens_.size()) return std::nullopt;
  if (tokens_[token].type != Type::Eof) return whole(token);
  if (isCutOff(token)) return opening(token);
  return token > 0 ? placeBehind(token - 1) : Culprit{tokens_[token].begin, tokens_[token].begin};
}

// The quote or bracket that is never closed.
Found Rules::opening(std::size_t token) const {
  const std::uint64_t begin = tokens_[token].begin;
  return Culprit{begin, begin + 1};
}

Found Rules::number(std::size_t list, const NumberField& field) const {
  const std::uint64_t begin = tokens_[list].begin;
  return Culprit{begin + field.begin, begin + field.end, field.index};
}

// --- tokens ---

// A list that runs into the next statement was never closed.
Found Rules::invalidCharacter() const {
  const std::uint64_t at = *mistake_.character;
  for (std::size_t i = 0; i < tokens_.size(); ++i) {
    const Item& token = tokens_[i];
    if (token.type != Type::Invalid || token.end != at || token.begin >= at) continue;
    constexpr std::string_view ENDS = ";=\"#|:{(";  // the last two are invalid in brackets only
    const char character = mistake_.message.size() > 1 ? mistake_.message[1] : '\0';
    const bool isNeverClosed =
        ENDS.find(character) != std::string_view::npos || token.lastLine > token.firstLine;
    if (isNeverClosed) return opening(i);
    if (const Found found = numberWith(token, at)) return found;
  }
  return Culprit{at, at + 1};
}

// The number, of a list that ends at an invalid character, which that character is in. It goes on
// up to what separates numbers.
Found Rules::numberWith(const Item& invalid, std::uint64_t at) const {
  const std::string_view bytes = tokens_.bytesFrom(invalid.begin);
  if (bytes.empty() || (bytes[0] != '(' && bytes[0] != '{')) return std::nullopt;
  const auto inList = static_cast<std::size_t>(at - invalid.begin);
  const std::size_t end = std::min(bytes.find_first_of(" \t\r\n,;()[]{}", inList), bytes.size());
  std::string list(bytes.substr(0, end));
  list += bytes[0] == '(' ? ')' : '}';
  const auto field = findNumber(list, [&](const NumberField& one) { return one.end > inList; });
  if (!field) return std::nullopt;
  return Culprit{invalid.begin + field->begin, invalid.begin + field->end, field->index};
}

Found Rules::badToken() const {
  // The token found is the one that ends where the mistake was noticed, or it is the end.
  const std::size_t before = tokens_.countUpTo(mistake_.noticed);
  const bool isEnd = mistake_.message.ends_with("found 'EOF'") ||
                     mistake_.message.find("found 'UNEXPECTED EOF") != std::string_view::npos;
  const std::size_t found = isEnd || before == 0 ? before : before - 1;
  if (expects(";")) return missingSemicolon(found);
  if (expects("(scalar|buffer|reference)")) return badValue(found);
  return tokenOrPlace(found);
}

Found Rules::missingSemicolon(std::size_t found) const {
  if (found == 0) return tokenOrPlace(found);
  const std::size_t last = found - 1;
  const Item& token = tokens_[found];
  const bool isList =
      token.type == Type::Brackets || token.type == Type::Parens || token.type == Type::Braces;
  if (isList && last == parts_.value && tokens_[last].type == Type::Id) {
    if (!isTypeWord(tokens_[last].text.view())) return whole(last);
    return wrongList(found);
  }
  if (token.type == Type::Comment || isOnLaterLine(found)) return placeBehind(last);
  // A string that took in lines up to the next quote was never closed.
  const bool isSwallowed = tokens_[last].type == Type::Str &&
                           tokens_[last].lastLine > tokens_[last].firstLine &&
                           token.begin == tokens_[last].end;
  return isSwallowed ? opening(last) : tokenOrPlace(found);
}

// Behind the word of a type: brackets without the list of a buffer, or the wrong kind of list.
Found Rules::wrongList(std::size_t found) const {
  const bool isOfBuffer = bufferTypeOf(tokens_[found - 1].text.view()) != DataType::Null;
  const bool isCount = isOfBuffer && tokens_[found].type == Type::Brackets;
  return isCount ? tokenOrPlace(found + 1) : whole(found);
}

// The value before the token found has the right form and does not convert; or there is none.
Found Rules::badValue(std::size_t found) const {
  if (found <= parts_.value) return tokenOrPlace(found);
  return tokens_[parts_.value].type == Type::Id ? badTuple() : tokens(parts_.value, found);
}

Found Rules::badTuple() const {
  const std::size_t list = parts_.value + 1;
  const auto isBad = [](const NumberField& field) {
    double number = 0;
    return !zn::String::parse(zn::String::copyOf(field.text), number);
  };
  const auto field = findNumber(tokens_.bytesOf(tokens_[list]), isBad);
  return field ? number(list, *field) : whole(list);
}

// The first token with which the tokens are no statement; behind a declaration, its missing end.
Found Rules::unrecognized() const {
  const std::size_t head = tokens_.countUpTo(mistake_.noticed);
  for (std::size_t i = head; i < head + 3; ++i) {
    if (isCutOff(i)) return opening(i);
  }
  const std::size_t wrong = head + tokensThatFit(head);
  const bool isBehindName = wrong > head && tokens_[wrong - 1].type == Type::Id;
  const bool isEnd = tokens_[wrong].type == Type::Comment || isOnLaterLine(wrong);
  return head == 0 && isBehindName && isEnd ? placeBehind(wrong - 1) : tokenOrPlace(wrong);
}

// Of the tokens from `head` on, those that a statement may have there: a path goes on with a dot
// and a name, and a statement begins with a path or with two names.
std::size_t Rules::tokensThatFit(std::size_t head) const {
  if (tokens_[head].type == Type::Dot) return 1;
  if (head != 0 || tokens_[0].type != Type::Id) return 0;
  return tokens_[1].type == Type::Id || tokens_[1].type == Type::Dot ? 2 : 1;
}

// --- assignments ---

// The token of the path that follows the part which names an input.
std::size_t Rules::pathTokenBehind(std::string_view inputPath) const {
  const auto inputs = static_cast<std::size_t>(std::count_if(
      inputPath.begin(), inputPath.end(), [](char c) { return c == '.' || c == '['; }));
  std::size_t seen = 0;
  for (std::size_t i = firstInput(); i < parts_.pathEnd; ++i) {
    if (tokens_[i].type == Type::Dot) continue;
    if (++seen > inputs) return i;
  }
  return parts_.pathEnd;
}

// The value, if its type is what does not fit; otherwise the part of the path that does not.
Found Rules::typeClash() const {
  const std::size_t part = pathTokenBehind(mistake_.inputPath);
  const bool isValue = part + 1 >= parts_.pathEnd && part < parts_.pathEnd &&
                       tokens_[part].type == Type::Brackets &&
                       mistake_.message.find(" to Array @ ") != std::string_view::npos;
  if (isValue) return value();
  const Found rest = tokens(part, parts_.pathEnd);
  return rest ? rest : path();
}

Found Rules::badIndex() const {
  for (std::size_t i = firstInput(); i < parts_.pathEnd; ++i) {
    const Item& token = tokens_[i];
    const bool isNamed = token.type == Type::Brackets &&
                         mistake_.message.ends_with(": " + std::string(token.text.view()));
    if (isNamed) return whole(i);
  }
  return path();
}

// "Cannot add NUMBER @ index INDEX of TYPE[COUNT]."
Found Rules::surplusNumber() const {
  constexpr std::string_view BEFORE = " @ index ";
  const std::size_t list = parts_.value + 2;
  const std::size_t at = mistake_.message.find(BEFORE);
  if (at == std::string_view::npos) return whole(list);
  const std::size_t wanted = std::stoull(std::string(mistake_.message.substr(at + BEFORE.size())));
  const auto field = findNumber(tokens_.bytesOf(tokens_[list]),
                                [&](const NumberField& one) { return one.index == wanted; });
  return field ? number(list, *field) : whole(list);
}

Found Rules::unreadableNumber() const {
  const std::size_t list = parts_.value + 2;
  ComponentReader numbers(bufferTypeOf(tokens_[parts_.value].text.view()));
  const auto field = findNumber(tokens_.bytesOf(tokens_[list]),
                                [&](const NumberField& one) { return !numbers.accepts(one.text); });
  return field ? number(list, *field) : whole(list);
}

// What of a statement goes over a limit: a count, an index, a path or a name.
Found Rules::overLimit() const {
  const std::string_view message = mistake_.message;
  if (message.starts_with("the buffer ")) return whole(parts_.value + 1);
  if (message.ends_with(" nodes")) return whole(1);
  if (message.ends_with(" array elements")) return tokens(firstInput() + 1, parts_.pathEnd);
  if (message.ends_with(" inputs")) return path();
  return std::nullopt;
}

Found Rules::find() const {
  if (mistake_.character) return invalidCharacter();
  if (tokens_.size() == 0) return std::nullopt;
  switch (mistake_.id) {
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
      return tokens(firstInput() + 1, parts_.pathEnd);
    case DiagnosticId::OverLimit:
      return overLimit();
    case DiagnosticId::HostError:
    case DiagnosticId::HostMessage:
      return tokens(0, tokens_.countUpTo(mistake_.noticed));
    default:
      return std::nullopt;
  }
}

}  // namespace

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

std::optional<Culprit> findCulprit(const Mistake& mistake, const StatementTokens& tokens) {
  return Rules(mistake, tokens).find();
}

}  // namespace vsa
