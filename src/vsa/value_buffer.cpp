// Parses buffer literals. A buffer literal is a typed list of numbers or a compressed text.
#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <limits>
#include <optional>
#include <string_view>

#include "foundation/base/white_space.h"
#include "foundation/compression/compressed_text.h"
#include "foundation/numbers/number_list.h"
#include "foundation/numbers/number_text.h"
#include "vsa/parser.h"
#include "vsa/type_keywords.h"

namespace zn::korvo_sdk::impl {

namespace {

using Type = Token::Type;

// Converts one number to the component type and stores it at `out`. Stores nothing if the
// conversion fails.
bool storeNumber(const char* first, const char* last, DataType component, unsigned char* out) {
  bool isConverted = false;
  if (component == DataType::Bool) return false;  // the format has no Bool buffers
  visitComponent(component, [&](auto number) {
    isConverted = numberFromText(first, last, number);
    if (isConverted) std::memcpy(out, &number, sizeof(number));
  });
  return isConverted;
}

// Converts numbers with readNumberRun, and stores at most `bytes` bytes at `out`. Stops at the
// first number that it cannot convert. `out` is aligned, because it points to a component in a
// block from calloc.
NumberRun storeRun(const char* from, const char* end, DataType component, unsigned char* out,
                   std::uint64_t bytes) {
  NumberRun run{from, 0};
  visitComponent(component, [&](auto number) {
    using Number = decltype(number);
    run = readNumberRun(from, end, reinterpret_cast<Number*>(out),
                        static_cast<std::size_t>(bytes / sizeof(Number)));
  });
  return run;
}

[[noreturn]] void cannotAllocate(const AssignInfo& info, const Emitter& messages) {
  messages.fatal(DiagnosticId::CannotAllocate, info.valueToken.text, info.countToken.text);
}

// Sets the type, count and size of the buffer. Allocates no memory.
void describeBuffer(AssignInfo& info, DataType type, const Emitter& messages) {
  unsigned long long count = 0;
  const std::string_view text = zn::detail::trimmedChars(info.countToken.text.view(), "[]");
  if (!integerFromText(text.data(), text.data() + text.size(), count)) {
    messages.fatal(DiagnosticId::InvalidElementCount, info.countToken.text);
  }
  const bool isTooLarge = count > std::numeric_limits<std::size_t>::max() / elementBytes(type);
  if (isTooLarge) cannotAllocate(info, messages);
  info.data.type = AttrType::Buffer;
  info.data.elementType = static_cast<std::int32_t>(type);
  // Clears the components, because a matrix that could not be converted may have set them.
  info.data.payload = {.components = {}};
  info.data.payload.buffer = {nullptr, count, count * elementBytes(type), type, 0};
}

// Returns an upper bound of the bytes that a compressed literal expands to. DEFLATE expands one
// byte to at most 1032 bytes, and the text contains two digits for each byte. So each digit expands
// to at most 516 bytes.
std::uint64_t expandedBytesAtMost(const AssignInfo& info) {
  constexpr std::uint64_t MAX_EXPANSION = 516;
  return info.isCompressed() ? info.elementsToken.text.len() * MAX_EXPANSION : 0;
}

// Allocates one zeroed block of the exact size and stores it in the record. If the literal turns
// out to be invalid, a session that holds the block frees it. Without a session, the block is never
// freed.
void allocateElements(AssignInfo& info, const Emitter& messages) {
  BufferValue& buffer = info.data.payload.buffer;
  buffer.memory =
      static_cast<unsigned char*>(std::calloc(1, static_cast<std::size_t>(buffer.bytes)));
  if (buffer.memory == nullptr) cannotAllocate(info, messages);
}

// Polls the host during decompression (see ReadSession::poll).
class SessionObserver final : public RunObserver {
 public:
  explicit SessionObserver(ReadSession& session) : session_(session) {}
  void beforeRun() override { session_.poll(); }

 private:
  ReadSession& session_;
};

// Decompresses the text from the "." to the closing brace into the memory of the elements. If the
// result is shorter than the buffer, the remaining bytes stay zero. Throws DiagnosticError if the
// text is not valid.
void expandElements(AssignInfo& info, const Emitter& messages, ReadSession* session) {
  const BufferValue& buffer = info.data.payload.buffer;
  const String& list = info.elementsToken.text;
  std::size_t length = 0;
  std::optional<SessionObserver> observer;
  if (session != nullptr) observer.emplace(*session);
  const auto problem = expandCompressedText(
      reinterpret_cast<const unsigned char*>(list.buf()) + 1, list.len() - 2, buffer.memory,
      static_cast<std::size_t>(buffer.bytes), length, observer ? &*observer : nullptr);
  if (problem) messages.fatalWithoutArguments(*problem);
  if (session != nullptr) session->endBuffer(info, length);
}

// The number of bytes to convert between two polls of the host (see ReadSession::poll).
constexpr std::uint64_t BYTES_PER_POLL = std::uint64_t{4} << 20;

// Converts the fields between the blanks to numbers. Reports up to two problems: first a wrong
// number of fields, then a field that does not convert. Exception: if there are too many fields,
// only this is reported, because the message is fatal.
void convertElements(const AssignInfo& info, const Emitter& messages, ReadSession* session) {
  const BufferValue& buffer = info.data.payload.buffer;
  const DataType component = componentType(buffer.type);
  const std::uint64_t step = componentBytes(buffer.type);
  const String& keyword = info.valueToken.text;
  const std::string_view list = info.elementsToken.text.view();
  const std::string_view numbers = list.substr(1, list.size() - 2);
  const char* at = numbers.data();
  const char* const end = at + numbers.size();
  std::uint64_t offset = 0;
  const std::uint64_t runBytes = session != nullptr ? BYTES_PER_POLL : buffer.bytes;
  std::uint64_t nextPoll = BYTES_PER_POLL;
  bool ok = true;

  while (at < end) {
    if (session != nullptr && offset >= nextPoll) {
      session->poll();
      nextPoll = offset + BYTES_PER_POLL;
    }
    const NumberRun run = storeRun(at, end, component, buffer.memory + offset,
                                   std::min(buffer.bytes - offset, runBytes));
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

// keyword "[" count "]" "{" (numbers | "." compressed) "}"
// Example: `vec3f[2] {0 0 0, 1 0 0}`
bool VsaParser::buffer(AssignInfo& info) {
  const bool isShaped =
      nextIs(Type::Id) && peek(1).type == Type::Brackets && peek(2).type == Type::Braces;
  if (!isShaped) return false;
  const DataType type = bufferTypeOf(peek(0).text);
  if (type == DataType::Null) return false;
  match(info.valueToken, Type::Id);
  match(info.countToken, Type::Brackets);
  match(info.elementsToken, Type::Braces);

  const Emitter messages = emitter();
  describeBuffer(info, type, messages);
  const BufferValue& buffer = info.data.payload.buffer;
  if (session != nullptr && session->skipsBuffers) {
    session->skipBuffer(info);
    return true;
  }
  if (buffer.bytes == 0) return true;
  if (session != nullptr && !session->chargeBuffer(info, expandedBytesAtMost(info))) return true;
  allocateElements(info, messages);
  hold(buffer.memory, buffer.bytes);
  if (info.isCompressed()) {
    expandElements(info, messages, session);
  } else {
    convertElements(info, messages, session);
  }
  return true;
}

// Converts one number and stores it at `out` in the native representation. Returns false if it does
// not convert.
bool VsaParser::parseElem(const String& text, DataType type, unsigned char* out) {
  return storeNumber(text.buf(), text.buf() + text.len(), type, out);
}

}  // namespace zn::korvo_sdk::impl
