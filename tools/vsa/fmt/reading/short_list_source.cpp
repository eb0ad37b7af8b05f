#include "tools/vsa/fmt/reading/short_list_source.h"

#include <algorithm>
#include <charconv>
#include <cstring>
#include <optional>
#include <string_view>

#include "tools/vsa/fmt/layout/plain_numbers.h"
#include "tools/vsa/fmt/layout/token_spacing.h"

namespace vsa_tools {

namespace {

using vsa::SyntaxKind;
using vsa::SyntaxToken;
using zn::korvo_sdk::DataType;

constexpr std::uint64_t MAX_ELEMENTS = 1 << 16;
constexpr std::size_t BLOCK_BYTES = 64 << 10;
constexpr std::size_t MAX_STATEMENT_BYTES = 1 << 20;
// A list that is not split adds this number of bytes to the size of its part. The real length of
// the list does not matter, because the scene keeps no elements (see beginBuffer() for the
// exception).
constexpr std::size_t LIST_BYTES = 32;
// Only a comment that contains this text sets the version of the file.
constexpr std::string_view VERSION_KEY = "version:";

char lowerCase(char c) {
  return c >= 'A' && c <= 'Z' ? static_cast<char>(c + ('a' - 'A')) : c;
}

/// Returns whether both words are the same if the case of letters is ignored.
bool isSameWord(std::string_view a, std::string_view b) {
  return std::equal(a.begin(), a.end(), b.begin(), b.end(),
                    [](char x, char y) { return lowerCase(x) == lowerCase(y); });
}

/// Returns the element type of a keyword, in upper or lower case, or Null if there is none.
DataType elementTypeOf(std::string_view keyword) {
  for (int i = 0; i < zn::korvo_sdk::DATA_TYPE_COUNT; ++i) {
    const auto type = static_cast<DataType>(i);
    if (isSameWord(zn::korvo_sdk::dataTypeName(type), keyword) &&
        zn::korvo_sdk::isBufferElement(type))
      return type;
  }
  return DataType::Null;
}

/// Returns the count in "[count]", or nothing if it has other characters than digits or does not
/// fit into 64 bits.
std::optional<std::uint64_t> countOf(std::string_view brackets) {
  const std::string_view digits = brackets.substr(1, brackets.size() - 2);
  std::uint64_t count = 0;
  const auto end = std::from_chars(digits.data(), digits.data() + digits.size(), count);
  const bool isPlain = end.ec == std::errc() && end.ptr == digits.data() + digits.size();
  return isPlain ? std::optional(count) : std::nullopt;
}

}  // namespace

std::size_t ShortListSource::read(std::span<char> to) {
  if (taken_ == out_.size()) {
    out_.clear();
    taken_ = 0;
    while (!isEnded_ && !isPartEnded_ && !endedEarly_ && out_.size() < BLOCK_BYTES) {
      add(next());
    }
    endPending();
  }
  const std::size_t count = std::min(to.size(), out_.size() - taken_);
  if (count > 0) std::memcpy(to.data(), out_.data() + taken_, count);
  taken_ += count;
  return count;
}

SyntaxToken ShortListSource::next() {
  const SyntaxToken token = reader_.next();
  if (observer_) observer_(token);
  return token;
}

bool ShortListSource::nextPart() {
  if (!isPartEnded_ || taken_ != out_.size()) return false;
  isPartEnded_ = false;
  partBytes_ = 0;
  bytesBefore_ = 0;
  nodes_.beginPart();
  changed_.clear();
  out_.clear();
  taken_ = 0;
  declare(declared_);
  flush();  // delivers the declaration at the beginning of the part
  return true;
}

void ShortListSource::flush() {
  out_ += statement_;
  statement_.clear();
}

void ShortListSource::add(const SyntaxToken& token) {
  isEnded_ = token.kind == SyntaxKind::EndOfText;
  if (isEnded_) {
    flush();
    if (reader_.endedAtMark()) out_ += '\xFF';
  } else if (isSplitting_) {
    addElements(token);
  } else {
    const bool beginsBuffer = token.isFirst && token.kind == SyntaxKind::Braces && beginBuffer();
    if (beginsBuffer && mustSplit(token)) {
      beginSplitting();
      addElements(token);
    } else {
      addToken(token, beginsBuffer);
    }
  }
}

void ShortListSource::addToken(const SyntaxToken& token, bool beginsBuffer) {
  if (token.isFirst) {
    if (tokenCount_ > 0 && needsBlank(last_, lastChar_, token)) statement_ += ' ';
    endsBuffer_ = isBuffer_ && token.is(';');
    isBuffer_ = beginsBuffer;
    isCounted_ = token.kind == SyntaxKind::Brackets && last_ == SyntaxKind::Word;
    last_ = token.kind;
    lastChar_ = last_ == SyntaxKind::Punctuation ? token.text.front() : '\0';
    lastBegin_ = statement_.size();
    if (last_ == SyntaxKind::Word) wordBegin_ = lastBegin_;
  }
  statement_ += token.text;
  if (!isList(token.kind)) {
    partBytes_ += token.text.size();
  } else if (token.isFirst) {
    partBytes_ += LIST_BYTES;
  }
  if (!token.isLast || statement_.size() > MAX_STATEMENT_BYTES) {
    isWhole_ = false;
    flush();
  }
  if (token.isLast) endToken(token);
}

void ShortListSource::endToken(const SyntaxToken& token) {
  ++tokenCount_;
  if (isWhole_ && tokenCount_ <= 3) endBeginning(token);
  const bool isComment = token.kind == SyntaxKind::Comment;
  // The scene would keep all comments, but only a version can cause a diagnostic.
  const bool hasNoEffect = isComment && tokenCount_ == 1 && isWhole_ &&
                           statement_.find(VERSION_KEY) == std::string::npos;
  if (hasNoEffect) {
    statement_.clear();
    return beginStatement();
  }
  if (isComment || lastChar_ == ';' || lastChar_ == ':') endStatement();
}

// Recognises `.input`, `node.input` and `type name;` from the first three tokens of a statement.
void ShortListSource::endBeginning(const SyntaxToken& token) {
  const bool isWord = token.kind == SyntaxKind::Word;
  if (tokenCount_ == 1) {
    firstEnd_ = isWord ? statement_.size() : 0;
    secondEnd_ = 0;
    if (token.is('.') && isWithOfEarlierPart_) endedEarly_ = true;
  } else if (tokenCount_ == 2) {
    if (isWord && firstEnd_ > 0) secondEnd_ = statement_.size();
    if (token.is('.')) change(std::string_view(statement_).substr(0, firstEnd_));
  } else if (secondEnd_ > 0 && (token.is(';') || token.is(':'))) {
    endDeclaration(token.is(':'));
  }
}

void ShortListSource::endDeclaration(bool isWith) {
  const std::string_view first = std::string_view(statement_).substr(0, firstEnd_);
  const std::string_view second =
      std::string_view(statement_).substr(firstEnd_ + 1, secondEnd_ - firstEnd_ - 1);
  if (!isWith && isSameWord(first, "remove")) {
    change(second);
    endPending();
    return nodes_.remove(second);
  }
  const bool isFull = bytesBefore_ >= maxPartBytes_;
  if (isFull) endPending();
  if (isFull && !endedEarly_ && !nodes_.isDeclared(second)) {
    isPartEnded_ = true;
    isWithOfEarlierPart_ = true;
    declared_ = second;
  } else {
    declare(second);
  }
  if (isWith) isWithOfEarlierPart_ = false;
}

// Called for each statement that changes a node and contains its name. (For a path that begins with
// a period, isWithOfEarlierPart_ is tested instead.) Successive statements mostly change the same
// node, and a node that is not of an earlier part does not become one within the part. So the table
// is searched only for another node than the last one.
void ShortListSource::change(std::string_view node) {
  if (node == changed_) return;
  endPending();
  changed_ = node;
  if (nodes_.isOfEarlierPart(node)) endedEarly_ = true;
}

// Declares a node at the end of its statement. The node is looked up later: when another node is
// changed, at the next declaration or removal, or at the end of the block. Its slot in the table is
// rarely in the cache, and is loaded while the next statements are read. With the look-ups of
// change() and a look-up at once, 7.4 % of the processor time of `vsa fmt -i` for 300 MB of small
// nodes were look-ups, now 2 % (benchmark "fmt -i changed, nodes" of `./dev bench --format`).
void ShortListSource::declare(std::string_view node) {
  endPending();
  changed_ = node;
  isPending_ = true;
  pendingBegin_ = out_.size();
  nodes_.prefetch(node);
}

// Removes the declaration and the text after it if the node is of an earlier part. Nothing of it
// has been delivered, because this is called at the end of each block.
void ShortListSource::endPending() {
  if (!isPending_) return;
  isPending_ = false;
  if (!nodes_.declare(changed_)) return;
  endedEarly_ = true;
  out_.resize(pendingBegin_);
}

// Ends a statement or comment with a line feed. The text between tokens is not copied, so a comment
// without this line feed would include the next statement.
void ShortListSource::endStatement() {
  statement_ += '\n';
  if (!isPartEnded_ && !endedEarly_) flush();
  if (endsBuffer_) (out_ += prefix_) += "[0] {};\n";
  endsBuffer_ = false;
  beginStatement();
}

void ShortListSource::beginStatement() {
  isWhole_ = true;
  tokenCount_ = 0;
  bytesBefore_ = partBytes_;
}

// Returns whether the next list has the elements of a buffer whose type and count are known.
// Returns false for a buffer with a count of 0, for one in a statement that is not in memory as a
// whole, and for one that is appended to an array with `[*]`. Several assignments with `[*]` would
// append several elements, so such a buffer is not split. The scene keeps it, so its elements count
// towards the size of the part.
bool ShortListSource::beginBuffer() {
  if (!isWhole_ || !isCounted_) return false;
  const std::string_view statement = statement_;
  const std::string_view keyword = statement.substr(wordBegin_, lastBegin_ - wordBegin_);
  type_ = elementTypeOf(keyword.substr(0, keyword.find_first_of(" \n")));
  const std::optional<std::uint64_t> count = countOf(statement.substr(lastBegin_));
  if (type_ == DataType::Null || !count || *count == 0) return false;
  prefix_ = statement.substr(0, lastBegin_);
  if (prefix_.find('*') != std::string::npos) {
    partBytes_ += std::min(*count, maxPartBytes_);
    return false;
  }
  remaining_ = *count;
  return true;
}

// Returns whether the list that begins with `token` is long and must be split. A list that begins
// with a period may be compressed data, which is a single element, and is therefore not split.
bool ShortListSource::mustSplit(const SyntaxToken& token) const {
  if (token.isLast && remaining_ <= MAX_ELEMENTS) return false;
  vsa::ListReader list(token.text);
  vsa::ListPart first;
  return list.next(first) && first.text.front() != '.';
}

void ShortListSource::beginSplitting() {
  isSplitting_ = true;
  statement_.clear();
  numbers_.clear();
  numberCount_ = 0;
  maxNumbers_ = MAX_ELEMENTS * zn::korvo_sdk::componentCount(type_);
  list_ = vsa::ListReader();
}

// Called before the next number is added. Ends the current assignment if it has enough numbers. The
// last assignment is not ended here, so that it also gets the numbers that are too many for the
// literal. Reading it then fails as reading the literal would. addNumber() adds at most one number
// more than `maxNumbers_`, which is sufficient for the error.
void ShortListSource::endElement() {
  if (numberCount_ < maxNumbers_ || remaining_ <= MAX_ELEMENTS) return;
  out_ += prefix_ + '[' + std::to_string(MAX_ELEMENTS) + "] {" + numbers_ + "};";
  remaining_ -= MAX_ELEMENTS;
  numbers_.clear();
  numberCount_ = 0;
}

void ShortListSource::addNumber(std::string_view text, bool continues) {
  if (!continues) {
    endElement();
    ++numberCount_;
  }
  if (numberCount_ > maxNumbers_ + 1) return;
  if (!continues) numbers_ += ' ';
  numbers_ += text;
}

void ShortListSource::addParts(std::string_view text) {
  list_.add(text);
  for (vsa::ListPart part; list_.next(part);) addNumber(part.text, part.continues);
}

// Adds numbers. A block of numbers is copied as a whole if it fits into the next assignment and is
// not mostly white space.
void ShortListSource::addPlainNumbers(std::string_view numbers) {
  constexpr std::size_t MAX_BYTES_PER_NUMBER = 32;
  while (!numbers.empty()) {
    const NumberBlock block = firstNumbers(numbers);
    const bool fits = numberCount_ + block.count <= maxNumbers_;
    if (fits && block.text.size() <= block.count * MAX_BYTES_PER_NUMBER) {
      (numbers_ += ' ') += block.text;
      numberCount_ += block.count;
    } else {
      forEachNumber(block.text, [this](std::string_view number) { addNumber(number, false); });
    }
    numbers.remove_prefix(block.text.size());
  }
}

void ShortListSource::addElements(const SyntaxToken& token) {
  const std::string_view plain = plainNumbers(token.text, '{', '}');
  if (plain.empty()) {
    addParts(token.text);
  } else {
    const auto begin = static_cast<std::size_t>(plain.data() - token.text.data());
    addParts(token.text.substr(0, begin));
    addPlainNumbers(plain);
    addParts(token.text.substr(begin + plain.size()));
  }
  if (!token.isLast) return;
  isSplitting_ = false;
  // If the list is not closed in the text, it is not closed here, either. An invalid character
  // remains in its list.
  const char close = token.kind == SyntaxKind::Unterminated ? ' ' : token.text.back();
  statement_ = prefix_ + '[' + std::to_string(remaining_) + "] {" + numbers_ + close;
  isBuffer_ = true;
  isCounted_ = false;
  last_ = token.kind;
}

}  // namespace vsa_tools
