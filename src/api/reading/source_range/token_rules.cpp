// Finds the source range of problems that the lexer or the grammar detects.
#include <algorithm>
#include <string>

#include <vsa/scene/data_type.h>
#include "api/reading/source_range/range_rules.h"
#include "api/reading/source_range/value_words.h"
#include "vsa/type_keywords.h"

namespace vsa {

namespace {

using zn::korvo_sdk::DataType;
using zn::korvo_sdk::impl::bufferTypeOf;
using Item = StatementTokens::Item;
using Type = StatementTokens::Type;
using Found = RangeRules::Found;

}  // namespace

// Returns the range of an invalid character, or of the number that contains it. There are two
// exceptions, for which the range is the opening bracket: a brace that begins a block, and a list
// that is probably never closed. A list counts as never closed if the invalid character is one of
// ENDS, which occur outside of lists, or if the character is on a later line than the opening
// bracket. A "#" that probably begins a comment in the list is not such a character.
Found RangeRules::invalidCharacter() const {
  const std::uint64_t at = *problem_.character;
  for (std::size_t i = 0; i < tokens_.size(); ++i) {
    const Item& token = tokens_[i];
    if (token.type != Type::Invalid || token.end != at || token.begin >= at) continue;
    constexpr std::string_view ENDS = ";=\"#|:{(";  // only "[" lists cannot contain "{" and "("
    const std::string_view written = problem_.diagnostic.argument("character");
    const char character = written.empty() ? '\0' : written.front();
    if (opensBlock(i)) return opening(i);
    if (isCommentInList(i, at)) break;
    const bool isNeverClosed =
        ENDS.find(character) != std::string_view::npos || token.lastLine > token.firstLine;
    if (isNeverClosed) return opening(i);
    if (const Found found = numberWith(token, at)) return found;
  }
  return SourceRange{at, at + 1};
}

// Whether the token begins a block in braces, as in "type name {" or "type name: {". The format has
// no such blocks.
bool RangeRules::opensBlock(std::size_t token) const {
  const std::string_view bytes = tokens_.bytesFrom(tokens_[token].begin);
  if (token < 2 || !bytes.starts_with('{')) return false;
  const std::size_t name = token - (tokens_[token - 1].type == Type::Colon ? 2 : 1);
  return name >= 1 && tokens_[name].type == Type::Id && tokens_[name - 1].type == Type::Id;
}

// Whether the invalid character at `at` probably begins a comment in a list, as in "{1 # one". A
// `#` at the beginning of a line is more likely to follow a list that is never closed. The function
// does not use the bytes after the character, because a source may not have delivered them yet.
bool RangeRules::isCommentInList(std::size_t token, std::uint64_t at) const {
  const std::uint64_t begin = tokens_[token].begin;
  const std::string_view list = tokens_.bytesFrom(begin).substr(0, at - begin + 1);
  return list.size() >= 2 && list.ends_with('#') && list[list.size() - 2] != '\n' &&
         list[list.size() - 2] != '\r';
}

// Returns the range of the number that contains the invalid character at `at`. The number ends
// before the next separator.
Found RangeRules::numberWith(const Item& invalid, std::uint64_t at) const {
  const std::string_view bytes = tokens_.bytesFrom(invalid.begin);
  if (bytes.empty() || (bytes[0] != '(' && bytes[0] != '{')) return std::nullopt;
  const auto inList = static_cast<std::size_t>(at - invalid.begin);
  const std::size_t end = std::min(bytes.find_first_of(" \t\r\n,;()[]{}", inList), bytes.size());
  std::string list(bytes.substr(0, end));
  list += bytes[0] == '(' ? ')' : '}';
  const auto field = findNumber(list, [&](const NumberField& one) { return one.end > inList; });
  if (!field) return std::nullopt;
  return SourceRange{invalid.begin + field->begin, invalid.begin + field->end, field->index};
}

Found RangeRules::badToken() const {
  // The token that the grammar does not allow ends at the offset of the problem, so it is the last
  // of the tokens up to there. There is one exception: at the end of the text, it is the token
  // after them.
  const std::size_t before = tokens_.countUpTo(problem_.noticed);
  const std::size_t found = problem_.isAtEnd || before == 0 ? before : before - 1;
  if (expects(";")) return missingSemicolon(found);
  if (expects("(scalar|buffer|reference)")) return badValue(found);
  return tokenOrPlace(found);
}

Found RangeRules::missingSemicolon(std::size_t found) const {
  if (found == 0) return tokenOrPlace(found);
  const std::size_t last = found - 1;
  const Item& token = tokens_[found];
  const bool isList =
      token.type == Type::Brackets || token.type == Type::Parens || token.type == Type::Braces;
  if (isList && last == parts_.value && tokens_[last].type == Type::Id) {
    if (!isTypeWord(tokens_[last].text.view())) return whole(last);
    return wrongList(found);
  }
  if (token.type == Type::Comment || isOnLaterLine(found)) return placeAfter(last);
  if (token.type == Type::Dot && tokens_[last].type == Type::Id &&
      token.begin == tokens_[last].end) {
    return tokens(found, found + 2);  // the text has "node.output" after "="
  }
  if (beginsStatement(found)) return placeAfter(last);
  // If a string ends on a later line, its closing quote is probably missing.
  const bool isSwallowed = tokens_[last].type == Type::Str &&
                           tokens_[last].lastLine > tokens_[last].firstLine &&
                           token.begin == tokens_[last].end;
  return isSwallowed ? opening(last) : tokenOrPlace(found);
}

// Whether a statement may begin with the token. The token must follow white space, and begin a path
// or be the first of two names.
bool RangeRules::beginsStatement(std::size_t token) const {
  if (tokens_[token].begin == tokens_[token - 1].end) return false;
  const Type next = tokens_[token + 1].type;
  if (tokens_[token].type == Type::Dot) return next == Type::Id;
  return tokens_[token].type == Type::Id && (next == Type::Id || next == Type::Dot);
}

// Returns the range of an error after a type keyword. The error is a wrong kind of list, or an
// element count without a brace list.
Found RangeRules::wrongList(std::size_t found) const {
  const std::string_view word = tokens_[found - 1].text.view();
  const bool isOfBuffer = bufferTypeOf(tokens_[found - 1].text) != DataType::Null;
  const Type list = tokens_[found].type;
  if (isOfBuffer && list == Type::Brackets) return tokenOrPlace(found + 1);
  // If only the keyword is of the wrong kind, it is the error: "vec3" in "vec3[1] {1 2 3}", or
  // "vec3f" in "vec3f(1 2 3)". In the second form, the keyword without its last letter is the
  // keyword of a tuple.
  const bool isBufferLiteral = list == Type::Brackets && tokens_[found + 1].type == Type::Braces;
  const bool isTuple = list == Type::Parens && isTypeWord(word.substr(0, word.size() - 1));
  return isBufferLiteral || isTuple ? whole(found - 1) : whole(found);
}

// Returns the range of a value that cannot be converted. If there is no value, returns the range of
// the token in its place. At the end of the text, this is the empty range after the last token.
Found RangeRules::badValue(std::size_t found) const {
  if (found <= parts_.value) return tokenOrPlace(found);
  return tokens_[parts_.value].type == Type::Id ? badTuple() : tokens(parts_.value, found);
}

Found RangeRules::badTuple() const {
  const std::size_t list = parts_.value + 1;
  const auto isBad = [](const NumberField& field) {
    double number = 0;
    return !zn::String::parse(zn::String::copyOf(field.text), number);
  };
  const auto field = findNumber(tokens_.bytesOf(tokens_[list]), isBad);
  return field ? number(list, *field) : whole(list);
}

// Returns the range of the first token that cannot occur at its place in any statement. There are
// three exceptions. For a string or list that is cut off, returns the range of its opening quote or
// bracket. If only one word is before ";", "=" or "|", returns the range of the word. If only the
// end of a declaration is missing, returns the empty range after the declaration.
Found RangeRules::unrecognized() const {
  const std::size_t head = tokens_.countUpTo(problem_.noticed);
  for (std::size_t i = head; i < head + 3; ++i) {
    if (tokens_[i].isCutOff) return opening(i);
  }
  const std::size_t wrong = head + tokensThatFit(head);
  const Type type = tokens_[wrong].type;
  const bool isLoneWord = wrong == 1 && head == 0 && !isOnLaterLine(wrong) &&
                          (type == Type::Semicolon || type == Type::Equals || type == Type::Pipe);
  if (isLoneWord) return whole(0);
  const bool isAfterName = wrong > head && tokens_[wrong - 1].type == Type::Id;
  const bool isEnd = tokens_[wrong].type == Type::Comment || isOnLaterLine(wrong);
  return head == 0 && isAfterName && isEnd ? placeAfter(wrong - 1) : tokenOrPlace(wrong);
}

// Returns the number of tokens from index `head` on that can be the beginning of a statement: a
// name, and then a second name or a period. If `head` is not 0, only a period can continue the
// statement.
std::size_t RangeRules::tokensThatFit(std::size_t head) const {
  if (tokens_[head].type == Type::Dot) return 1;
  if (head != 0 || tokens_[0].type != Type::Id) return 0;
  return tokens_[1].type == Type::Id || tokens_[1].type == Type::Dot ? 2 : 1;
}

}  // namespace vsa
