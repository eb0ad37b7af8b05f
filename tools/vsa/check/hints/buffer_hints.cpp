// Hints for buffers.
#include <optional>
#include <string>

#include "tools/vsa/check/hints/hint_text.h"
#include "tools/vsa/check/hints/similar_names.h"
#include "tools/vsa/check/rules/walk/text_walk.h"

namespace vsa_tools {

namespace {

using vsa::DiagnosticId;

/// A buffer literal, `TYPE[COUNT] {LIST}`.
struct Literal {
  vsa::ElementType type = vsa::ElementType::Null;
  std::uint64_t countBegin = 0;  // the offset of the "["
  std::uint64_t countEnd = 0;
  std::size_t numbers = 0;
};

// Returns the buffer literal that contains `offset`: the offset of its bracket, of its list, or of
// a number in the list. Returns nothing if no literal is there.
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
  vsa::ListReader reader(all.substr(list, all.substr(0, end).rfind('}') + 1 - list));
  vsa::ListPart part;
  while (reader.next(part)) literal.numbers += part.continues ? 0 : 1;
  return literal.type == vsa::ElementType::Null ? std::nullopt : std::optional(literal);
}

// Adds the element count that fits the list as a hint. If the last element is incomplete, the hint
// is how many numbers the list and an element have.
void hintForCount(HintText& text, std::uint64_t offset, Finding& finding) {
  const std::optional<Literal> literal = literalAt(text, offset);
  if (!literal) return;
  const std::size_t components = zn::korvo_sdk::componentCount(literal->type);
  const std::string numbers = std::to_string(literal->numbers);
  if (literal->numbers % components != 0) {
    finding.hint =
        "the list has " + numbers + " numbers, and an element has " + std::to_string(components);
    return;
  }
  const std::string count = '[' + std::to_string(literal->numbers / components) + ']';
  finding.hint = "the count is that of elements: write `" + count + "` for " + numbers + " numbers";
  finding.edits = {{literal->countBegin, literal->countEnd, count}};
}

void hintForNumber(HintText& text, const vsa::TextRange& range, Finding& finding) {
  const std::string_view number = text.bytesOf(range);
  const std::optional<Literal> literal = literalAt(text, range.begin.offset);
  if (!literal) return;
  const vsa::ElementType component = zn::korvo_sdk::componentType(literal->type);
  const bool isInteger =
      component != vsa::ElementType::Float && component != vsa::ElementType::Double;
  const std::string type = loweredName(vsa::typeName(component));
  if (number.front() == '{') {
    finding.hint = "every number of the list has to be one of type " + type;
  } else if (isInteger && number.find('.') != std::string_view::npos) {
    finding.hint = "a buffer of " + type + " has integers only; `float` takes real numbers";
  } else if (isInteger) {
    finding.hint = "the number does not fit the type " + type;
  } else {
    finding.hint = "this is not a number, or one that does not fit the type " + type;
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
