// HintText: the text of a file, with the look-ups that the functions for hints need.
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

/// The first statement that assigns to an input.
struct FirstAssignment {
  std::string_view value;  ///< The value as it is written: a part of the text.
  vsa::SyntaxKind kind = vsa::SyntaxKind::EndOfText;  ///< The kind of its first token.
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
  /// The range of `part`, a view of a part of the text.
  vsa::TextRange rangeOf(std::string_view part) { return places_.rangeOf(part); }
  /// The offset of the last byte before `offset` that is no white space, plus 1.
  std::uint64_t endBefore(std::uint64_t offset) const;
  /// The offset of the first byte from `offset` on that is no white space.
  std::uint64_t beginBehind(std::uint64_t offset) const;
  char at(std::uint64_t offset) const { return offset < text().size() ? text()[offset] : '\0'; }

  // The most similar name; nothing if none is similar.
  std::optional<Suggestion> nearestNode(std::string_view written);
  std::optional<Suggestion> nearestInput(std::string_view written);
  std::optional<Suggestion> nearestOutput(std::string_view written);

  /// The range of the name in the first declaration of a node.
  std::optional<vsa::TextRange> declarationOf(std::string_view node);
  /// The first assignment to an input; null if there is none. `path` is written as in a diagnostic.
  const FirstAssignment* firstAssignment(const std::string& path);

 private:
  using Names = std::set<std::string_view>;  // views of the first occurrence of each name

  void collect();
  std::optional<Suggestion> nearest(const Names& names, std::string_view written);

  std::string_view text_;
  TextPlaces places_;
  std::span<const vsa::TypeDescription> types_;
  bool isCollected_ = false;
  Names nodes_, inputs_, outputs_;
  // The key is a hash of the path, because paths of long names would take far more memory than
  // their text. If two paths had the same hash, a note would have the wrong place.
  std::unordered_map<PathKey, FirstAssignment> assignments_;
  // Limits the comparisons of names, so that a text with many mistakes and many names takes time in
  // proportion to its size.
  std::uint64_t comparisonsLeft_ = 5'000'000;
};

// The hints for groups of diagnostics. A function that has no hint leaves the finding unchanged.
void hintForStatement(HintText& text, const vsa::Diagnostic& diagnostic, Finding& finding);
void hintForCharacter(HintText& text, const vsa::Diagnostic& diagnostic, Finding& finding);
void hintForMissingEnd(HintText& text, const vsa::Diagnostic& diagnostic, Finding& finding);
void hintForValue(HintText& text, const vsa::Diagnostic& diagnostic, Finding& finding);
void hintForPath(HintText& text, const vsa::Diagnostic& diagnostic, Finding& finding);
void hintForLink(HintText& text, const vsa::Diagnostic& diagnostic, Finding& finding);
void hintForType(HintText& text, const vsa::Diagnostic& diagnostic, Finding& finding);
void hintForBuffer(HintText& text, const vsa::Diagnostic& diagnostic, Finding& finding);

// Functions that several of the functions above use.

/// Adds an edit that replaces the range, and the hint "write `to`".
void replace(Finding& finding, const vsa::TextRange& range, std::string to);
/// Adds an edit that inserts a text at an offset.
void insertAt(Finding& finding, std::uint64_t offset, std::string text);
/// Adds the hint "did you mean `name`?" if there is a suggestion, and an edit that replaces the
/// range if the suggestion is sure.
bool suggest(Finding& finding, const vsa::TextRange& range,
             const std::optional<Suggestion>& suggestion);
/// The value of "0x1F" in decimal; nothing if it does not fit into 64 bits.
std::optional<std::string> decimalOfHexadecimal(std::string_view digits);
bool isWordText(std::string_view text);
/// Whether `source` is a single opening character: the range of a diagnostic about a string or list
/// that is not closed.
bool isOpening(std::string_view source);
/// Adds a hint that says how to close the string or list, and a note at the place where the reader
/// notices that it is not closed.
void hintForUnclosed(HintText& text, const vsa::TextRange& open, Finding& finding);
/// Suggests a buffer for a list in brackets after "=", such as "[0 1]". Returns false if `open` is
/// not the bracket of such a list.
bool hintForBracketList(const HintText& text, std::uint64_t open, Finding& finding);

}  // namespace vsa_tools
