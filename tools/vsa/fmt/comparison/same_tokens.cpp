#include "tools/vsa/fmt/comparison/same_tokens.h"

#include <algorithm>
#include <string>
#include <string_view>

#include "tools/vsa/fmt/layout/plain_numbers.h"

namespace vsa_tools {

namespace {

/// The tokens of a text as bytes: the text of each token, a NUL, and the kind. The text of a list
/// is its elements, each after a blank.
class TokenBytes {
 public:
  explicit TokenBytes(vsa::SyntaxReader& reader) : reader_(reader) {}

  /// Returns the bytes that are not consumed yet. They are empty only at the end of the text.
  std::string_view bytes() {
    constexpr std::size_t BLOCK_BYTES = 64 << 10;
    if (taken_ == bytes_.size()) {
      bytes_.clear();
      taken_ = 0;
      while (!isEnded_ && bytes_.size() < BLOCK_BYTES) append(reader_.next());
    }
    return std::string_view(bytes_).substr(taken_);
  }
  void take(std::size_t count) { taken_ += count; }

 private:
  void append(const vsa::SyntaxToken& token) {
    isEnded_ = token.kind == vsa::SyntaxKind::EndOfText;
    if (token.isFirst) {
      isList_ = token.kind == vsa::SyntaxKind::Parens || token.kind == vsa::SyntaxKind::Braces;
      if (isList_) list_ = vsa::ListReader();
      listKind_ = token.kind;
    }
    if (isList_) {
      appendList(token.text, listKind_);
    } else {
      bytes_ += token.text;
    }
    if (!token.isLast) return;
    if (isList_ && list_.endsInBlank()) bytes_ += ' ';
    bytes_ += '\0';
    bytes_ += static_cast<char>(token.kind);
  }

  void appendList(std::string_view text, vsa::SyntaxKind kind) {
    const bool isTuple = kind == vsa::SyntaxKind::Parens;
    const std::string_view plain = plainNumbers(text, isTuple ? '(' : '{', isTuple ? ')' : '}');
    if (plain.empty()) return appendParts(text);
    const auto begin = static_cast<std::size_t>(plain.data() - text.data());
    appendParts(text.substr(0, begin));
    appendNumbers(plain);
    appendParts(text.substr(begin + plain.size()));
  }

  // Appends numbers, each after a blank and without the separators that follow it. In `numbers`,
  // there is at least one separator between two numbers, so the result has at most one byte more:
  // the blank before the first number.
  void appendNumbers(std::string_view numbers) {
    const std::size_t size = bytes_.size();
    bytes_.resize(size + numbers.size() + 1);
    char* at = bytes_.data() + size;
    forEachNumber(numbers, [&at](std::string_view number) {
      *at++ = ' ';
      at = std::copy(number.begin(), number.end(), at);
    });
    bytes_.resize(static_cast<std::size_t>(at - bytes_.data()));
  }

  void appendParts(std::string_view text) {
    list_.add(text);
    for (vsa::ListPart part; list_.next(part);) {
      if (!part.continues) bytes_ += ' ';
      bytes_ += part.text;
    }
  }

  vsa::SyntaxReader& reader_;
  vsa::ListReader list_;
  bool isList_ = false;
  vsa::SyntaxKind listKind_ = vsa::SyntaxKind::Parens;
  bool isEnded_ = false;
  std::string bytes_;
  std::size_t taken_ = 0;
};

}  // namespace

bool haveSameTokens(vsa::SyntaxReader& a, vsa::SyntaxReader& b) {
  TokenBytes left(a), right(b);
  while (true) {
    const std::string_view x = left.bytes();
    const std::string_view y = right.bytes();
    const std::size_t count = std::min(x.size(), y.size());
    if (x.substr(0, count) != y.substr(0, count)) return false;
    if (count == 0) return x.size() == y.size();
    left.take(count);
    right.take(count);
  }
}

}  // namespace vsa_tools
