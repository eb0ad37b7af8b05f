// Reads one buffer literal: as the value of a text of its own, so that it is checked and converted
// as in the text that it is from.
#include <algorithm>
#include <exception>
#include <new>
#include <string>

#include <vsa/foundation/ref_counted.h>
#include <vsa/read.h>
#include "api/reading/ending.h"
#include "foundation/io/descriptor_source.h"

namespace vsa {

namespace {

using zn::detail::DescriptorSource;

// What stands before the literal. The path of its input is replaced in the outcome.
constexpr std::string_view BEFORE = "b b:.b=";
constexpr std::string_view INPUT_PATH = "b.b";

std::uint64_t bytesOf(const TextRange& range) {
  return range.end.offset - std::min(range.begin.offset, range.end.offset);
}

TextPosition moved(const TextPosition& position, const TextPosition& literal) {
  const std::uint64_t offset =
      position.offset - std::min<std::uint64_t>(position.offset, BEFORE.size());
  const bool isFirstLine = position.line == 1;
  const std::uint64_t column = isFirstLine ? literal.column + offset : position.column;
  return {literal.offset + offset, literal.line + position.line - 1, column};
}

// The positions that the diagnostics have in the whole text.
void moveTo(const SkippedBuffer& skipped, LoadedBuffer& loaded) {
  for (Diagnostic& found : loaded.diagnostics) {
    found.range.begin = moved(found.range.begin, skipped.literal.begin);
    found.range.end = moved(found.range.end, skipped.literal.begin);
    if (found.inputPath == INPUT_PATH) found.inputPath = skipped.inputPath;
  }
}

void requireSame(const SkippedBuffer& skipped, LoadedBuffer& loaded) {
  const BufferView buffer = loaded.buffer();
  const bool isSame = buffer.problem() == BufferProblem::None &&
                      buffer.elementType() == skipped.type && buffer.count() == skipped.count;
  if (loaded.isComplete() && !isSame) {
    Ending(loaded).set(ReadStatus::Unreadable, "the text has another literal in this place");
  }
}

// Calls `makeLiteral`, which returns the bytes of the literal, and reads them.
template <class MakeLiteral>
LoadedBuffer load(const SkippedBuffer& skipped, const ReadOptions& options,
                  const MakeLiteral& makeLiteral) noexcept {
  LoadedBuffer loaded;
  try {
    std::string text(BEFORE);
    if (!makeLiteral(text)) {
      Ending(loaded).set(ReadStatus::Unreadable, "the text has changed");
      return loaded;
    }
    text += ';';
    ReadOptions whole = options;
    whole.buffers = BufferMode::Read;
    whole.wantedNames.clear();
    whole.wantedTypes.clear();
    static_cast<ReadOutcome&>(loaded) = readTextInto(loaded.scene, text, whole);
    moveTo(skipped, loaded);
    requireSame(skipped, loaded);
  } catch (const std::bad_alloc&) {
    Ending(loaded).set(ReadStatus::OutOfMemory, std::current_exception());
  }
  return loaded;
}

// Appends the bytes of a range of a file; false if it has them not.
bool appendFrom(const DescriptorSource& source, const TextRange& range, std::string& text) {
  const std::size_t before = text.size();
  const std::uint64_t count = bytesOf(range);
  if (count > source.fileBytes().value_or(0)) return false;
  text.resize(before + static_cast<std::size_t>(count));
  return source.readAt(range.begin.offset, text.data() + before, static_cast<std::size_t>(count)) ==
         count;
}

bool appendFrom(const char* path, const TextRange& range, std::string& text) {
  int error = 0;
  if (path == nullptr) return false;
  DescriptorSource* const source = DescriptorSource::open(path, error);
  if (source == nullptr) return false;
  const zn::RefersTo<zn::ByteSource> held(source);
  char start[16];
  source->read(start, sizeof start);  // offsets do not count a byte order mark
  return appendFrom(*source, range, text);
}

}  // namespace

BufferView LoadedBuffer::buffer() const noexcept {
  const InputView input = scene.view()["b"]["b"];
  return input.buffer();
}

LoadedBuffer loadBuffer(const std::filesystem::path& path, const SkippedBuffer& skipped,
                        const ReadOptions& options) noexcept {
  return loadBuffer(path.c_str(), skipped, options);
}

LoadedBuffer loadBuffer(const char* path, const SkippedBuffer& skipped,
                        const ReadOptions& options) noexcept {
  return load(skipped, options,
              [&](std::string& text) { return appendFrom(path, skipped.literal, text); });
}

LoadedBuffer loadBufferFromText(std::string_view text, const SkippedBuffer& skipped,
                                const ReadOptions& options) noexcept {
  return load(skipped, options, [&](std::string& literal) {
    const TextRange& range = skipped.literal;
    if (range.begin.offset > text.size() || bytesOf(range) > text.size() - range.begin.offset) {
      return false;
    }
    literal += text.substr(static_cast<std::size_t>(range.begin.offset),
                           static_cast<std::size_t>(bytesOf(range)));
    return true;
  });
}

}  // namespace vsa
