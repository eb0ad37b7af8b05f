// Hints for values whose type differs from the type of their input, and for strings that an
// enumeration does not contain. For the former, a note shows the assignment that gave the input its
// type, if the text has it.
#include <string>

#include "tools/vsa/check/hints/hint_text.h"
#include "tools/vsa/check/hints/similar_names.h"
#include "tools/vsa/check/text/digits.h"

namespace vsa_tools {

namespace {

using vsa::DiagnosticId;

bool expects(const vsa::Diagnostic& diagnostic, std::string_view type) {
  return diagnostic.argument("expected") == type;
}

// Returns whether a number has only digits, after an optional minus sign. With ".0" at its end, it
// is a Real.
bool isPlainInteger(std::string_view number) {
  if (number.starts_with('-')) number.remove_prefix(1);
  return !number.empty() && number.find_first_not_of("0123456789") == std::string_view::npos;
}

bool isVector(const vsa::Diagnostic& diagnostic) {
  for (const char* type : {"Vec2", "Vec3", "Vec4", "Pos2", "Pos3", "Quat", "Rgba"}) {
    if (expects(diagnostic, type)) return true;
  }
  return false;
}

// Returns whether a buffer with elements of the type `type` takes all numbers of the list.
bool fits(std::string_view list, std::string_view type) {
  const std::string_view narrowest = bufferTypeFor(list);
  if (narrowest.empty()) return false;
  if (type == "float" || type == "double" || type == narrowest) return true;
  return type == "int64" && narrowest == "int32";
}

// Returns a list in brackets as a buffer, such as "int32[2] {0 1}" for "[0 1]". The buffer has the
// element type of the first value of the input. Returns nothing if that value is no buffer of
// single numbers, or its element type does not take the numbers of the list.
std::optional<std::string> asBuffer(std::string_view brackets, const FirstAssignment& assignment) {
  const std::string_view first = assignment.value;
  const std::size_t keyword = first.find('[');
  if (assignment.kind != vsa::SyntaxKind::Word) return std::nullopt;
  if (brackets.size() < 2 || brackets.front() != '[' || keyword == std::string_view::npos) {
    return std::nullopt;
  }
  const std::string_view numbers = brackets.substr(1, brackets.size() - 2);
  const std::string list = '{' + std::string(numbers) + '}';
  vsa::ListReader reader(list);
  vsa::ListPart part;
  std::size_t count = 0;
  while (reader.next(part)) count += part.continues ? 0 : 1;
  if (!fits(list, loweredName(first.substr(0, keyword)))) return std::nullopt;
  return std::string(first.substr(0, keyword)) + '[' + std::to_string(count) + "] " + list;
}

// Returns the constant that a string in the place of a Bool means.
std::optional<std::string> constantFor(std::string_view string) {
  const std::string word = loweredName(string);
  for (const char* const yes : {"\"true\"", "\"yes\"", "\"on\""}) {
    if (word == yes) return "true";
  }
  for (const char* const no : {"\"false\"", "\"no\"", "\"off\""}) {
    if (word == no) return "false";
  }
  return std::nullopt;
}

std::string_view unquoted(std::string_view value) {
  return value.size() > 2 && value.front() == '"' ? value.substr(1, value.size() - 2) : "";
}

void hintForWrongType(HintText& text, const vsa::Diagnostic& diagnostic,
                      const FirstAssignment* first, Finding& finding) {
  const std::string value(text.bytesOf(diagnostic.range));
  const bool isNumber = isDigit(value.front()) || value.front() == '-';
  if (first == nullptr && hintForBracketList(text, diagnostic.range.begin.offset, finding)) return;
  if (expects(diagnostic, "Array")) {
    finding.hint = "assign an array element by element: `[0]`, or `[*]` to append";
  } else if (expects(diagnostic, "Null") && text.declarationOf(unquoted(value))) {
    replace(finding, diagnostic.range, std::string(unquoted(value)));
  } else if (expects(diagnostic, "Null")) {
    finding.hint = "assign the value before the input is connected";
  } else if (expects(diagnostic, "String") && isNumber) {
    replace(finding, diagnostic.range, '"' + value + '"');
  } else if (expects(diagnostic, "Bool") && (value == "1.0" || value == "0.0")) {
    replace(finding, diagnostic.range, value == "1.0" ? "true" : "false");
  } else if (isVector(diagnostic) && isPlainInteger(value)) {
    finding.hint =
        "an integer does not become a vector: write `" + value + ".0` for all components";
    finding.edits = {{diagnostic.range.begin.offset, diagnostic.range.end.offset, value + ".0"}};
  } else if (isVector(diagnostic) && isNumber) {
    finding.hint = "an integer does not become a vector; a real number is for all components";
  } else if (first != nullptr && value.front() == '[') {
    if (const auto buffer = asBuffer(value, *first)) {
      replace(finding, diagnostic.range, *buffer);
    }
  } else if (expects(diagnostic, "Bool") && constantFor(value)) {
    replace(finding, diagnostic.range, *constantFor(value));
  } else if (first != nullptr && !first->isConnection) {
    finding.hint = "write the value in the type of the input";
  }
}

// Adds a hint for a value that would be narrowed. If the value is a Real, the first value of the
// input may be the cause: without a decimal point, it made the input an integer. The hint is then
// to add ".0" to the first value.
void hintForNarrowing(HintText& text, const vsa::Diagnostic& diagnostic,
                      const FirstAssignment* first, Finding& finding) {
  const bool isRounded = diagnostic.argument("found") == "Real";
  const bool isInteger =
      first != nullptr && first->kind == vsa::SyntaxKind::Integer && isPlainInteger(first->value);
  if (isRounded && isInteger) {
    finding.hint = "write the first value as `" + std::string(first->value) +
                   ".0`, which makes the input a Real";
    insertAt(finding, text.rangeOf(first->value).end.offset, ".0");
  } else if (expects(diagnostic, "Bool")) {
    finding.hint = "write `true` or `false`";
  } else {
    finding.hint = "write the value in the type of the input";
  }
}

std::optional<Suggestion> nearestEnumValue(const HintText& text, std::string_view written) {
  NearestName nearest(written);
  for (const vsa::TypeDescription& type : text.types()) {
    for (const vsa::InputDescription& one : type.inputs) {
      for (const std::string& value : one.declaration.enumValues) nearest.consider(value);
    }
  }
  return nearest.found();
}

void hintForEnumValue(HintText& text, const vsa::TextRange& range, Finding& finding) {
  const std::string_view value = text.bytesOf(range);
  auto suggestion = nearestEnumValue(text, value.substr(1, value.size() - 2));
  if (suggestion) suggestion->name = '"' + suggestion->name + '"';
  suggest(finding, range, suggestion);
}

void hintForElement(const vsa::Diagnostic& diagnostic, Finding& finding) {
  finding.hint = expects(diagnostic, "Array")
                     ? "the elements of an array have the type of the first one"
                     : "only an object has members, and only an array elements";
}

// Returns the first assignment to the input if it is before `offset`, and null otherwise.
const FirstAssignment* assignmentBefore(HintText& text, const std::string& path,
                                        std::uint64_t offset) {
  const FirstAssignment* const first = text.firstAssignment(path);
  const bool isBefore = first != nullptr && text.rangeOf(first->value).begin.offset < offset;
  return isBefore ? first : nullptr;
}

}  // namespace

void hintForType(HintText& text, const vsa::Diagnostic& diagnostic, Finding& finding) {
  if (text.bytesOf(diagnostic.range).empty()) return;
  const bool isElement = diagnostic.id == DiagnosticId::CannotAssignType;
  std::string path = diagnostic.inputPath;
  if (isElement && path.ends_with(']')) path.replace(path.rfind('['), path.npos, "[0]");
  const FirstAssignment* first = assignmentBefore(text, path, diagnostic.range.begin.offset);
  if (first == nullptr && isElement && path.ends_with(']')) {
    path.resize(path.rfind('['));
    first = assignmentBefore(text, path, diagnostic.range.begin.offset);
  }
  if (first != nullptr && diagnostic.id != DiagnosticId::BadEnumValue) {
    finding.notes.push_back({text.rangeOf(first->value), "the input got its type here"});
  }
  switch (diagnostic.id) {
    case DiagnosticId::WrongType:
      return hintForWrongType(text, diagnostic, first, finding);
    case DiagnosticId::Narrowing:
      return hintForNarrowing(text, diagnostic, first, finding);
    case DiagnosticId::BadEnumValue:
      return hintForEnumValue(text, diagnostic.range, finding);
    default:
      return hintForElement(diagnostic, finding);
  }
}

}  // namespace vsa_tools
