// Repair: a copy of a text in which wrong statements are replaced, so that reading can continue.
//
// A replacement has as many bytes as what it replaces, so that offsets do not change. (Lines may
// change: a `;` may replace a line end.) A wrong statement is replaced in steps. Each further step
// is taken if the reader reports the statement again. The statement becomes:
//   1. its smallest repair, if it has one: a missing `;` is written, or a missing `:` if inputs of
//      the declared node follow; a character that begins no token is blanked, and so is a line that
//      a merge left; the `{` of a block becomes a `:`, and a `;` inside a list becomes a `,`
//   2. what it would have declared: `lamp a = 3;` becomes `lamp a ;` and three blanks
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
  /// that makes it the with node precedes that text. It overwrites bytes of text(). restore() puts
  /// these bytes back, and must be called before any function that reads or changes them.
  std::string_view textFrom(std::size_t from, std::string_view with);
  void restore();

  /// Moves the text for the rules out of this object. Afterwards, only lostInputs() may be called.
  /// The text is the repaired text, with two changes. A replaced statement with correct grammar,
  /// which the reader rejected for another reason, is as in `original`, the text before the
  /// repairs. Of a replaced assignment with wrong grammar, the path remains if there is room for a
  /// value: `a.x = 50%;` becomes `a.x =null;`.
  std::string takeStatements(std::string_view original);
  /// The names of inputs in replaced statements. The scene may lack these inputs only because of
  /// the mistakes. Complete after takeStatements().
  const std::set<std::string, std::less<>>& lostInputs() const { return lostInputs_; }

  /// Replaces the statement at `offset`, in which `fatal` was found. The search for its beginning
  /// starts at `scanFrom`, the beginning of this or an earlier statement. Returns whether the
  /// statement is replaced for the first time. If it is not, the previous replacement may have
  /// caused `fatal`. If `fatal` is about the "}" of a repaired block, only blanks that brace and a
  /// semicolon after it, and returns false.
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
  bool repairBlock(const vsa::Diagnostic& fatal, std::size_t begin, std::size_t offset);
  std::size_t blockAt(const vsa::Diagnostic& fatal, std::size_t offset) const;
  bool declareUnknown(const Statement& region);
  /// Returns whether the diagnostic is about the "}" of a block that was repaired. If it is, counts
  /// that block as ended.
  bool isEndOfBlock(const vsa::Diagnostic& fatal, std::size_t offset);
  bool repairCharacter(const vsa::Diagnostic& fatal, std::size_t offset);
  bool repairSemicolons(const vsa::Diagnostic& fatal, std::size_t offset);
  bool isBlock(const std::string& statement, std::size_t end) const;
  bool repairEnd(const vsa::Diagnostic& fatal, const Statement& region);
  void keepDeclaration(const Statement& region);
  void keepPath(const Statement& region, std::string_view original);
  void addLostInputs(std::string_view statement);
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
  std::vector<Statement> replaced_;             // the statements that were replaced as a whole
  std::size_t unknownNodes_ = 0;                // the number of nodes declared for `TYPE ?:`
  std::set<std::string, std::less<>> suspects_;
  std::set<std::string, std::less<>> lostInputs_;
};

}  // namespace vsa_tools
