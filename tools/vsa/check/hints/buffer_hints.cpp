// Hints for buffers, for texts that need too much memory, and for inputs that are nested too
// deeply.
#include <optional>
#include <string>

#include "tools/vsa/check/hints/hint_text.h"
#include "tools/vsa/check/hints/similar_names.h"
#include "tools/vsa/check/rules/walk/text_walk.h"
#include "tools/vsa/check/text/decimal_commas.h"
#include "tools/vsa/common/output/counted.h"

namespace vsa_tools {

namespace {

using vsa::DiagnosticId;

constexpr const char* COMPRESSED_HINT =
    "compressed data is for types of single bytes, such as `byte` and `rgba8`";

// Whether the text in a list is the beginning of compressed data: a period and the first byte of
// most zlib streams.
bool isCompressed(std::string_view number) {
  return number.starts_with(".78") && number.size() > 8;
}

/// A buffer literal, `TYPE[COUNT] {LIST}`.
struct Literal {
  vsa::ElementType type = vsa::ElementType::Null;
  std::uint64_t countBegin = 0;  // the offset of the "["
  std::uint64_t countEnd = 0;
  std::string_view list;          // with its braces
  std::size_t numbers = 0;        // numbers that run together count as one
  bool hasGlued = false;          // whether groups of the list run together
  bool hasDecimalCommas = false;  // whether commas in the list look like decimal points
};

bool isInteger(vsa::ElementType component) {
  return component != vsa::ElementType::Float && component != vsa::ElementType::Double;
}

// Returns the buffer literal that contains the byte at `offset`. This byte must be the opening
// bracket, the beginning of the list, or in a number of the list. Returns nothing if no literal is
// there.
std::optional<Literal> literalAt(HintText& text, std::uint64_t offset) {
  const std::string_view all = text.text();
  const std::size_t open = text.at(offset) == '[' ? offset : all.rfind('[', offset);
  if (open == std::string_view::npos) return std::nullopt;
  const std::size_t close = all.find(']', open);
  if (close == std::string_view::npos) return std::nullopt;
  const std::size_t list = text.beginBehind(close + 1);
  const std::size_t end = all.find(';', list);
  if (text.at(list) != '{' || end == std::string_view::npos) return std::nullopt;
  Literal literal;
  const std::uint64_t wordEnd = text.endBefore(open);
  const std::size_t word = all.substr(0, wordEnd).find_last_of(" \t\r\n=") + 1;
  literal.type = elementTypeOf(all.substr(word, wordEnd - word));
  literal.countBegin = open;
  literal.countEnd = close + 1;
  literal.list = all.substr(list, all.substr(0, end).rfind('}') + 1 - list);
  vsa::ListReader reader(literal.list);
  vsa::ListPart part;
  while (reader.next(part)) {
    literal.numbers += part.continues ? 0 : 1;
    literal.hasGlued = literal.hasGlued || part.continues;
  }
  literal.hasDecimalCommas = !isInteger(zn::korvo_sdk::componentType(literal.type)) &&
                             hasDecimalCommas(literal.list, literal.numbers);
  return literal.type == vsa::ElementType::Null ? std::nullopt : std::optional(literal);
}

// Adds a hint for groups such as "{1 2}{3 4}" in a list in braces.
void hintForGlued(HintText& text, const Literal& literal, Finding& finding) {
  const std::uint64_t begin = text.rangeOf(literal.list).begin.offset;
  finding.hint = "groups with nothing between them run together: put blanks between them";
  const std::string_view list = literal.list;
  for (std::size_t at = list.find("}{"); at != list.npos; at = list.find("}{", at + 1)) {
    finding.edits.push_back({begin + at + 1, begin + at + 1, " "});
  }
}

// Adds a hint for a list such as "{1,5 2,5}". There is an edit only if the list has the declared
// count of elements when its commas are read as decimal points.
void hintForCommas(HintText& text, const Literal& literal, Finding& finding) {
  const vsa::TextRange range = text.rangeOf(literal.list);
  finding.hint = "a comma is a blank, not a decimal point: write points";
  const std::size_t count = literal.numbers / 2 / zn::korvo_sdk::componentCount(literal.type);
  const std::string_view declared =
      text.text().substr(literal.countBegin, literal.countEnd - literal.countBegin);
  if (declared != '[' + std::to_string(count) + ']') return;
  finding.edits = {{range.begin.offset, range.end.offset, withDecimalPoints(literal.list)}};
}

// Adds a hint with the element count that fits the list. If the last element is incomplete, the
// hint gives the number of numbers in the list and in an element. A list of compressed data, of
// groups that run together, or with decimal commas has another hint.
void hintForCount(HintText& text, std::uint64_t offset, Finding& finding) {
  const std::optional<Literal> literal = literalAt(text, offset);
  if (!literal) return;
  const std::size_t components = zn::korvo_sdk::componentCount(literal->type);
  const std::string numbers = counted(literal->numbers, "number");
  if (isCompressed(literal->list.substr(1))) {
    finding.hint = COMPRESSED_HINT;
    return;
  }
  if (literal->hasGlued) return hintForGlued(text, *literal, finding);
  if (literal->hasDecimalCommas) return hintForCommas(text, *literal, finding);
  if (literal->numbers % components != 0) {
    finding.hint = "the list has " + numbers + ", and an element has " + std::to_string(components);
    return;
  }
  const std::string count = '[' + std::to_string(literal->numbers / components) + ']';
  finding.hint = "the count is that of elements: write `" + count + "` for " + numbers;
  finding.edits = {{literal->countBegin, literal->countEnd, count}};
}

// Returns "index 2" for the number that begins with the byte at `offset`.
std::string indexOf(HintText& text, const Literal& literal, std::uint64_t offset) {
  vsa::ListReader reader(literal.list);
  vsa::ListPart part;
  std::size_t index = 0;
  while (reader.next(part) && text.text().data() + offset > part.text.data()) {
    index += part.continues ? 0 : 1;
  }
  return "index " + std::to_string(index);
}

void hintForNumber(HintText& text, const vsa::TextRange& range, Finding& finding) {
  const std::string_view number = text.bytesOf(range);
  const std::optional<Literal> literal = literalAt(text, range.begin.offset);
  if (!literal) return;
  const vsa::ElementType component = zn::korvo_sdk::componentType(literal->type);
  const std::string type = loweredName(vsa::typeName(component));
  if (number.front() == '{') {
    finding.hint = "every number of the list has to be one of type " + type;
    return;
  }
  const std::string index = indexOf(text, *literal, range.begin.offset);
  const bool isWhole =
      number.substr(number.front() == '-' ? 1 : 0).find_first_not_of("0123456789") ==
      std::string_view::npos;
  if (isCompressed(number)) {
    finding.hint = COMPRESSED_HINT;
  } else if (isInteger(component) && number.find('.') != std::string_view::npos) {
    finding.hint =
        "a buffer of " + type + " has integers only (" + index + "); `float` takes real numbers";
  } else if (isInteger(component) && isWhole) {
    finding.hint = "the number at " + index + " does not fit the type " + type;
  } else {
    finding.hint =
        "this is not a number, or one that does not fit the type " + type + " (" + index + ')';
  }
}

const char* hintForCompressed(DiagnosticId id) {
  switch (id) {
    case DiagnosticId::CompressedDataEmpty:
      return "an empty buffer is written with the count 0 and `{}`";
    case DiagnosticId::CompressedDataBadCharacter:
      return "write the stream in hexadecimal, two digits for each byte";
    case DiagnosticId::CompressedDataEndsEarly:
      return "the stream was cut off; flush the compressor before its output is taken";
    case DiagnosticId::CompressedDataCorrupt:
      return "compress with the zlib format (RFC 1950)";
    case DiagnosticId::CompressedDataWrongChecksum:
      return "the stream is damaged; export the file again";
    case DiagnosticId::CompressedDataTooLarge:
      return "the count is that of elements after decompression";
    case DiagnosticId::CannotAllocate:
      return "correct the count";
    case DiagnosticId::TooManyEmptyElements:
      return "assign the elements in order, or use a buffer";
    case DiagnosticId::NestedTooDeeply:
      return "nest less deeply";
    default:
      return "";
  }
}

}  // namespace

void hintForBuffer(HintText& text, const vsa::Diagnostic& diagnostic, Finding& finding) {
  switch (diagnostic.id) {
    case DiagnosticId::InvalidElementCount:
    case DiagnosticId::TooManyElements:
    case DiagnosticId::TooFewElements:
      return hintForCount(text, diagnostic.range.begin.offset, finding);
    case DiagnosticId::UnreadableBuffer:
      return hintForNumber(text, diagnostic.range, finding);
    default:
      finding.hint = hintForCompressed(diagnostic.id);
      return;
  }
}

}  // namespace vsa_tools
