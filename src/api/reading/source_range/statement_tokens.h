// StatementTokens: the tokens of one statement with their first and last bytes. The parser only
// stores the positions of last characters, so a statement with a problem is lexed again. Internal.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

#include <vsa/foundation/string.h>
#include "api/reading/text/text_index.h"
#include "api/reading/text/text_store.h"
#include "vsa/lex/token.h"

namespace vsa {

class StatementTokens {
 public:
  using Type = zn::korvo_sdk::impl::Token::Type;

  /// A token from `begin` up to, but not including, `end`. Both are offsets in the text. Invalid:
  /// `end` is the offset of the invalid character. Eof: `begin` is where the string or list that is
  /// cut off opens, or the end of the text.
  struct Item {
    Type type;
    std::uint64_t begin;
    std::uint64_t end;
    std::uint64_t firstLine;  // counted from 0 at the beginning of the statement
    std::uint64_t lastLine;
    zn::String text;
    bool isCutOff = false;  // true for a string or list in which the text ends
  };

  /// Lexes from `start` up to the first ";" that ends at or after `noticed`. `noticed` is the end
  /// of the token at which the parser noticed a problem. If `noticed` is after `start`, lexing also
  /// stops after three tokens that begin at or after `noticed`. Finds no tokens if the bytes are no
  /// longer available.
  StatementTokens(TextStore& store, const TextIndex& index, std::uint64_t start,
                  std::uint64_t noticed);

  std::size_t size() const noexcept { return items_.size(); }
  /// The i-th token, or one of type Eof past the end.
  const Item& operator[](std::size_t i) const noexcept {
    return i < items_.size() ? items_[i] : none_;
  }
  /// The number of tokens that end at or before `offset`.
  std::size_t countUpTo(std::uint64_t offset) const noexcept;
  /// The bytes from `offset` to the end of the lexed bytes. `offset` is not before the first token.
  std::string_view bytesFrom(std::uint64_t offset) const noexcept;
  /// The bytes of a token as they are written.
  std::string_view bytesOf(const Item& item) const noexcept;

 private:
  // The first attempt lexes FIRST_BYTES, and each further attempt four times as many. A statement
  // longer than MAX_BYTES is not lexed, because the bytes of a file are read into memory.
  static constexpr std::size_t FIRST_BYTES = 16384;
  static constexpr std::size_t MAX_BYTES = std::size_t{1} << 26;

  bool lex(std::string_view bytes, bool isWhole);
  bool isComplete() const noexcept;

  std::uint64_t start_;
  std::uint64_t noticed_;
  std::string_view bytes_;
  std::vector<Item> items_;
  Item none_{};
};

}  // namespace vsa
