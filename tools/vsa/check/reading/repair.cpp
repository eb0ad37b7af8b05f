#include "tools/vsa/check/reading/repair.h"

#include <algorithm>
#include <utility>

#include <vsa/outline.h>
#include <vsa/read.h>

namespace vsa_tools {

namespace {

using vsa::DiagnosticId;

bool isOfPath(std::string_view text, std::size_t begin) {
  const std::size_t end = endOfName(text, begin);
  return end < text.size() && (text[end] == '.' || text[end] == '[');
}

/// Returns whether the colon at the end of `region` is inside what was meant as one statement, such
/// as ".power: 2.5;", "sun::power = 2.5;" and "lamp: sun;".
bool isInsideStatement(std::string_view text, const Statement& region) {
  if (isOfPath(text, region.begin)) return true;
  const std::size_t end = endOfName(text, region.begin);
  if (end == region.begin || skipBlanks(text, end) + 1 != region.end) return false;
  const std::string_view rest = text.substr(region.end, skipBlanks(text, region.end) - region.end);
  return rest.find('\n') == std::string_view::npos;
}

/// Returns the statement that begins at `begin`, as nextStatement() does. If it ends at a colon
/// that is inside what was meant as one statement, the end is the next one.
Statement meantStatement(std::string_view text, std::size_t begin, std::size_t limit) {
  Statement meant = nextStatement(text, begin, limit);
  if (meant.terminator != ':' || !isInsideStatement(text, meant)) return meant;
  const std::size_t behind = std::min(text.find_first_not_of(':', meant.end), text.size());
  const Statement rest = nextStatement(text, behind, limit);
  meant.end = rest.end;
  meant.terminator = rest.terminator;
  return meant;
}

/// Returns the beginning of the statement that contains the byte at `offset`.
std::size_t beginOfStatementAt(std::string_view text, std::size_t offset, std::size_t scanFrom) {
  Statement found = nextStatement(text, scanFrom, offset + 1);
  while (found.end <= offset && found.end < text.size()) {
    found = nextStatement(text, found.end, offset + 1);
  }
  return found.begin;
}

/// Returns the statement at `begin` that contains the byte at `offset`, up to the place where
/// reading continues. Many statements of a text may have no end, so the end is sought in steps that
/// double, until it or that place is found.
Statement regionAt(std::string_view text, std::size_t begin, std::size_t offset) {
  for (std::size_t limit = offset + 256;; limit += limit - begin) {
    Statement region = meantStatement(text, begin, limit);
    const std::size_t end = resumePoint(text, region);
    const bool isWhole = region.terminator != 0 || region.end < limit || limit >= text.size();
    if (end == region.end && !isWhole) continue;
    if (end < region.end) region.terminator = 0;
    region.end = end;
    return region;
  }
}

/// Returns whether the reader accepts the grammar of a statement. Missing nodes and inputs do not
/// matter.
bool isGrammatical(const std::string& statement) {
  vsa::ReadOptions options;
  options.buffers = vsa::BufferMode::Skip;
  const vsa::ReadResult result = vsa::readText("t n: " + statement, options);
  if (result.isComplete()) return true;
  return std::any_of(result.diagnostics.begin(), result.diagnostics.end(), [](const auto& found) {
    return found.endedReading &&
           (found.id == DiagnosticId::NodeNotFound || found.id == DiagnosticId::InputNotFound);
  });
}

/// Returns whether `statement` is one statement with correct grammar. In contrast to
/// isGrammatical(), the number of components of a tuple and the like do not matter.
bool hasCorrectGrammar(std::string_view statement) {
  vsa::OutlineReader reader(statement);
  vsa::StatementOutline outline;
  if (!reader.next(outline) || outline.kind == vsa::StatementKind::Malformed) return false;
  vsa::StatementOutline next;
  return !reader.next(next);
}

bool equalsKeyword(std::string_view text, std::string_view word) {
  return std::equal(text.begin(), text.end(), word.begin(), word.end(),
                    [](char a, char b) { return (a | 0x20) == b; });
}

bool isStatementWord(std::string_view name) {
  return equalsKeyword(name, "with") || equalsKeyword(name, "define") ||
         equalsKeyword(name, "remove");
}

}  // namespace

Repair::Repair(std::string_view text) {
  padded_.reserve(PADDING + text.size());
  padded_.assign(PADDING, ' ');
  padded_ += text;
}

std::string_view Repair::textFrom(std::size_t from, std::string_view with) {
  const std::string selection = with.empty() ? "" : "with " + std::string(with) + ':';
  const std::size_t length = selection.size() <= PADDING + from ? selection.size() : 0;
  selectionBegin_ = PADDING + from - length;
  overwritten_ = padded_.substr(selectionBegin_, length);
  padded_.replace(selectionBegin_, length, selection, 0, length);
  return std::string_view(padded_).substr(selectionBegin_);
}

void Repair::restore() {
  padded_.replace(selectionBegin_, overwritten_.size(), overwritten_);
  overwritten_.clear();
}

bool Repair::replace(const vsa::Diagnostic& fatal, std::size_t offset, std::size_t scanFrom) {
  const std::size_t begin = beginOfStatementAt(text(), offset, scanFrom);
  lastBegin_ = begin;
  int& step = steps_[begin];
  hasReplacedNothing_ = begin == text().size() || step == 3;
  const bool isFirst = step == 0;
  if (isEndOfBlock(fatal, offset)) {
    byteAt(offset) = ' ';
    const std::size_t next = skipBlanks(text(), offset);
    if (next < text().size() && text()[next] == ';') byteAt(next) = ' ';
    return false;
  }
  const bool isOpenString = openStringBefore(text(), offset).has_value();
  if (step == 0 && !isOpenString &&
      (repairConflict(offset) || repairBlock(fatal, begin, offset) ||
       repairCharacter(fatal, offset) || repairSemicolons(fatal, offset))) {
    step = 1;
    return true;
  }
  const Statement region = regionAt(text(), begin, offset);
  if (step == 0 && !isOpenString && repairEnd(fatal, region)) {
    step = 1;
    return true;
  }
  if (step < 2) {
    // Several semicolons without a statement before them are one mistake.
    if (text().substr(begin).starts_with(";;")) steps_.try_emplace(begin + 1, 1);
    addSuspects(region);
    keepDeclaration(region);
    replaced_.push_back(region);
    step = 2;
  } else {
    blank(region.begin, region.end);
    step = 3;
  }
  return isFirst;
}

bool Repair::repairConflict(std::size_t offset) {
  if (!isConflictMarker(text(), offset)) return false;
  blank(offset, text().find('\n', offset));
  return true;
}

// Replaces "TYPE NAME {" and "TYPE NAME = {" by "TYPE NAME :". For "WORD {", which lacks the type
// or the name, declareUnknown() declares a node. The statements in the block are then read as well.
bool Repair::repairBlock(const vsa::Diagnostic& fatal, std::size_t begin, std::size_t offset) {
  const std::size_t open = blockAt(fatal, offset);
  if (open >= text().size()) return false;
  // What is before the statement may be blanked statements of any length.
  const std::string_view before = text().substr(begin, offset - begin);
  const std::string_view name = nameBefore(before, before.size());
  const auto nameBegin = static_cast<std::size_t>(name.data() - text().data());
  if (name.empty()) return false;
  const bool hasType = !nameBefore(before, nameBegin - begin).empty();
  if (!hasType && nameBegin != begin) return false;
  blank(offset, open + 1);
  if (hasType) {
    byteAt(offset) = ':';
  } else if (!declareUnknown({.begin = nameBegin, .end = offset + 1})) {
    return false;
  }
  ++openBlocks_;
  return true;
}

// Returns the offset of the "{" of a block, or npos if the diagnostic is about something else.
std::size_t Repair::blockAt(const vsa::Diagnostic& fatal, std::size_t offset) const {
  if (offset >= text().size()) return std::string_view::npos;
  const bool isBrace = fatal.id == DiagnosticId::InvalidListToken && text()[offset] == '{';
  if (isBrace) return offset;
  const bool isEquals = fatal.id == DiagnosticId::UnrecognizedToken && text()[offset] == '=';
  const std::size_t next = skipBlanks(text(), offset + 1);
  const bool isBlock = isEquals && next < text().size() && text()[next] == '{';
  return isBlock ? next : std::string_view::npos;
}

bool Repair::isEndOfBlock(const vsa::Diagnostic& fatal, std::size_t offset) {
  const bool isBrace =
      fatal.id == DiagnosticId::InvalidToken && offset < text().size() && text()[offset] == '}';
  if (!isBrace || openBlocks_ == 0) return false;
  --openBlocks_;
  return true;
}

bool Repair::repairCharacter(const vsa::Diagnostic& fatal, std::size_t offset) {
  if (fatal.id != DiagnosticId::InvalidToken && fatal.id != DiagnosticId::EndMark) return false;
  const std::uint64_t length = fatal.range.end.offset - fatal.range.begin.offset;
  if (length != 1 || offset >= text().size()) return false;
  byteAt(offset) = ' ';
  // What directly follows the character belongs to the same mistake, as in "$name;".
  const bool isJoined = offset + 1 < text().size() && skipBlanks(text(), offset + 1) == offset + 1;
  if (isJoined) steps_.try_emplace(offset + 1, 1);
  return true;
}

// Replaces the semicolons in a list such as "{1 0; 0 1}" by commas.
bool Repair::repairSemicolons(const vsa::Diagnostic& fatal, std::size_t offset) {
  if (fatal.id != DiagnosticId::InvalidListToken) return false;
  const std::vector<std::size_t> semicolons = semicolonsInList(text(), offset);
  for (const std::size_t at : semicolons) byteAt(at) = ',';
  return !semicolons.empty();
}

// Returns whether `statement`, which ends before `end` and has no terminator, is a declaration that
// inputs of its node follow.
bool Repair::isBlock(const std::string& statement, std::size_t end) const {
  const std::size_t next = skipBlanks(text(), end);
  const std::size_t typeEnd = endOfName(statement, 0);
  const std::string_view type = std::string_view(statement).substr(0, typeEnd);
  const std::size_t name = skipBlanks(statement, typeEnd);
  const bool isDeclaration = name > typeEnd && endOfName(statement, name) == statement.size();
  return next < text().size() && text()[next] == '.' && isDeclaration &&
         !equalsKeyword(type, "remove") && !equalsKeyword(type, "define");
}

bool Repair::repairEnd(const vsa::Diagnostic& fatal, const Statement& region) {
  if (fatal.id != DiagnosticId::BadToken && fatal.id != DiagnosticId::UnrecognizedToken) {
    return false;
  }
  if (region.terminator != 0) return false;
  std::string statement(text().substr(region.begin, region.end - region.begin));
  while (!statement.empty() && static_cast<unsigned char>(statement.back()) <= ' ') {
    statement.pop_back();
  }
  const std::size_t end = region.begin + statement.size();
  if (end == region.end || !isGrammatical(statement + ';')) return false;
  byteAt(end) = isBlock(statement, region.end) ? ':' : ';';
  return true;
}

// Replaces a statement by the declaration at its beginning, `TYPE NAME`, which then ends with the
// `:` of the statement or with a `;`. If the statement ends with `:` but is no declaration, the
// statements after it still need a node. A node is then declared for them. Any other statement
// becomes blanks.
void Repair::keepDeclaration(const Statement& region) {
  const std::size_t typeEnd = endOfName(text(), region.begin);
  const std::size_t name = skipBlanks(text(), typeEnd);
  const std::size_t nameEnd = endOfName(text(), name);
  const std::size_t next = skipBlanks(text(), nameEnd);
  const std::string_view type = text().substr(region.begin, typeEnd - region.begin);
  const bool isDeclaration = typeEnd > region.begin && name > typeEnd && nameEnd > name &&
                             next < region.end && !isStatementWord(type) && text()[next] != '.';
  if (isDeclaration) {
    const bool isWith = text()[next] == ':' || region.terminator == ':';
    blank(nameEnd, region.end);
    byteAt(next) = isWith ? ':' : ';';
    return;
  }
  blank(region.begin, region.end);
  if (region.terminator == ':') declareUnknown(region);
}

// Replaces the statement by the declaration of a node with inputs. Returns false if it is too
// short. Each such node has a name of its own, because the rules must not take two of them for one.
// Exception: if the statement is too short for that name, the node is named "_".
bool Repair::declareUnknown(const Statement& region) {
  const std::size_t size = region.end - region.begin;
  const std::string unknown = '_' + std::to_string(++unknownNodes_);
  std::string declaration = unknown + ' ' + unknown + ':';
  if (declaration.size() > size) declaration = "_ _:";
  if (declaration.size() > size) return false;
  padded_.replace(PADDING + region.begin, declaration.size(), declaration);
  return true;
}

std::string Repair::takeStatements(std::string_view original) {
  for (const Statement& region : replaced_) {
    const std::string_view statement = original.substr(region.begin, region.end - region.begin);
    addLostInputs(statement);
    if (hasCorrectGrammar(statement)) {
      padded_.replace(PADDING + region.begin, statement.size(), statement);
    } else {
      keepPath(region, original);
    }
  }
  padded_.erase(0, PADDING);
  return std::move(padded_);
}

void Repair::keepPath(const Statement& region, std::string_view original) {
  constexpr std::string_view NULL_VALUE = "=null;";
  const std::string_view searched = original.substr(0, region.end);
  const std::size_t equals = skipBlanks(searched, endOfPath(searched, region.begin));
  const bool isAssignment = equals < region.end && original[equals] == '=';
  if (!isAssignment || region.end - equals < NULL_VALUE.size()) return;
  const std::string kept =
      std::string(original.substr(region.begin, equals - region.begin)) + std::string(NULL_VALUE);
  if (hasCorrectGrammar(kept)) padded_.replace(PADDING + region.begin, kept.size(), kept);
}

// Adds the names after periods, and the name in "power = 1;", which lacks its period.
void Repair::addLostInputs(std::string_view statement) {
  const std::size_t first = endOfName(statement, 0);
  const std::size_t equals = skipBlanks(statement, first);
  if (equals < statement.size() && statement[equals] == '=') {
    lostInputs_.emplace(statement.substr(0, first));
  }
  for (std::size_t at = statement.find('.'); at < statement.size();) {
    const std::size_t begin = skipBlanks(statement, at + 1);
    const std::size_t end = endOfName(statement, begin);
    if (end > begin) lostInputs_.emplace(statement.substr(begin, end - begin));
    at = statement.find('.', at + 1);
  }
}

void Repair::blank(std::size_t begin, std::size_t end) {
  for (std::size_t at = begin; at < std::min(end, text().size()); ++at) {
    if (byteAt(at) != '\n') byteAt(at) = ' ';
  }
}

// Adds the names that the statement may have been intended to declare: each name after another
// name.
void Repair::addSuspects(const Statement& region) {
  const std::string_view all = text().substr(0, region.end);
  bool isAfterName = false;
  for (std::size_t at = region.begin; at < region.end;) {
    const std::size_t end = endOfName(all, at);
    if (end > at) {
      if (isAfterName) addSuspect(all.substr(at, end - at));
      isAfterName = true;
      at = end;
    } else {
      const bool isBlank = skipBlanks(all.substr(0, at + 1), at) > at;
      isAfterName = isAfterName && (isBlank || all[at] == ':');
      ++at;
    }
  }
}

}  // namespace vsa_tools
