#include "tools/vsa/check/reading/repair.h"

#include <algorithm>

#include <vsa/read.h>

namespace vsa_tools {

namespace {

using vsa::DiagnosticId;

bool isOfPath(std::string_view text, std::size_t begin) {
  const std::size_t end = endOfName(text, begin);
  return end < text.size() && (text[end] == '.' || text[end] == '[');
}

/// The statement that contains the byte at `offset`, up to the place where reading continues.
Statement regionAt(std::string_view text, std::size_t offset, std::size_t scanFrom) {
  Statement region = nextStatement(text, scanFrom);
  while (region.end <= offset && region.end < text.size()) {
    region = nextStatement(text, region.end);
  }
  // The colon of ".power: 2.5;" ends no statement.
  if (region.terminator == ':' && isOfPath(text, region.begin)) {
    const Statement rest = nextStatement(text, region.end);
    region.end = rest.end;
    region.terminator = rest.terminator;
  }
  const std::size_t end = resumePoint(text, region);
  if (end < region.end) region.terminator = 0;
  region.end = end;
  return region;
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
  const Statement region = regionAt(text(), offset, scanFrom);
  lastBegin_ = region.begin;
  int& step = steps_[region.begin];
  hasReplacedNothing_ = region.begin == region.end || step == 3;
  const bool isFirst = step == 0;
  if (isEndOfBlock(fatal, offset)) {
    byteAt(offset) = ' ';
    return false;
  }
  if (step == 0 && (repairConflict(offset) || repairBlock(fatal, offset) ||
                    repairCharacter(fatal, offset) || repairEnd(fatal, region))) {
    step = 1;
    return true;
  }
  if (step < 2) {
    addSuspects(region);
    keepDeclaration(region);
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

// Reads "TYPE NAME {" as "TYPE NAME :". The statements in the block are then read as well.
bool Repair::repairBlock(const vsa::Diagnostic& fatal, std::size_t offset) {
  const bool isBrace =
      fatal.id == DiagnosticId::InvalidListToken && offset < text().size() && text()[offset] == '{';
  if (!isBrace) return false;
  const std::string_view name = nameBefore(text(), offset);
  const auto nameBegin = static_cast<std::size_t>(name.data() - text().data());
  if (name.empty() || nameBefore(text(), nameBegin).empty()) return false;
  byteAt(offset) = ':';
  ++openBlocks_;
  return true;
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
  return true;
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
  byteAt(end) = ';';
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
  constexpr std::string_view UNKNOWN = "_ _:";
  if (region.terminator == ':' && region.end - region.begin >= UNKNOWN.size()) {
    padded_.replace(PADDING + region.begin, UNKNOWN.size(), UNKNOWN);
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
      isAfterName = isAfterName && skipBlanks(all, at) > at;
      ++at;
    }
  }
}

}  // namespace vsa_tools
