// StatementTokens: the tokens from the start of a statement to a problem, with the offsets of their
// bytes. Internal.
//
// For each token, the parser stores where the token ends, but not where it begins. If a statement
// has a problem, it is therefore lexed a second time.
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

  /// A token and its bytes from `begin` up to, but not including, `end`. Both are offsets in the
  /// text. For an Invalid token, `end` is the offset of the invalid character. For Eof, `begin` is
  /// the end of the text, or the beginning of the string or list that is cut off.
  struct Item {
    Type type;
    std::uint64_t begin;
    std::uint64_t end;
    std::uint64_t firstLine;  // from 0 for the first line of the statement
    std::uint64_t lastLine;
    zn::String text;
    bool isCutOff = false;  // whether this is a string or list that the end of the text cuts off
  };

  /// How far to lex if the parser has noticed the problem before it has consumed a token: the whole
  /// statement, or only its first tokens.
  enum class Extent { Statement, Beginning };

  /// Lexes from `start` on. `noticed` is the offset after the token at which the parser detected a
  /// problem. Lexing stops after a ";" that ends at or after `noticed`. It also stops at the end of
  /// the text, at an invalid character, and after the comment if the statement is a comment. If
  /// `noticed` is after `start`, or `extent` is Beginning, lexing stops at the latest after three
  /// tokens that begin at or after `noticed`, or after four if the first token of the statement is
  /// one of them. If the bytes are not available any more, or if lexing would need more than
  /// MAX_BYTES or MAX_TOKENS, there are no tokens.
  StatementTokens(TextStore& store, const TextIndex& index, std::uint64_t start,
                  std::uint64_t noticed, Extent extent = Extent::Statement);

  std::size_t size() const noexcept { return items_.size(); }
  /// The token at index `i`, or a token of type Eof if there is none.
  const Item& operator[](std::size_t i) const noexcept {
    return i < items_.size() ? items_[i] : none_;
  }
  /// Returns the number of tokens that end at or before `offset`. Eof and Invalid tokens do not
  /// count.
  std::size_t countUpTo(std::uint64_t offset) const noexcept;
  /// Returns the bytes from `offset` to the end of the lexed bytes. `offset` must not be before the
  /// first token.
  std::string_view bytesFrom(std::uint64_t offset) const noexcept;
  /// Returns the bytes of a token as written in the text.
  std::string_view bytesOf(const Item& item) const noexcept;

 private:
  // How many bytes are lexed. The first attempt lexes FIRST_BYTES, and each further attempt four
  // times as many. A statement of more than MAX_BYTES is not lexed: if the text is a file, all
  // bytes of the statement would have to be read into memory.
  static constexpr std::size_t FIRST_BYTES = 16384;
  static constexpr std::size_t MAX_BYTES = std::size_t{1} << 26;
  // A token takes 56 bytes, so the tokens of a path of 4 MB would take more memory than the rest of
  // the reading. A list is one token, and the paths of real texts have few.
  static constexpr std::size_t MAX_TOKENS = 65536;

  bool lex(std::string_view bytes, bool isWhole);
  bool isComplete() const noexcept;

  std::uint64_t start_;
  std::uint64_t noticed_;
  Extent extent_;
  std::string_view bytes_;
  std::vector<Item> items_;
  Item none_{};
};

}  // namespace vsa
