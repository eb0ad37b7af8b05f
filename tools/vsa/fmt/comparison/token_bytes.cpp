#include "tools/vsa/fmt/comparison/token_bytes.h"

#include "tools/vsa/fmt/layout/plain_numbers.h"
#include "tools/vsa/fmt/layout/token_spacing.h"

namespace vsa_tools {

void TokenBytes::beginPiece(const vsa::SyntaxToken& token) {
  isInPiece_ = true;
  piece_ = token;
  if (token.isFirst) {
    isList_ = isList(token.kind);
    if (isList_) list_ = vsa::ListReader();
    listKind_ = token.kind;
  }
  if (!isList_) return;
  const bool isTuple = listKind_ == vsa::SyntaxKind::Parens;
  numbers_ = plainNumbers(piece_.text, isTuple ? '(' : '{', isTuple ? ')' : '}');
  if (numbers_.empty()) return;
  const auto begin = static_cast<std::size_t>(numbers_.data() - piece_.text.data());
  appendParts(piece_.text.substr(0, begin));
  piece_.text.remove_prefix(begin + numbers_.size());
}

void TokenBytes::endPiece() {
  isInPiece_ = false;
  if (isList_) {
    appendParts(piece_.text);
  } else {
    bytes_ += piece_.text;
  }
  if (!piece_.isLast) return;
  if (isList_ && list_.endsInBlank()) bytes_ += ' ';
  bytes_ += '\0';
  bytes_ += static_cast<char>(piece_.kind);
}

void TokenBytes::take(std::size_t count) {
  taken_ += count;
  if (taken_ < bytes_.size()) return;
  bytes_.clear();
  taken_ = 0;
}

void TokenBytes::moveNumbers(std::size_t size) {
  if (!bytes_.empty()) return;
  while (!numbers_.empty() && bytes_.size() < size) {
    (bytes_ += ' ') += takeNumber(numbers_);
  }
}

void TokenBytes::appendParts(std::string_view text) {
  list_.add(text);
  for (vsa::ListPart part; list_.next(part);) {
    if (!part.continues) bytes_ += ' ';
    bytes_ += part.text;
  }
}

}  // namespace vsa_tools
