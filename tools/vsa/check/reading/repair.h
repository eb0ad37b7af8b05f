// Repair: a copy of a text in which wrong statements are replaced, so that reading can continue.
//
// A replacement has as many bytes as what it replaces, so that offsets do not change. (Lines may
// change: a `;` may replace a line end.) A wrong statement is replaced in steps. Each further step
// is taken if the reader reports the statement again. The statement becomes:
//   1. its smallest repair, if it has one: a missing `;` is written, a character that begins no
//      token is blanked, and so is a line that a merge left; the `{` of a block becomes a `:`
//   2. what it would have declared: `lamp a = 3;` becomes `lamp a    ;`
//   3. blanks
#pragma once

#include <cstdint>
#include <set>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include <vsa/reading/read_diagnostic.h>
#include "tools/vsa/check/text/statement_scan.h"

namespace vsa_tools {

class Repair {
 public:
  explicit Repair(std::string_view text);

  /// The repaired text.
  std::string_view text() const { return std::string_view(padded_).substr(PADDING); }

  /// Returns the repaired text from `from` on. If `with` is not empty and not too long, a statement
  /// that makes it the with node precedes that text. restore() removes the statement again, and
  /// must be called before any other function.
  std::string_view textFrom(std::size_t from, std::string_view with);
  void restore();

  /// Replaces the statement at `offset`, in which `fatal` was found. The search for its beginning
  /// starts at `scanFrom`, the beginning of this or an earlier statement. Returns whether the
  /// statement is replaced for the first time. If it is not, the previous replacement may have
  /// caused `fatal`. If `fatal` is about the "}" of a repaired block, only blanks that brace and
  /// returns false.
  bool replace(const vsa::Diagnostic& fatal, std::size_t offset, std::size_t scanFrom);

  /// Whether the last call of replace() found nothing to replace.
  bool hasReplacedNothing() const { return hasReplacedNothing_; }
  /// The beginning of the statement that was replaced last.
  std::size_t lastBegin() const { return lastBegin_; }

  /// Whether a replaced statement may have declared a node of this name, or a diagnostic has
  /// reported such a node as missing.
  bool isSuspect(std::string_view name) const { return suspects_.count(name) != 0; }
  void addSuspect(std::string_view name) { suspects_.emplace(name); }

 private:
  static constexpr std::size_t PADDING = 1024;

  bool repairConflict(std::size_t offset);
  bool repairBlock(const vsa::Diagnostic& fatal, std::size_t offset);
  /// Whether the diagnostic is about the "}" of a block that was repaired.
  bool isEndOfBlock(const vsa::Diagnostic& fatal, std::size_t offset);
  bool repairCharacter(const vsa::Diagnostic& fatal, std::size_t offset);
  bool repairEnd(const vsa::Diagnostic& fatal, const Statement& region);
  void keepDeclaration(const Statement& region);
  void blank(std::size_t begin, std::size_t end);
  void addSuspects(const Statement& region);

  char& byteAt(std::size_t offset) { return padded_[PADDING + offset]; }

  std::string padded_;  // PADDING blanks, then the text
  std::size_t selectionBegin_ = 0;
  std::string overwritten_;
  std::size_t lastBegin_ = 0;
  bool hasReplacedNothing_ = false;
  std::size_t openBlocks_ = 0;  // the number of repaired "{" whose "}" was not found yet
  std::unordered_map<std::size_t, int> steps_;  // the last step for a statement, by its beginning
  std::set<std::string, std::less<>> suspects_;
};

}  // namespace vsa_tools
