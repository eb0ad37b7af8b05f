// Candidates that do only a part of the work of a reader: loops that only convert numbers, the
// inflate libraries, and a copy of the text. Also defines writeFile().
#include <fast_float/fast_float.h>
#include <libdeflate.h>
#include <zlib.h>

#include <charconv>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <stdexcept>
#include <vector>

#include "bench/peers/peers.h"

namespace bench {
namespace {

// Converts the whole list. Returns the number of converted numbers, or 0 if one cannot be
// converted.
template <class Number, class Convert>
size_t convertList(const std::string& digits, Number* out, Convert convert) {
  const char* at = digits.data();
  const char* const end = at + digits.size();
  Number* const first = out;
  while (at != end) {
    at = convert(at, end, *out++);
    if (!at) return 0;
    while (at != end && *at == ' ') ++at;
  }
  return static_cast<size_t>(out - first);
}

template <class Number, class Convert>
Candidate numberLoop(const char* name, const NumberList& numbers, Convert convert) {
  const auto out = std::make_shared<std::vector<Number>>(numbers.componentCount);
  requireCount(name, "numbers", convertList(numbers.digits, out->data(), convert),
               numbers.componentCount);
  return {name, [&numbers, out, convert] {
            const Stopwatch watch;
            convertList(numbers.digits, out->data(), convert);
            return watch.seconds();
          }};
}

// Returns the end of the number, or null for an error.
template <class Result>
const char* endOrNull(const Result& result) {
  return result.ec == std::errc() ? result.ptr : nullptr;
}

using Memory = std::unique_ptr<unsigned char, void (*)(void*)>;

Memory allocate(size_t size) {
  return {static_cast<unsigned char*>(std::calloc(size, 1)), std::free};
}

bool inflateByZlib(const std::string& stream, unsigned char* out, size_t size) {
  uLongf length = size;
  return uncompress(out, &length, reinterpret_cast<const Bytef*>(stream.data()), stream.size()) ==
             Z_OK &&
         length == size;
}

bool inflateByLibdeflate(const std::string& stream, unsigned char* out, size_t size) {
  libdeflate_decompressor* const decompressor = libdeflate_alloc_decompressor();
  const libdeflate_result result =
      libdeflate_zlib_decompress(decompressor, stream.data(), stream.size(), out, size, nullptr);
  libdeflate_free_decompressor(decompressor);
  return result == LIBDEFLATE_SUCCESS;
}

// Prevents the compiler from removing writes to the memory.
void doNotOptimize(const void* memory) {
  asm volatile("" : : "r"(memory) : "memory");
}

template <class Inflate>
Candidate inflater(const char* name, const std::string& stream, const std::string& bytes,
                   Inflate inflate) {
  const Memory checked = allocate(bytes.size());
  if (!inflate(stream, checked.get(), bytes.size()) ||
      std::memcmp(checked.get(), bytes.data(), bytes.size()) != 0) {
    throw std::runtime_error(std::string(name) + ": wrong bytes");
  }
  return {name, [&stream, size = bytes.size(), inflate] {
            const Stopwatch watch;
            const Memory out = allocate(size);
            inflate(stream, out.get(), size);
            return watch.seconds();
          }};
}

}  // namespace

Candidate standardFloatLoop(const NumberList& numbers) {
  return numberLoop<float>("std::from_chars<float>", numbers,
                           [](const char* at, const char* end, float& out) {
                             return endOrNull(std::from_chars(at, end, out));
                           });
}

Candidate fastFloatLoop(const NumberList& numbers) {
  return numberLoop<float>("fast_float", numbers, [](const char* at, const char* end, float& out) {
    return endOrNull(fast_float::from_chars(at, end, out));
  });
}

Candidate standardIntLoop(const NumberList& numbers) {
  return numberLoop<int32_t>("std::from_chars<int>", numbers,
                             [](const char* at, const char* end, int32_t& out) {
                               return endOrNull(std::from_chars(at, end, out));
                             });
}

Candidate zlibInflate(const std::string& stream, const std::string& bytes) {
  return inflater("zlib", stream, bytes, inflateByZlib);
}

Candidate libdeflateInflate(const std::string& stream, const std::string& bytes) {
  return inflater("libdeflate", stream, bytes, inflateByLibdeflate);
}

Candidate copyLoop(const std::string& text) {
  return {"memcpy", [&text] {
            const Stopwatch watch;
            const Memory copy = allocate(text.size());
            std::memcpy(copy.get(), text.data(), text.size());
            doNotOptimize(copy.get());
            return watch.seconds();
          }};
}

void writeFile(const std::string& path, const std::string& content) {
  std::FILE* const file = std::fopen(path.c_str(), "wb");
  const bool isOpen = file != nullptr;
  const bool isWritten =
      isOpen && std::fwrite(content.data(), 1, content.size(), file) == content.size();
  const bool isClosed = isOpen && std::fclose(file) == 0;
  if (!isWritten || !isClosed) throw std::runtime_error("cannot write " + path);
}

}  // namespace bench
