// Hints for statements with a wrong beginning, and for version comments.
#include <algorithm>
#include <string>

#include "tools/vsa/check/hints/hint_text.h"
#include "tools/vsa/check/hints/similar_names.h"
#include "tools/vsa/check/text/digits.h"
#include "tools/vsa/check/text/statement_scan.h"

namespace vsa_tools {

namespace {

bool isConstant(std::string_view word) {
  const std::string lower = loweredName(word);
  return lower == "true" || lower == "false" || lower == "null";
}

// Returns the type or the keyword of the statement before `offset`, in lower case, if that consists
// of two words and a semicolon, such as "remove sun;". Otherwise returns an empty text.
std::string wordOfStatementBefore(HintText& text, std::uint64_t offset) {
  const std::uint64_t end = text.endBefore(offset);
  if (end == 0 || text.at(end - 1) != ';') return {};
  const std::string_view name = nameBefore(text.text(), end - 1);
  if (name.empty()) return {};
  const auto begin = static_cast<std::uint64_t>(name.data() - text.text().data());
  return loweredName(nameBefore(text.text(), begin));
}

// Whether the statement before `offset` removes a node. That node may be the with node.
bool isBehindRemoval(HintText& text, std::uint64_t offset) {
  return wordOfStatementBefore(text, offset) == "remove";
}

// Adds a hint for a wrong word: the first word of a statement, or a word after its first tokens.
void hintForWord(HintText& text, const vsa::TextRange& range, Finding& finding) {
  const std::uint64_t next = text.beginBehind(range.end.offset);
  const bool isAssigned = text.at(next) == '=' || text.at(next) == '|';
  const std::string word(text.bytesOf(range));
  const std::string_view before = nameBefore(text.text(), range.begin.offset);
  if (!isAssigned && !before.empty()) {
    finding.hint = "a name has no blanks: write `" + std::string(before) + '_' + word + '`';
    return;
  }
  const std::uint64_t at = range.begin.offset;
  if (isAssigned && (!text.hasWithNodeBefore(at) || isBehindRemoval(text, at))) {
    finding.hint =
        "write the node's name and a period before the input, such as `lamp." + word + '`';
    return;
  }
  if (isAssigned) {
    finding.hint = "an input of the node that is set begins with a period: write `." + word + '`';
    insertAt(finding, at, ".");
    return;
  }
  finding.hint = "a declaration has a type and a name, such as `lamp " + word + ";`";
}

// Adds a hint for "input: value", ":=" and "node::input". Without the colon of ":=", "=" remains.
void hintForColon(HintText& text, std::uint64_t at, Finding& finding) {
  if (text.at(at + 1) == ':' && isWordText(text.text().substr(at + 2, 1))) {
    finding.hint = "a path has periods between its names";
    finding.edits = {{at, at + 2, "."}};
    return;
  }
  const std::string_view word = nameBefore(text.text(), at);
  const auto begin = static_cast<std::uint64_t>(word.data() - text.text().data());
  const std::uint64_t name = text.beginBehind(at + 1);
  const std::uint64_t end = endOfName(text.text(), name);
  const char before = begin == 0 ? ';' : text.at(text.endBefore(begin) - 1);
  if (before != '.' && end > name && text.at(text.beginBehind(end)) == ';') {
    finding.hint = "a declaration has a type and a name, without a colon between them";
    finding.edits = {{at, name, " "}};
    return;
  }
  finding.hint = "write `=`";
  finding.edits = {{at, at + 1, text.at(at + 1) == '=' ? "" : "="}};
}

// Adds a hint for a statement such as "set sun.power = 1;": the word before the path is too much.
bool hintForWordBeforePath(HintText& text, const vsa::TextRange& range, Finding& finding) {
  const std::string_view all = text.text();
  const std::uint64_t next = text.beginBehind(endOfPath(all, range.begin.offset));
  const std::string_view node = nameBefore(all, range.begin.offset);
  const auto nodeAt = static_cast<std::uint64_t>(node.data() - all.data());
  const std::string_view word = nameBefore(all, nodeAt);
  const bool isAssigned = text.at(next) == '=' || text.at(next) == '|';
  if (!isAssigned || word.empty() || !text.declarationOf(node)) return false;
  finding.range = text.rangeOf(word);
  finding.hint = "an assignment begins with its path: remove `" + std::string(word) + '`';
  finding.edits = {{finding.range->begin.offset, nodeAt, ""}};
  return true;
}

// Adds a hint for a quoted name or type. After a word such as "include", it is the name of a file.
void hintForQuoted(HintText& text, const vsa::TextRange& range, Finding& finding) {
  const std::string_view source = text.bytesOf(range);
  const std::string_view content = source.substr(1, source.size() - 2);
  const std::string word = loweredName(nameBefore(text.text(), range.begin.offset));
  if (!isWordText(content) && (word == "include" || word == "import")) {
    finding.hint = "a text does not include other texts";
    return;
  }
  finding.hint = "names and types have no quotes";
  if (isWordText(content)) replace(finding, range, std::string(content));
}

// Adds a hint for a declaration without an end. It is a colon if inputs of the node follow.
void hintForDeclarationEnd(HintText& text, const vsa::Diagnostic& diagnostic, Finding& finding) {
  const std::string first = loweredName(diagnostic.argument("token"));
  const bool isDirective = first == "remove" || first == "define";
  const bool isBlock =
      !isDirective && text.at(text.beginBehind(diagnostic.range.end.offset)) == '.';
  const char* const end = isBlock ? ":" : ";";
  finding.hint = "end the statement with `" + std::string(end) + '`';
  insertAt(finding, diagnostic.range.begin.offset, end);
}

// Adds a hint for a "/": the beginning of a comment in another format, or of a name in a path.
void hintForSlash(HintText& text, std::uint64_t at, Finding& finding) {
  const bool isInPath = at > 0 && isWordText(text.text().substr(at - 1, 1)) &&
                        isWordText(text.text().substr(at + 1, 1));
  finding.hint = isInPath ? "a path has periods between its names" : "a comment begins with `#`";
  if (text.at(at + 1) == '/') finding.edits = {{at, at + 2, "#"}};
}

// Adds a hint for a "=" without an input path before it. "sun power = 1;" lacks a period, and in
// "lamp sun = {" a block is meant.
void hintForEquals(HintText& text, std::uint64_t at, Finding& finding) {
  const std::string_view all = text.text();
  const std::string_view input = nameBefore(all, at);
  const auto inputAt = static_cast<std::uint64_t>(input.data() - all.data());
  const std::string_view node = nameBefore(all, inputAt);
  finding.hint = "an input path stands before `=`, such as `node.input`";
  if (text.at(text.beginBehind(at + 1)) == '{' && !node.empty()) {
    finding.hint = "there are no blocks: end the declaration with `:`, and begin inputs with `.`";
  } else if (!input.empty() && text.declarationOf(node)) {
    finding.hint = "a path has periods between its names";
    const auto nodeEnd = static_cast<std::uint64_t>(node.data() - all.data()) + node.size();
    finding.edits = {{nodeEnd, inputAt, "."}};
  }
}

void hintForPunctuation(HintText& text, const vsa::TextRange& range, Finding& finding) {
  const std::uint64_t at = range.begin.offset;
  switch (text.at(at)) {
    case '/':
      return hintForSlash(text, at, finding);
    case '-':
    case '.':
      finding.hint = "a name has letters, digits and `_` only";
      return;
    case ',':
      finding.hint = "declare one node in each statement";
      return;
    case ':':
      return hintForColon(text, at, finding);
    case '+':
      if (text.at(at + 1) == '=') finding.hint = "there is no `+=`; write the value behind `=`";
      return;
    case ';':
      finding.hint = "an empty statement; remove the semicolon";
      finding.edits = {{at, at + 1, ""}};
      return;
    case '=':
      return hintForEquals(text, at, finding);
    default:
      finding.hint = "a statement begins with a type or an input path";
      return;
  }
}

// Returns the first word of the statement if it stands alone on a line before the wrong token. Such
// a word is the mistake, and the reader notices it in a later line.
std::optional<std::string_view> wordOfOwnLine(HintText& text, const vsa::TextRange& range,
                                              std::string_view first) {
  const std::string_view all = text.text();
  const std::string_view second = nameBefore(all, range.begin.offset);
  const auto secondAt = static_cast<std::size_t>(second.data() - all.data());
  const bool isAlone = nameBefore(all, range.begin.offset) == first;
  const std::string_view word = isAlone ? second : nameBefore(all, secondAt);
  const auto end = static_cast<std::size_t>(word.data() - all.data()) + word.size();
  const std::size_t next = isAlone ? range.begin.offset : secondAt;
  const bool isOtherLine = all.substr(end, next - end).find('\n') != std::string_view::npos;
  const bool isFirst = !word.empty() && word == first && isOtherLine;
  return isFirst ? std::optional(word) : std::nullopt;
}

void hintForUnrecognized(HintText& text, const vsa::Diagnostic& diagnostic, Finding& finding) {
  const vsa::TextRange& range = diagnostic.range;
  if (hintForConflict(text, range, finding)) return;
  if (const auto word = wordOfOwnLine(text, range, diagnostic.argument("token"))) {
    finding.range = text.rangeOf(*word);
    finding.hint =
        "a declaration has a type and a name, such as `lamp " + std::string(*word) + ";`";
    return;
  }
  const std::string_view source = text.bytesOf(range);
  if (source.empty()) {
    const bool isAtEnd = text.beginBehind(range.end.offset) == text.text().size();
    if (!isAtEnd) return hintForDeclarationEnd(text, diagnostic, finding);
    finding.hint = "the text ends inside a statement; it may have been cut off";
    return;
  }
  const std::uint64_t before = text.endBefore(range.begin.offset);
  const bool isBehindPath = before != 0 && isWordText(text.text().substr(before - 1, 1));
  const bool isValue = isDigit(source.front()) || source.front() == '-';
  if (source.front() == '"' || source.front() == '\'') {
    hintForQuoted(text, range, finding);
  } else if (source.starts_with("--")) {
    finding.hint = "a comment begins with `#`";
    finding.edits = {{range.begin.offset, range.begin.offset + 2, "#"}};
  } else if (isWordText(source)) {
    if (isConstant(source)) {
      finding.hint = "`true`, `false` and `null` are no names, in any letter case";
    } else {
      hintForWord(text, range, finding);
    }
  } else if (isValue && source.size() > 1 && isBehindPath && !isDigit(source.front())) {
    finding.hint = "a name has letters, digits and `_` only";
  } else if (isDigit(source.front()) && isBehindPath) {
    finding.hint = "a name does not begin with a digit, and a value stands behind `=`";
  } else if (isDigit(source.front()) || (isValue && source.size() > 1) ||
             std::string_view("({[").find(source.front()) != std::string_view::npos) {
    finding.hint = "a statement begins with a type or an input path, not with a value";
  } else if (source.front() != '.' || !hintForWordBeforePath(text, range, finding)) {
    hintForPunctuation(text, range, finding);
  }
}

// Adds a hint for a version comment without a whole number, such as "# version: 2.1". For a comment
// that contains "version:" by chance, the hint is to put a blank before the colon.
void hintForVersion(HintText& text, const vsa::TextRange& range, Finding& finding) {
  const std::string_view comment = text.bytesOf(range);
  const std::size_t word = comment.find("version:");
  const std::size_t first = comment.find_first_not_of("# \t");
  if (word == std::string_view::npos) return;
  if (word != first) {
    finding.hint = "a comment with `version:` sets the version; put a blank before the colon";
    insertAt(finding, range.begin.offset + word + std::string_view("version").size(), " ");
    return;
  }
  const std::size_t digits = comment.find_first_of("0123456789", word);
  finding.hint = "the version is a whole number";
  if (digits == std::string_view::npos) return;
  const std::size_t end = std::min(comment.find_first_not_of("0123456789", digits), comment.size());
  const std::string number(comment.substr(digits, end - digits));
  finding.hint += ": write `# version: " + number + '`';
}

// Adds a hint for a path that begins with a period although there is no with node. If the statement
// before the path is a declaration that ends with a semicolon, the hint is to end it with a colon.
void hintForWithNode(HintText& text, const vsa::TextRange& range, Finding& finding) {
  const std::uint64_t end = text.endBefore(range.begin.offset);
  finding.hint = "write the node's name before the period, or set a node with `with name:`";
  if (end == 0 || text.at(end - 1) != ';') return;
  const std::string word = wordOfStatementBefore(text, end);
  if (word == "remove" || word == "define") return;
  const std::string_view before = text.text().substr(0, end - 1);
  const std::size_t name = before.find_last_of(" \t\r\n;:");
  const std::string_view node = before.substr(name == std::string_view::npos ? 0 : name + 1);
  if (!isWordText(node)) return;
  const bool isDeclared = text.declarationOf(node).has_value();
  if (!isDeclared) return;
  finding.hint = "end the declaration of " + std::string(node) + " with a colon";
  finding.edits = {{end - 1, end, ":"}};
}

}  // namespace

void hintForStatement(HintText& text, const vsa::Diagnostic& diagnostic, Finding& finding) {
  if (diagnostic.id == vsa::DiagnosticId::BadVersion) {
    hintForVersion(text, diagnostic.range, finding);
  } else if (diagnostic.id == vsa::DiagnosticId::WithNodeNotSet) {
    hintForWithNode(text, diagnostic.range, finding);
  } else {
    hintForUnrecognized(text, diagnostic, finding);
  }
}

}  // namespace vsa_tools
