// HintText: the text of a file, and the functions that search it for hints.
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

/// The first assignment to an input. For an object or array, it may be the first statement about
/// one of its members or elements: `value` is then the path in that statement, and `kind` is
/// EndOfText.
struct FirstAssignment {
  std::string_view value;  ///< The value as it is written: a part of the text.
  vsa::SyntaxKind kind = vsa::SyntaxKind::EndOfText;  ///< The kind of its first token.
  bool isConnection = false;
};

/// The text and the names in it. The names are collected when one is requested for the first time.
class HintText {
 public:
  HintText(std::string_view text, std::span<const vsa::TypeDescription> types)
      : text_(text), places_(text), types_(types) {}

  std::string_view text() const { return text_; }
  std::span<const vsa::TypeDescription> types() const { return types_; }
  std::string_view bytesOf(const vsa::TextRange& range) const;
  /// Returns the range of `part`, which must be a view of a part of the text.
  vsa::TextRange rangeOf(std::string_view part) { return places_.rangeOf(part); }
  /// Returns the offset of the last byte before `offset` that is not white space, plus 1. 0 if
  /// there is none.
  std::uint64_t endBefore(std::uint64_t offset) const;
  /// Returns the offset of the first byte at `offset` or after it that is not white space, or the
  /// size of the text if there is none.
  std::uint64_t beginBehind(std::uint64_t offset) const;
  char at(std::uint64_t offset) const { return offset < text().size() ? text()[offset] : '\0'; }

  // Return the most similar name of the text. Return nothing if no name is similar, and after the
  // maximum number of comparisons.
  std::optional<Suggestion> nearestNode(std::string_view written);
  std::optional<Suggestion> nearestInput(std::string_view written);
  std::optional<Suggestion> nearestOutput(std::string_view written);

  /// Returns the range of the node's name in the first declaration or directive that contains it,
  /// or nothing if there is none.
  std::optional<vsa::TextRange> declarationOf(std::string_view node);
  /// Returns the first assignment to an input, or null if there is none. `path` is the input path
  /// as diagnostics show it. If the text removes a node and declares it again, only the assignments
  /// after the last removal count.
  const FirstAssignment* firstAssignment(const std::string& path);
  /// Returns whether a statement before `offset` may set a with node: whether one ends with a
  /// colon.
  bool hasWithNodeBefore(std::uint64_t offset);

 private:
  // Views of the first occurrence of each name in the text.
  using Names = std::set<std::string_view>;

  void collect();
  std::optional<Suggestion> nearest(const Names& names, std::string_view written);

  std::string_view text_;
  TextPlaces places_;
  std::span<const vsa::TypeDescription> types_;
  bool isCollected_ = false;
  Names nodes_, inputs_, outputs_;
  // The first assignment of each input. The key is a hash of the path, because with long names the
  // paths themselves would take far more memory than the text. If two paths had the same hash, a
  // note would have a wrong place.
  std::unordered_map<PathKey, FirstAssignment> assignments_;
  NodeGenerations generations_;
  std::optional<std::uint64_t> firstBlock_;  // see hasWithNodeBefore()
  // The number of comparisons of names that are still allowed. The limit keeps the time in
  // proportion to the size of the text, even with many mistakes and many names.
  std::uint64_t comparisonsLeft_ = 5'000'000;
};

// Add the hints for groups of diagnostics, with edits and notes. A finding may get a note without a
// hint, or neither.
void hintForStatement(HintText& text, const vsa::Diagnostic& diagnostic, Finding& finding);
void hintForCharacter(HintText& text, const vsa::Diagnostic& diagnostic, Finding& finding);
void hintForMissingEnd(HintText& text, const vsa::Diagnostic& diagnostic, Finding& finding);
void hintForValue(HintText& text, const vsa::Diagnostic& diagnostic, Finding& finding);
void hintForPath(HintText& text, const vsa::Diagnostic& diagnostic, Finding& finding);
void hintForLink(HintText& text, const vsa::Diagnostic& diagnostic, Finding& finding);
void hintForType(HintText& text, const vsa::Diagnostic& diagnostic, Finding& finding);
void hintForBuffer(HintText& text, const vsa::Diagnostic& diagnostic, Finding& finding);

/// Sets the only edit, which replaces the range by `to`, and the hint "write `to`".
void replace(Finding& finding, const vsa::TextRange& range, std::string to);
/// Sets the only edit, which inserts a text at an offset.
void insertAt(Finding& finding, std::uint64_t offset, std::string text);
/// Sets the hint "did you mean `name`?" if there is a suggestion. If the suggestion is sure, sets
/// the edit, too, which replaces the range by the name. Returns whether there is a suggestion.
bool suggest(Finding& finding, const vsa::TextRange& range,
             const std::optional<Suggestion>& suggestion);
/// Returns the value of hexadecimal digits such as "1F" as a decimal number. Returns nothing if
/// `digits` is empty or has another character, or if the number does not fit into 64 bits.
std::optional<std::string> decimalOfHexadecimal(std::string_view digits);
/// Returns an element type of a buffer that takes the numbers of a list in braces: "float" if a
/// number has a period or an exponent, otherwise "int32", or "int64" if one does not fit into 32
/// bits. Returns an empty text if an element of the list is no number or fits none of these types,
/// or if groups of the list run together.
std::string_view bufferTypeFor(std::string_view list);
/// Returns whether the text is a name: ASCII letters, digits, `_` and bytes from 0x80 on, and no
/// digit first.
bool isWordText(std::string_view text);
/// Returns whether `source`, the part of the text that a diagnostic is about, is a single opening
/// character: a quote, parenthesis, brace or bracket. Such a diagnostic is mostly about a string or
/// list that is not closed.
bool isOpening(std::string_view source);
/// Adds a hint that says how to close the string or list, and a note at the place where the reader
/// notices that it is not closed. For a list with semicolons between its numbers, adds instead a
/// hint about them and edits that make them commas, and moves the range to the first of them.
void hintForUnclosed(HintText& text, const vsa::TextRange& open, Finding& finding);
/// Adds a hint if a conflict marker begins at `range`: a line such as "<<<<<<< HEAD", which a merge
/// of two versions leaves in a file. The whole line is then the place of the finding. Returns
/// whether such a marker begins there.
bool hintForConflict(HintText& text, const vsa::TextRange& range, Finding& finding);
/// Suggests a buffer for a list in brackets after "=", such as "[0 1]". Returns false if the
/// bracket at `open` does not begin such a list, or no buffer takes its numbers.
bool hintForBracketList(const HintText& text, std::uint64_t open, Finding& finding);

}  // namespace vsa_tools
