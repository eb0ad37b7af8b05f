#include "tools/vsa/common/scene/short_value.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstring>
#include <optional>

#include <vsa/scene/data_type.h>
#include "tools/scene_text/printable_text.h"
#include "tools/scene_text/real_text.h"
#include "tools/vsa/common/output/counted.h"

namespace vsa_tools {

namespace {

constexpr std::uint64_t SHOWN_NUMBERS = 4;

std::string lowered(std::string_view text) {
  std::string lower(text);
  for (char& c : lower) {
    if (c >= 'A' && c <= 'Z') c = static_cast<char>(c - 'A' + 'a');
  }
  return lower;
}

template <class Number>
std::string numberText(Number number) {
  char digits[NUMBER_TEXT_CAPACITY];
  if constexpr (std::is_floating_point_v<Number>) {
    const std::string text(digits, realText(number, digits));
    return std::isnan(number) && std::signbit(number) ? '-' + text : text;
  } else {
    return {digits, std::to_chars(digits, digits + sizeof digits, number).ptr};
  }
}

/// Returns a Real with a decimal point or an exponent, which distinguishes it from an Int, or as
/// "nan", "-nan", "inf" or "-inf".
std::string pointedReal(double number) {
  std::string text = numberText(number);
  if (text.find_first_of(".nae") == std::string::npos) text += ".0";
  return text;
}

std::string quoted(std::string_view text) {
  return '"' + shortText(text) + '"';
}

/// Returns `count` numbers with blanks between them. Numbers beyond SHOWN_NUMBERS are replaced by
/// an ellipsis.
template <class NumberAt>
std::string numberList(std::uint64_t count, NumberAt numberAt) {
  std::string text;
  for (std::uint64_t i = 0; i < std::min(count, SHOWN_NUMBERS); ++i) {
    if (i > 0) text += ' ';
    text += numberAt(i);
  }
  return count > SHOWN_NUMBERS ? text + " ..." : text;
}

std::string tupleText(vsa::InputView input) {
  const auto components = input.components();
  return lowered(vsa::typeName(input.type())) + '(' +
         numberList(components.size(), [&](auto i) { return numberText(components[i]); }) + ')';
}

/// Returns the number at `index`, which counts all numbers of the buffer. Returns an empty text if
/// the elements have no numbers, or the buffer has no number at `index`.
std::string bufferNumber(const vsa::BufferView& buffer, std::uint64_t index) {
  std::string text;
  zn::korvo_sdk::visitComponent(
      zn::korvo_sdk::componentType(buffer.elementType()), [&](auto number) {
        if ((index + 1) * sizeof number > buffer.bytes().size()) return;
        std::memcpy(&number, buffer.bytes().data() + index * sizeof number, sizeof number);
        text = numberText(number);
      });
  return text;
}

std::string withList(std::string text, const std::string& list) {
  if (!list.empty()) text += ' ' + list;
  return text;
}

std::string bufferText(const vsa::BufferView& buffer) {
  const std::uint64_t numbers =
      buffer.count() * zn::korvo_sdk::componentCount(buffer.elementType());
  return withList(
      lowered(vsa::typeName(buffer.elementType())) + '[' + std::to_string(buffer.count()) + ']',
      numberList(numbers, [&](auto i) { return bufferNumber(buffer, i); }));
}

bool hasChildren(vsa::ValueType type) {
  return type == vsa::ValueType::Array || type == vsa::ValueType::Object;
}

/// Returns the source of an array element that has a connection, and the value of any other
/// element.
std::string elementText(vsa::InputView element) {
  const std::string source = shortConnection(element);
  return source.empty() ? shortValue(element) : source;
}

std::string arrayText(vsa::InputView array) {
  const std::uint64_t count = array.elements().size();
  // An array has no element type if it has had only links, or no elements at all.
  const bool hasType = array.elementType() != vsa::ValueType::Null;
  const std::string type = hasType ? lowered(vsa::typeName(array.elementType())) : "node";
  std::string text = type + '[' + std::to_string(count) + ']';
  if (hasChildren(array.elementType()) || array.elementType() == vsa::ValueType::Buffer) {
    return text;
  }
  return withList(text, numberList(count, [&](auto i) { return elementText(array[i]); }));
}

std::string objectText(vsa::InputView object) {
  return '{' + counted(object.members().size(), "member") + '}';
}

std::string nodeText(vsa::InputView input) {
  return input.node() ? shortText(input.node().name()) : "null";
}

}  // namespace

std::string shortText(std::string_view text, std::size_t capacity) {
  std::string shown;
  std::size_t characters = 0;
  // Only the beginning of the text is read. A character has at most 4 bytes. Therefore this part
  // has at least `capacity` characters, or it is the whole text.
  std::string_view part = text.substr(0, std::min(text.size(), 4 * capacity));
  const auto add = [&](std::string_view bytes) {
    if (characters++ < capacity) shown += bytes == "\\" ? "\\\\" : printable(bytes);
  };
  forEachCharacter(
      part, [&](char32_t, std::string_view bytes) { add(bytes); },
      [&](char byte) {
        add({&byte, 1});
      });
  const bool isCut = characters > capacity || part.size() < text.size();
  return isCut ? shown + "..." : shown;
}

std::string shortValue(vsa::InputView input) {
  switch (input.type()) {
    case vsa::ValueType::Null:
      return "null";
    case vsa::ValueType::Bool:
      return input.boolean(false) ? "true" : "false";
    case vsa::ValueType::Int:
      return numberText(input.integer(0));
    case vsa::ValueType::UInt:
      return numberText(input.unsignedInteger(0)) + 'u';
    case vsa::ValueType::Real:
      return pointedReal(input.real(0));
    case vsa::ValueType::String:
      return quoted(input.string(""));
    case vsa::ValueType::Node:
      return nodeText(input);
    case vsa::ValueType::Buffer:
      return bufferText(input.buffer());
    case vsa::ValueType::Array:
      return arrayText(input);
    case vsa::ValueType::Object:
      return objectText(input);
    default:
      return tupleText(input);
  }
}

std::string shortConnection(vsa::InputView input) {
  const vsa::ConnectionView connection = input.connection();
  if (!connection) return {};
  return shortText(connection.node().name()) + '.' + shortText(connection.output());
}

std::string shortElement(const vsa::BufferView& buffer, std::uint64_t index) {
  const unsigned numbers = zn::korvo_sdk::componentCount(buffer.elementType());
  const std::string text = numberList(
      numbers, [&](std::uint64_t i) { return bufferNumber(buffer, index * numbers + i); });
  return numbers == 1 ? text : '(' + text + ')';
}

}  // namespace vsa_tools
