// Reads one buffer literal. To check and convert the literal as in the original text, these
// functions parse a small text that contains the literal: "b b:.b=" LITERAL ";".
#include <algorithm>
#include <exception>
#include <new>
#include <string>
#include <utility>

#include <vsa/foundation/ref_counted.h>
#include <vsa/read.h>
#include "api/reading/outcome/ending.h"
#include "foundation/io/descriptor_source.h"

namespace vsa {

namespace {

using zn::detail::DescriptorSource;

// The part of the small text before the literal, and the path of its input. In the results, the
// path of the input in the original text replaces this path.
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

// Returns the column of the log line in the whole text. Only the columns of the first line change.
// The literal begins at column BEFORE.size() + 1 of the small text, and at column `literal.column`
// of the whole text. The log column may be that of a token before the literal. The function returns
// 0 if the result would therefore be negative.
std::int32_t movedColumn(const Diagnostic& found, const TextPosition& literal) {
  if (found.logLineNumber != 1) return found.logColumn;
  const auto moved = static_cast<std::int64_t>(literal.column) + found.logColumn -
                     static_cast<std::int64_t>(BEFORE.size()) - 1;
  return static_cast<std::int32_t>(std::max<std::int64_t>(moved, 0));
}

// Changes the positions and the path of a diagnostic from the small text to the whole text.
void move(const SkippedBuffer& skipped, Diagnostic& found) {
  const TextPosition& literal = skipped.literal.begin;
  found.range.begin = moved(found.range.begin, literal);
  found.range.end = moved(found.range.end, literal);
  if (found.logLineNumber != 0) {
    found.logColumn = movedColumn(found, literal);
    found.logLineNumber += static_cast<std::int32_t>(literal.line - 1);
  }
  if (found.inputPath == INPUT_PATH) found.inputPath = skipped.inputPath;
}

// Changes all diagnostics of the outcome. If the message of the outcome is the log line of a
// diagnostic, the message is changed, too.
void move(const SkippedBuffer& skipped, ReadOutcome& outcome) {
  for (Diagnostic& found : outcome.diagnostics) {
    const bool isMessage = found.endedReading && outcome.message == found.logLine();
    move(skipped, found);
    if (isMessage) outcome.message = found.logLine();
  }
}

std::uint64_t bytesOfLiteral(const SkippedBuffer& skipped, std::uint64_t bytesRead) {
  const std::uint64_t read = bytesRead - std::min<std::uint64_t>(bytesRead, BEFORE.size());
  return std::min(read, bytesOf(skipped.literal));
}

// Changes the counts to those of the literal alone, without the statement and the node of the small
// text.
void countLiteralOnly(const SkippedBuffer& skipped, ReadOutcome& outcome) {
  outcome.bytesRead = bytesOfLiteral(skipped, outcome.bytesRead);
  outcome.applied.statements = 0;
  outcome.applied.nodes = 0;
}

// Returns the options for reading the small text. The callbacks receive positions in the whole text
// and counts of the literal. Buffers are converted, no node is dropped, and the limits of the
// text's bytes, of nodes and of depth do not apply. `load` has compared the bytes of the literal
// with the limit.
ReadOptions optionsFor(const SkippedBuffer& skipped, const ReadOptions& options) {
  ReadOptions whole = options;
  whole.buffers = BufferMode::Read;
  whole.wantedNames.clear();
  whole.wantedTypes.clear();
  whole.limits.textBytes = whole.limits.nodes = whole.limits.depth = UNLIMITED;
  if (options.onDiagnostic) {
    whole.onDiagnostic = [&](const Diagnostic& found) {
      Diagnostic inText = found;
      move(skipped, inText);
      options.onDiagnostic(inText);
    };
  }
  if (options.onProgress) {
    whole.onProgress = [&](const ReadProgress& progress) {
      ReadProgress ofLiteral = progress;
      ofLiteral.bytesRead = bytesOfLiteral(skipped, progress.bytesRead);
      ofLiteral.bytesTotal = bytesOf(skipped.literal);
      return options.onProgress(ofLiteral);
    };
  }
  return whole;
}

void endAtTextBytes(const SkippedBuffer& skipped, const ReadOptions& options,
                    ReadOutcome& outcome) {
  const std::uint64_t limit = options.limits.textBytes;
  const std::string message = "the text is longer than " + std::to_string(limit) + " bytes";
  Diagnostic found;
  found.id = DiagnosticId::OverLimit;
  found.endedReading = true;
  found.message = message;
  found.arguments = {std::to_string(limit)};
  found.limit = Limit::TextBytes;
  found.inputPath = skipped.inputPath;
  found.range = skipped.literal;
  outcome.errorCount = outcome.droppedDiagnostics = 1;
  if (options.onDiagnostic) options.onDiagnostic(found);
  outcome.diagnostics.push_back(std::move(found));
  outcome.droppedDiagnostics = 0;
  Ending(outcome).set(ReadStatus::OverLimit, message);
  outcome.limit = Limit::TextBytes;
}

void requireSame(const SkippedBuffer& skipped, LoadedBuffer& loaded) {
  const BufferView buffer = loaded.buffer();
  const bool isSame = buffer.problem() == BufferProblem::None &&
                      buffer.elementType() == skipped.type && buffer.count() == skipped.count;
  if (loaded.isComplete() && !isSame) {
    Ending(loaded).set(ReadStatus::Unreadable, "the text has another literal in this place");
  }
}

// Reads the literal. `appendLiteral` appends the bytes of the literal to a string. It returns an
// empty string, or the reason why it failed.
template <class AppendLiteral>
LoadedBuffer load(const SkippedBuffer& skipped, const ReadOptions& options,
                  const AppendLiteral& appendLiteral) noexcept {
  LoadedBuffer loaded;
  try {
    if (bytesOf(skipped.literal) > options.limits.textBytes) {
      endAtTextBytes(skipped, options, loaded);
      return loaded;
    }
    std::string text(BEFORE);
    if (const std::string problem = appendLiteral(text); !problem.empty()) {
      Ending(loaded).set(ReadStatus::Unreadable, problem);
      return loaded;
    }
    text += ';';
    static_cast<ReadOutcome&>(loaded) =
        readTextInto(loaded.scene, text, optionsFor(skipped, options));
    move(skipped, loaded);
    countLiteralOnly(skipped, loaded);
    requireSame(skipped, loaded);
  } catch (...) {
    Ending(loaded).setToException();  // memory ran out, or a callback threw an exception
  }
  return loaded;
}

constexpr const char* TEXT_HAS_CHANGED = "the text has changed";

// Appends the bytes of `range` to `text`. Returns an empty string, or the reason why the bytes
// could not be read.
std::string appendFrom(const DescriptorSource& source, const TextRange& range, std::string& text) {
  const std::size_t before = text.size();
  const std::uint64_t count = bytesOf(range);
  if (count > source.textBytes().value_or(0)) return TEXT_HAS_CHANGED;
  text.resize(before + static_cast<std::size_t>(count));
  const bool isWhole = source.readAt(range.begin.offset, text.data() + before,
                                     static_cast<std::size_t>(count)) == count;
  return isWhole ? std::string() : TEXT_HAS_CHANGED;
}

std::string appendFrom(const char* path, const TextRange& range, std::string& text) {
  int error = 0;
  if (path == nullptr) return "the path is null";
  DescriptorSource* const source = DescriptorSource::open(path, error);
  if (source == nullptr) return std::string(zn::detail::messageOfError(error).view());
  const zn::RefersTo<zn::ByteSource> held(source);
  char start[16];
  source->read(start, sizeof start);  // skips a byte order mark, which offsets do not include
  if (const zn::String problem = source->error(); !problem.isEmpty()) {
    return std::string(problem.view());
  }
  return appendFrom(*source, range, text);
}

}  // namespace

BufferView LoadedBuffer::buffer() const noexcept {
  if (!isComplete()) return BufferView();
  const InputView input = scene.view()["b"]["b"];
  return input.buffer();
}

LoadedBuffer loadBuffer(const std::filesystem::path& path, const SkippedBuffer& skipped,
                        const ReadOptions& options) noexcept {
  return load(skipped, options, [&](std::string& text) {
    const bool hasNul = path.native().find('\0') != path.native().npos;
    return hasNul ? "the path has a NUL" : appendFrom(path.c_str(), skipped.literal, text);
  });
}

LoadedBuffer loadBuffer(const char* path, const SkippedBuffer& skipped,
                        const ReadOptions& options) noexcept {
  return load(skipped, options,
              [&](std::string& text) { return appendFrom(path, skipped.literal, text); });
}

LoadedBuffer loadBufferFromText(const char* text, const SkippedBuffer& skipped,
                                const ReadOptions& options) noexcept {
  if (text != nullptr) return loadBufferFromText(std::string_view(text), skipped, options);
  LoadedBuffer loaded;
  Ending(loaded).set(ReadStatus::Unreadable, "the text is null");
  return loaded;
}

LoadedBuffer loadBufferFromText(std::string_view text, const SkippedBuffer& skipped,
                                const ReadOptions& options) noexcept {
  return load(skipped, options, [&](std::string& literal) {
    const TextRange& range = skipped.literal;
    if (range.begin.offset > text.size() || bytesOf(range) > text.size() - range.begin.offset) {
      return std::string(TEXT_HAS_CHANGED);
    }
    literal += text.substr(static_cast<std::size_t>(range.begin.offset),
                           static_cast<std::size_t>(bytesOf(range)));
    return std::string();
  });
}

}  // namespace vsa
