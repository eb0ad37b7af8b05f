// Helpers that compare a SyntaxReader with the reader's lexer, and a source in memory.
#pragma once

#include <algorithm>
#include <cstring>
#include <span>
#include <string>
#include <string_view>

#include <vsa/syntax.h>
#include "vsa/lex/lexer_source.h"

namespace vsa_tests {

/// A source that returns at most `step` bytes per read.
class StepSource final : public vsa::Source {
 public:
  StepSource(std::string_view text, std::size_t step) : text_(text), step_(step) {}

  std::size_t read(std::span<char> to) override {
    const std::size_t count = std::min({step_, to.size(), text_.size() - at_});
    if (count != 0) std::memcpy(to.data(), text_.data() + at_, count);
    at_ += count;
    return count;
  }

 private:
  std::string_view text_;
  std::size_t step_;
  std::size_t at_ = 0;
};

/// A whole token, joined from its pieces.
struct WholeToken {
  vsa::SyntaxKind kind;
  std::string text;      // the text of the token, unchanged
  std::string elements;  // the elements of a list, as the lexer returns them
  vsa::TextRange range;
  std::uint64_t lineFeedsBefore;
};

/// Reads all pieces of the next token.
inline WholeToken wholeToken(vsa::SyntaxReader& reader) {
  WholeToken whole{};
  vsa::ListReader list;
  while (true) {
    const vsa::SyntaxToken piece = reader.next();
    if (piece.isFirst) {
      whole.range = piece.range;
      whole.lineFeedsBefore = piece.lineFeedsBefore;
    }
    whole.text += piece.text;
    whole.kind = piece.kind;
    whole.range.end = piece.range.end;
    if (!whole.text.empty() && (whole.text[0] == '(' || whole.text[0] == '{')) {
      if (whole.elements.empty()) whole.elements = whole.text[0];
      list.add(piece.text);
      for (vsa::ListPart part; list.next(part);) {
        if (!part.continues && whole.elements.size() > 1) whole.elements += ' ';
        whole.elements += part.text;
      }
    }
    if (!piece.isLast) continue;
    if (list.endsInBlank()) whole.elements += ' ';
    if (!whole.elements.empty()) whole.elements += whole.text.back();
    return whole;
  }
}

/// Returns the kind that a token of the lexer has in a SyntaxReader. For Eof this is EndOfText,
/// although a SyntaxReader returns Unterminated for a token that the end of the text cuts off.
inline vsa::SyntaxKind kindOf(zn::korvo_sdk::impl::Token::Type type) {
  using Type = zn::korvo_sdk::impl::Token::Type;
  using vsa::SyntaxKind;
  switch (type) {
    case Type::Eof:
      return SyntaxKind::EndOfText;
    case Type::Invalid:
      return SyntaxKind::Invalid;
    case Type::Id:
      return SyntaxKind::Word;
    case Type::Int:
      return SyntaxKind::Integer;
    case Type::Real:
      return SyntaxKind::Real;
    case Type::Comment:
      return SyntaxKind::Comment;
    case Type::Braces:
      return SyntaxKind::Braces;
    case Type::Parens:
      return SyntaxKind::Parens;
    case Type::Brackets:
      return SyntaxKind::Brackets;
    case Type::Str:
      return SyntaxKind::String;
    case Type::True:
      return SyntaxKind::True;
    case Type::False:
      return SyntaxKind::False;
    case Type::Null:
      return SyntaxKind::Null;
    default:
      return SyntaxKind::Punctuation;
  }
}

/// Compares the tokens of a SyntaxReader with those of a StringLexer, up to the first token that
/// the lexer rejects, or to the end. Returns what differs, or an empty text. Does not compare a
/// text with a NUL, because the text of a token of the lexer ends there.
inline std::string differenceFromLexer(std::string_view text, vsa::SyntaxReader& reader) {
  using zn::korvo_sdk::impl::StringLexer;
  if (text.empty()) return reader.next().kind == vsa::SyntaxKind::EndOfText ? "" : "a token";
  StringLexer lexer(zn::String::copyOf(text));
  const bool hasNul = text.find('\0') != std::string_view::npos;
  if (hasNul) return "";  // a token of the lexer has a shorter text
  while (true) {
    const auto expected = lexer.nextToken();
    const WholeToken found = wholeToken(reader);
    const std::string place =
        " at " + std::to_string(found.range.begin.offset) + ": \"" + found.text.substr(0, 40) + '"';
    const bool isCutOff =
        expected.type == zn::korvo_sdk::impl::Token::Type::Eof && expected.text != "EOF";
    const auto kind = isCutOff ? vsa::SyntaxKind::Unterminated : kindOf(expected.type);
    if (found.kind != kind) return std::string("kind ") + name(found.kind) + place;
    const std::size_t length = found.range.end.offset - found.range.begin.offset;
    if (text.substr(found.range.begin.offset, length) != found.text) return "bytes" + place;
    if (kind == vsa::SyntaxKind::EndOfText || kind == vsa::SyntaxKind::Unterminated) return "";
    if (kind == vsa::SyntaxKind::Invalid) return "";
    if (found.range.end.offset != expected.endIndex) return "end" + place;
    const bool isList = kind == vsa::SyntaxKind::Braces || kind == vsa::SyntaxKind::Parens;
    const bool isConstant = kind == vsa::SyntaxKind::True || kind == vsa::SyntaxKind::False ||
                            kind == vsa::SyntaxKind::Null;
    const std::string& shown = isList ? found.elements : found.text;
    if (!isConstant && shown != expected.text.view()) return "text" + place;
    if (static_cast<std::int32_t>(found.range.end.line) != expected.line &&
        found.text.back() != '\n') {
      return "line" + place;
    }
    if (static_cast<std::int32_t>(found.range.end.column) != expected.column + 1) {
      return "column" + place;
    }
  }
}

}  // namespace vsa_tests
