// Buffer literals: a typed array of elements, as a list of numbers or as one compressed text.
#include <cstdlib>
#include <cstring>
#include <limits>
#include <memory>

#include "foundation/compression/compressed_text.h"
#include "foundation/containers/hash_map.h"
#include "foundation/numbers/number_list.h"
#include "foundation/numbers/number_text.h"
#include "vsa/parser.h"

namespace zn::korvo_sdk::impl {

namespace {

using Type = Token::Type;
using TypeTable = ds::HashMap<String, DataType>;

struct Row {
  const char* keyword;
  DataType type;
};

// One number an element.
constexpr Row SCALAR_ROWS[] = {
    {"char", DataType::Char},     {"byte", DataType::Byte},     {"int16", DataType::Int16},
    {"int32", DataType::Int32},   {"int64", DataType::Int64},   {"uint16", DataType::UInt16},
    {"uint32", DataType::UInt32}, {"uint64", DataType::UInt64}, {"float", DataType::Float},
    {"double", DataType::Double},
};

// Several numbers an element.
constexpr Row VECTOR_ROWS[] = {
    {"vec2f", DataType::Vec2f}, {"vec3f", DataType::Vec3f},       {"vec4f", DataType::Vec4f},
    {"pos2f", DataType::Pos2f}, {"pos3f", DataType::Pos3f},       {"quatf", DataType::Quatf},
    {"mat3f", DataType::Mat3f}, {"mat4f", DataType::Mat4f},       {"rgbf", DataType::Rgbf},
    {"rgbaf", DataType::Rgbaf}, {"hsvf", DataType::Hsvf},         {"hslf", DataType::Hslf},
    {"vec2d", DataType::Vec2d}, {"vec3d", DataType::Vec3d},       {"vec4d", DataType::Vec4d},
    {"pos2d", DataType::Pos2d}, {"pos3d", DataType::Pos3d},       {"quatd", DataType::Quatd},
    {"mat3d", DataType::Mat3d}, {"mat4d", DataType::Mat4d},       {"rgbd", DataType::Rgbd},
    {"rgbad", DataType::Rgbad}, {"hsvd", DataType::Hsvd},         {"hsld", DataType::Hsld},
    {"vec2i", DataType::Vec2i}, {"vec3i", DataType::Vec3i},       {"vec4i", DataType::Vec4i},
    {"pos2i", DataType::Pos2i}, {"pos3i", DataType::Pos3i},       {"mat3i", DataType::Mat3i},
    {"mat4i", DataType::Mat4i}, {"vec2u", DataType::Vec2u},       {"vec3u", DataType::Vec3u},
    {"vec4u", DataType::Vec4u}, {"rgb8", DataType::Rgb8},         {"rgba8", DataType::Rgba8},
    {"argb8", DataType::Argb8}, {"colorref", DataType::ColorRef},
};

template <std::size_t N>
const TypeTable* makeTable(const Row (&rows)[N]) {
  auto table = std::make_unique<TypeTable>();
  for (const Row& row : rows) table->set(row.keyword, row.type);
  return table.release();
}

// The element type of a keyword, in any letter case; Null when it is none.
DataType elementTypeOf(const String& keyword) {
  // Made once, and never destroyed: another thread may still read while the process ends.
  static const TypeTable& scalarBufferTypes = *makeTable(SCALAR_ROWS);
  static const TypeTable& vectorBufferTypes = *makeTable(VECTOR_ROWS);
  const String lower = keyword.toLower(true);
  const TypeTable::Node* const scalar = scalarBufferTypes.findNode(lower);
  return scalar != nullptr ? scalar->value : vectorBufferTypes.get(lower);
}

template <class Number>
bool integerTo(const char* first, const char* last, unsigned char* out) {
  Number number{};
  if (!integerFromText(first, last, number)) return false;
  std::memcpy(out, &number, sizeof(number));
  return true;
}

template <class Number>
bool realTo(const char* first, const char* last, unsigned char* out) {
  Number number{};
  if (!realFromText(first, last, number)) return false;
  std::memcpy(out, &number, sizeof(number));
  return true;
}

// Converts one number of a component type and stores it; nothing is written when it will not.
bool storeNumber(const char* first, const char* last, DataType type, unsigned char* out) {
  switch (type) {
    case DataType::Char:
      return integerTo<signed char>(first, last, out);
    case DataType::Byte:
      return integerTo<unsigned char>(first, last, out);
    case DataType::Int16:
      return integerTo<short>(first, last, out);
    case DataType::Int32:
      return integerTo<int>(first, last, out);
    case DataType::Int64:
      return integerTo<long long>(first, last, out);
    case DataType::UInt16:
      return integerTo<unsigned short>(first, last, out);
    case DataType::UInt32:
      return integerTo<unsigned int>(first, last, out);
    case DataType::UInt64:
      return integerTo<unsigned long long>(first, last, out);
    case DataType::Float:
      return realTo<float>(first, last, out);
    case DataType::Double:
      return realTo<double>(first, last, out);
    default:
      return false;
  }
}

template <class Number>
NumberRun runOf(const char* from, const char* end, unsigned char* out, std::uint64_t bytes) {
  return readNumberRun(from, end, reinterpret_cast<Number*>(out),
                       static_cast<std::size_t>(bytes / sizeof(Number)));
}

// Converts as many numbers as go the fast way into `bytes` bytes at `out`, which is aligned for
// them: it lies a whole number of components into a block from calloc.
NumberRun storeRun(const char* from, const char* end, DataType type, unsigned char* out,
                   std::uint64_t bytes) {
  switch (type) {
    case DataType::Char:
      return runOf<signed char>(from, end, out, bytes);
    case DataType::Byte:
      return runOf<unsigned char>(from, end, out, bytes);
    case DataType::Int16:
      return runOf<short>(from, end, out, bytes);
    case DataType::Int32:
      return runOf<int>(from, end, out, bytes);
    case DataType::Int64:
      return runOf<long long>(from, end, out, bytes);
    case DataType::UInt16:
      return runOf<unsigned short>(from, end, out, bytes);
    case DataType::UInt32:
      return runOf<unsigned int>(from, end, out, bytes);
    case DataType::UInt64:
      return runOf<unsigned long long>(from, end, out, bytes);
    case DataType::Float:
      return runOf<float>(from, end, out, bytes);
    case DataType::Double:
      return runOf<double>(from, end, out, bytes);
    default:
      return {from, 0};
  }
}

[[noreturn]] void cannotAllocate(const AssignInfo& info, const Emitter& messages) {
  messages.fatal(DiagnosticId::CannotAllocate, info.valueToken.text, info.countToken.text);
}

// Type, count and size; no memory yet.
void describeBuffer(AssignInfo& info, DataType type, const Emitter& messages) {
  unsigned long long count = 0;
  const String text = info.countToken.text.trimChars("[]", String());
  if (!String::parse(text, count, String::Radix::Decimal)) {
    messages.fatal(DiagnosticId::InvalidElementCount, info.countToken.text);
  }
  const bool isTooLarge = count > std::numeric_limits<std::size_t>::max() / elementBytes(type);
  if (isTooLarge) cannotAllocate(info, messages);
  info.data.type = AttrType::Buffer;
  info.data.elementType = static_cast<std::int32_t>(type);
  info.data.payload.buffer = {nullptr, count, count * elementBytes(type), type, 0};
}

// One block of the exact size, zeroed. It is the record's data from here on, and is not freed when
// the literal turns out to be bad.
void allocateElements(AssignInfo& info, const Emitter& messages) {
  BufferValue& buffer = info.data.payload.buffer;
  buffer.memory =
      static_cast<unsigned char*>(std::calloc(1, static_cast<std::size_t>(buffer.bytes)));
  if (buffer.memory == nullptr) cannotAllocate(info, messages);
}

// The text from the "." up to the closing brace, straight into the element memory. A result that is
// shorter than the buffer leaves the rest zero.
void expandElements(const AssignInfo& info, const Emitter& messages) {
  const BufferValue& buffer = info.data.payload.buffer;
  const String& list = info.elementsToken.text;
  std::size_t length = 0;
  const auto problem =
      expandCompressedText(reinterpret_cast<const unsigned char*>(list.buf()) + 1, list.len() - 2,
                           buffer.memory, static_cast<std::size_t>(buffer.bytes), length);
  if (problem) messages.fatalWithoutArguments(*problem);
}

// Every field between blanks is converted, and held against the buffer's end, before a field that
// does not convert is reported.
void convertElements(const AssignInfo& info, const Emitter& messages) {
  const BufferValue& buffer = info.data.payload.buffer;
  const DataType component = componentType(buffer.type);
  const std::uint64_t step = componentBytes(buffer.type);
  const String& keyword = info.valueToken.text;
  const String& list = info.elementsToken.text;
  const char* at = list.buf() + 1;
  const char* const end = list.buf() + list.len() - 1;
  std::uint64_t offset = 0;
  bool ok = true;

  while (at < end) {
    const NumberRun run =
        storeRun(at, end, component, buffer.memory + offset, buffer.bytes - offset);
    offset += run.count * step;
    at = run.next;
    if (at >= end) break;
    const void* const blank = std::memchr(at, ' ', static_cast<std::size_t>(end - at));
    const char* const fieldEnd = blank == nullptr ? end : static_cast<const char*>(blank);
    if (fieldEnd != at) {
      if (offset > buffer.bytes - step) {
        messages.fatal(DiagnosticId::TooManyElements,
                       String::copyOf({at, static_cast<std::size_t>(fieldEnd - at)}), offset / step,
                       keyword, buffer.count);
      }
      ok = storeNumber(at, fieldEnd, component, buffer.memory + offset) && ok;
      offset += step;
    }
    at = fieldEnd + 1;
  }
  if (offset < buffer.bytes) {
    messages.log(DiagnosticId::TooFewElements, offset / elementBytes(buffer.type), keyword,
                 buffer.count);
  }
  if (!ok) messages.fatal(DiagnosticId::UnreadableBuffer, keyword);
}

}  // namespace

// keyword "[" count "]" "{" (numbers | "." compressed) "}"   `vec3f[2] {0 0 0, 1 0 0}`
bool VsaParser::buffer(AssignInfo& info) {
  const bool isShaped =
      nextIs(Type::Id) && peek(1).type == Type::Brackets && peek(2).type == Type::Braces;
  if (!isShaped) return false;
  const DataType type = elementTypeOf(peek(0).text);
  if (type == DataType::Null) return false;
  match(info.valueToken, Type::Id);
  match(info.countToken, Type::Brackets);
  match(info.elementsToken, Type::Braces);

  const Emitter messages = emitter();
  describeBuffer(info, type, messages);
  if (info.data.payload.buffer.bytes == 0) return true;
  allocateElements(info, messages);
  // Only single bytes may come compressed: anywhere else "." begins a number.
  const String& list = info.elementsToken.text;
  if (componentBytes(type) == 1 && list.len() > 2 && list[1] == '.') {
    expandElements(info, messages);
  } else {
    convertElements(info, messages);
  }
  return true;
}

// Converts one number and stores it at `out`, in the machine's representation.
bool VsaParser::parseElem(const String& text, DataType type, unsigned char* out) {
  return storeNumber(text.buf(), text.buf() + text.len(), type, out);
}

}  // namespace zn::korvo_sdk::impl
