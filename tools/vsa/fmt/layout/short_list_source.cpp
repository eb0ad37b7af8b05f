#include "tools/vsa/fmt/layout/short_list_source.h"

#include <algorithm>
#include <charconv>
#include <cstring>
#include <optional>
#include <string_view>

#include <vsa/scene/data_type.h>

namespace vsa_tools {

namespace {

using vsa::SyntaxKind;
using vsa::SyntaxToken;
using zn::korvo_sdk::DataType;

constexpr std::uint64_t MAX_ELEMENTS = 1 << 16;
constexpr std::size_t BLOCK_BYTES = 64 << 10;
constexpr std::size_t MAX_KEPT_BYTES = 1 << 20;

char lowerCase(char c) {
  return c >= 'A' && c <= 'Z' ? static_cast<char>(c + ('a' - 'A')) : c;
}

/// The element type of a keyword in any letter case; Null if there is none.
DataType elementTypeOf(std::string_view keyword) {
  for (int i = 0; i < zn::korvo_sdk::DATA_TYPE_COUNT; ++i) {
    const auto type = static_cast<DataType>(i);
    const std::string_view name = zn::korvo_sdk::dataTypeName(type);
    const auto isSame = [](char a, char b) { return lowerCase(a) == lowerCase(b); };
    const bool isIt = std::equal(name.begin(), name.end(), keyword.begin(), keyword.end(), isSame);
    if (isIt && zn::korvo_sdk::isBufferElement(type)) return type;
  }
  return DataType::Null;
}

/// The count in "[count]", if it is written plainly.
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
    while (!isEnded_ && out_.size() < BLOCK_BYTES) add(reader_.next());
  }
  const std::size_t count = std::min(to.size(), out_.size() - taken_);
  if (count > 0) std::memcpy(to.data(), out_.data() + taken_, count);
  taken_ += count;
  return count;
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
  } else if (token.isLast || !token.isFirst || !beginList(token)) {
    addToken(token);
  }
}

void ShortListSource::addToken(const SyntaxToken& token) {
  if (token.isFirst) statement_ += token.lineFeedsBefore > 0 ? '\n' : ' ';
  if (token.kind == SyntaxKind::Brackets) prefixBytes_ = statement_.size();
  statement_ += token.text;
  if (!token.isLast || statement_.size() > MAX_KEPT_BYTES) {
    keyword_.clear();
    isWhole_ = false;
    flush();
  }
  if (!token.isLast) return;
  const bool isComment = token.kind == SyntaxKind::Comment;
  if (isComment) statement_ += '\n';  // it may end with a carriage return
  if (token.kind == SyntaxKind::Word) {
    keyword_ = token.text;
    count_.clear();
  } else if (token.kind == SyntaxKind::Brackets && token.isFirst && !keyword_.empty()) {
    count_ = token.text;
  } else {
    keyword_.clear();
  }
  if (isComment || token.is(';') || token.is(':')) {
    flush();
    isWhole_ = true;
  }
}

// Begins to split a list, if it is one of numbers.
bool ShortListSource::beginList(const SyntaxToken& token) {
  const bool follows = isWhole_ && !keyword_.empty() && !count_.empty();
  if (token.kind != SyntaxKind::Braces || !follows) return false;
  const DataType type = elementTypeOf(keyword_);
  const std::optional<std::uint64_t> count = countOf(count_);
  if (type == DataType::Null || !count) return false;
  vsa::ListReader list(token.text);
  vsa::ListPart first;
  if (!list.next(first) || first.text.front() == '.') return false;  // compressed, perhaps
  isSplitting_ = true;
  prefix_ = statement_.substr(0, prefixBytes_);
  statement_.clear();
  numbers_.clear();
  numberCount_ = 0;
  components_ = zn::korvo_sdk::componentCount(type);
  maxNumbers_ = MAX_ELEMENTS * components_;
  remaining_ = *count;
  list_ = vsa::ListReader();
  addElements(token);
  return true;
}

// Called before another number begins. The last assignment takes all that is left: one number too
// many is enough for an error.
void ShortListSource::endElement() {
  if (numberCount_ < maxNumbers_ || remaining_ <= MAX_ELEMENTS) return;
  out_ += prefix_ + '[' + std::to_string(MAX_ELEMENTS) + "] {" + numbers_ + "};";
  remaining_ -= MAX_ELEMENTS;
  numbers_.clear();
  numberCount_ = 0;
}

void ShortListSource::addElements(const SyntaxToken& token) {
  list_.add(token.text);
  for (vsa::ListPart part; list_.next(part);) {
    if (!part.continues) {
      endElement();
      ++numberCount_;
      numbers_ += ' ';
    }
    if (numberCount_ <= maxNumbers_ + 1) numbers_ += part.text;
  }
  if (!token.isLast) return;
  isSplitting_ = false;
  // What is cut off stays so, and so does the character that a list may not have.
  const char close = token.kind == SyntaxKind::Unterminated ? ' ' : token.text.back();
  statement_ = prefix_ + '[' + std::to_string(remaining_) + "] {" + numbers_ + close;
  keyword_.clear();
}

}  // namespace vsa_tools
