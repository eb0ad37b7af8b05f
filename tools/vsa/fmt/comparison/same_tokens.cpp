#include "tools/vsa/fmt/comparison/same_tokens.h"

#include <algorithm>
#include <string>
#include <string_view>

namespace vsa_tools {

namespace {

/// The tokens of a text as bytes: kind, text, NUL. A list has only its elements and separators.
class TokenBytes {
 public:
  explicit TokenBytes(vsa::SyntaxReader& reader) : reader_(reader) {}

  /// The bytes that are not taken yet, at least one unless the text has ended.
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
    }
    if (isList_) {
      appendList(token.text);
    } else {
      bytes_ += token.text;
    }
    if (!token.isLast) return;
    if (isList_ && list_.endsInBlank()) bytes_ += ' ';
    bytes_ += '\0';
    bytes_ += static_cast<char>(token.kind);
  }

  void appendList(std::string_view text) {
    list_.add(text);
    for (vsa::ListPart part; list_.next(part);) {
      if (!part.continues) bytes_ += ' ';
      bytes_ += part.text;
    }
  }

  vsa::SyntaxReader& reader_;
  vsa::ListReader list_;
  bool isList_ = false;
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
