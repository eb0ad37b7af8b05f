#include "api/reading/source_range/statement_tokens.h"

#include <algorithm>
#include <utility>

#include <vsa/foundation/char_class.h>
#include "api/reading/text/block_observer.h"
#include "api/reading/text/text_lexer.h"

namespace vsa {

namespace {

using zn::korvo_sdk::DiagnosticId;
using zn::korvo_sdk::impl::Token;

class NoObserver final : public BlockObserver {
 public:
  void beforeBlock() override {}
  void afterBlock(std::string_view) override {}
};

std::size_t skipWhite(std::string_view bytes, std::size_t at) {
  while (at < bytes.size() && zn::char_class::is(bytes[at], zn::char_class::WHITE)) ++at;
  return at;
}

std::uint64_t lineFeeds(std::string_view bytes) {
  return static_cast<std::uint64_t>(std::count(bytes.begin(), bytes.end(), '\n'));
}

}  // namespace

StatementTokens::StatementTokens(TextStore& store, const TextIndex& index, std::uint64_t start,
                                 std::uint64_t noticed, Extent extent)
    : start_(start), noticed_(noticed), extent_(extent) {
  none_.begin = none_.end = index.end();
  const std::uint64_t rest = index.end() - std::min(start, index.end());
  for (std::uint64_t wanted = FIRST_BYTES;; wanted *= 4) {
    const auto count = static_cast<std::size_t>(std::min({wanted, rest, std::uint64_t{MAX_BYTES}}));
    bytes_ = store.bytes(start, count);
    if (lex(bytes_, count == rest)) return;
    if (bytes_.size() < count || count == MAX_BYTES) break;
  }
  items_.clear();
}

// Lexes `bytes`. Returns false if the statement may continue after `bytes`. `isWhole` is true if
// `bytes` includes the end of the text. If the statement has more than MAX_TOKENS, there are no
// tokens.
bool StatementTokens::lex(std::string_view bytes, bool isWhole) {
  items_.clear();
  NoObserver observer;
  TextLexer lexer(bytes, observer);
  std::uint64_t line = 0;
  for (std::size_t at = 0; !isComplete();) {
    const std::size_t begin = skipWhite(bytes, at);
    line += lineFeeds(bytes.substr(at, begin - at));
    Token token = lexer.nextToken();
    at = static_cast<std::uint32_t>(lexer.index);
    if (at == bytes.size() && !isWhole) return false;  // the token may continue after `bytes`
    const std::uint64_t lastLine = line + lineFeeds(bytes.substr(begin, at - begin));
    const bool isCutOff = lexer.problem().id == DiagnosticId::UnexpectedEof;
    items_.push_back(
        {token.type, start_ + begin, start_ + at, line, lastLine, std::move(token.text), isCutOff});
    line = lastLine;
    if (items_.size() > MAX_TOKENS) {
      items_ = {};
      return true;
    }
  }
  return true;
}

bool StatementTokens::isComplete() const noexcept {
  if (items_.empty()) return false;
  const Item& last = items_.back();
  if (last.type == Type::Eof || last.type == Type::Invalid) return true;
  if (items_.size() == 1 && last.type == Type::Comment) return true;
  if (last.end < noticed_) return false;
  if (last.type == Type::Semicolon) return true;
  const bool isFarAfter = items_.size() > 3 && items_[items_.size() - 3].begin >= noticed_;
  return (noticed_ > start_ || extent_ == Extent::Beginning) && isFarAfter;
}

std::size_t StatementTokens::countUpTo(std::uint64_t offset) const noexcept {
  const auto after = std::find_if(items_.begin(), items_.end(), [&](const Item& item) {
    return item.end > offset || item.type == Type::Eof || item.type == Type::Invalid;
  });
  return static_cast<std::size_t>(after - items_.begin());
}

std::string_view StatementTokens::bytesFrom(std::uint64_t offset) const noexcept {
  return bytes_.substr(std::min(static_cast<std::size_t>(offset - start_), bytes_.size()));
}

std::string_view StatementTokens::bytesOf(const Item& item) const noexcept {
  return bytesFrom(item.begin).substr(0, static_cast<std::size_t>(item.end - item.begin));
}

}  // namespace vsa
