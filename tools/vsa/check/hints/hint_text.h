// HintText: the text with a diagnostic, as the functions see it that make hints of it.
#pragma once

#include <cstdint>
#include <optional>
#include <set>
#include <span>
#include <string>
#include <string_view>
#include <unordered_map>

#include <vsa/reading/read_diagnostic.h>
#include <vsa/syntax.h>
#include <vsa/types.h>
#include "tools/vsa/check/finding.h"
#include "tools/vsa/check/hints/similar_names.h"
#include "tools/vsa/check/text/path_key.h"
#include "tools/vsa/check/text/text_places.h"

namespace vsa_tools {

/// The statement that made an input.
struct FirstAssignment {
  std::string_view value;                             ///< As it is written; a part of the text.
  vsa::SyntaxKind kind = vsa::SyntaxKind::EndOfText;  ///< Of the value's first token.
  bool isConnection = false;
};

/// The text and the names in it, which are collected at the first request.
class HintText {
 public:
  HintText(std::string_view text, std::span<const vsa::TypeDescription> types)
      : text_(text), places_(text), types_(types) {}

  std::string_view text() const { return text_; }
  std::span<const vsa::TypeDescription> types() const { return types_; }
  std::string_view bytesOf(const vsa::TextRange& range) const;
  /// The range of a part of the text, given as a view of it.
  vsa::TextRange rangeOf(std::string_view part) { return places_.rangeOf(part); }
  /// The offset of the last byte before `offset` that is no white space, plus 1.
  std::uint64_t endBefore(std::uint64_t offset) const;
  /// The offset of the first byte from `offset` on that is no white space.
  std::uint64_t beginBehind(std::uint64_t offset) const;
  char at(std::uint64_t offset) const { return offset < text().size() ? text()[offset] : '\0'; }

  // The most similar name, as far as one is near.
  std::optional<Suggestion> nearestNode(std::string_view written);
  std::optional<Suggestion> nearestInput(std::string_view written);
  std::optional<Suggestion> nearestOutput(std::string_view written);

  /// The name in the first declaration of a node.
  std::optional<vsa::TextRange> declarationOf(std::string_view node);
  /// Null if no statement assigns to the input. `path` is one of a diagnostic.
  const FirstAssignment* firstAssignment(const std::string& path);

 private:
  using Names = std::set<std::string_view>;  // where they are written first

  void collect();
  std::optional<Suggestion> nearest(const Names& names, std::string_view written);

  std::string_view text_;
  TextPlaces places_;
  std::span<const vsa::TypeDescription> types_;
  bool isCollected_ = false;
  Names nodes_, inputs_, outputs_;
  // By the hash of the path: paths of long names would take far more memory than their text. Two
  // paths of one hash would only give a note the wrong place.
  std::unordered_map<PathKey, FirstAssignment> assignments_;
  // So that a text with many mistakes and many names takes time in proportion to its size.
  std::uint64_t comparisonsLeft_ = 5'000'000;
};

// The hints for groups of diagnostics. Each leaves the finding as it is if it has nothing to say.
void hintForStatement(HintText& text, const vsa::Diagnostic& diagnostic, Finding& finding);
void hintForCharacter(HintText& text, const vsa::Diagnostic& diagnostic, Finding& finding);
void hintForMissingEnd(HintText& text, const vsa::Diagnostic& diagnostic, Finding& finding);
void hintForValue(HintText& text, const vsa::Diagnostic& diagnostic, Finding& finding);
void hintForPath(HintText& text, const vsa::Diagnostic& diagnostic, Finding& finding);
void hintForLink(HintText& text, const vsa::Diagnostic& diagnostic, Finding& finding);
void hintForType(HintText& text, const vsa::Diagnostic& diagnostic, Finding& finding);
void hintForBuffer(HintText& text, const vsa::Diagnostic& diagnostic, Finding& finding);

// Shared by them.

/// An edit that replaces the range, and a hint "write `to`".
void replace(Finding& finding, const vsa::TextRange& range, std::string to);
/// An edit that inserts at an offset.
void insertAt(Finding& finding, std::uint64_t offset, std::string text);
/// "did you mean `name`?", if there is a name, with an edit that replaces the range if it is sure.
bool suggest(Finding& finding, const vsa::TextRange& range,
             const std::optional<Suggestion>& suggestion);
/// The value of "0x1F" in decimal; nothing if it does not fit into 64 bits.
std::optional<std::string> decimalOfHexadecimal(std::string_view digits);
bool isWordText(std::string_view text);
/// Whether it is the character that opens a string or a list which is not closed.
bool isOpening(std::string_view source);
/// How to close it, with a note where the reader notices.
void hintForUnclosed(HintText& text, const vsa::TextRange& open, Finding& finding);
/// "[0 1]" after "=": a buffer. False if `open` is no such bracket.
bool hintForBracketList(const HintText& text, std::uint64_t open, Finding& finding);

}  // namespace vsa_tools
