// Reads a text through the public API: from memory, from a file, and from a source that returns few
// bytes at a time. The results must be equal, unless the limit of memory is exceeded. The result
// for the file is not compared if the text begins with a byte order mark. The status must be valid
// and the counts must be consistent. The diagnostics must be inside the text and, except for those
// about links, in the order of their positions.
#include <sys/mman.h>
#include <unistd.h>

#include <algorithm>
#include <string>

#include <vsa/read.h>
#include "fuzz/support/check.h"
#include "fuzz/support/fuzz_scene.h"
#include "fuzz/targets.h"
#include "tests/api/reading/api_read.h"

namespace vsa_fuzz {

namespace {

using vsa::Diagnostic;
using vsa::DiagnosticId;
using vsa::ReadOutcome;
using vsa::ReadStatus;
using vsa::TextPosition;

void check(bool isRight, const char* what) {
  if (!isRight) fail(what);
}

void checkPosition(const TextPosition& position, std::string_view text) {
  check(position.offset <= text.size(), "a diagnostic lies outside the text");
  const std::string_view before = text.substr(0, position.offset);
  const auto lines = static_cast<std::uint64_t>(std::count(before.begin(), before.end(), '\n'));
  check(position.line == lines + 1, "a diagnostic has the wrong line");
  const std::size_t feed = before.rfind('\n');
  const std::size_t start = feed == std::string_view::npos ? 0 : feed + 1;
  check(position.column == before.size() - start + 1, "a diagnostic has the wrong column");
}

// Whether the diagnostic is about a link. Links are resolved after the last statement, and in the
// order of the hash table of pending links. Their diagnostics are therefore not in the order of the
// text. They may also exceed the limit of diagnostics.
bool isOfLink(const Diagnostic& found) {
  return found.limit == vsa::Limit::Diagnostics || found.id == DiagnosticId::InvalidOutput ||
         found.id == DiagnosticId::NoNodeToConnect || found.id == DiagnosticId::NoOutputToConnect ||
         found.id == DiagnosticId::NoNodeToAssign || found.id == DiagnosticId::CannotAssignNode;
}

void checkDiagnostics(const ReadOutcome& outcome, std::string_view text) {
  std::uint64_t place = 0;
  for (const Diagnostic& found : outcome.diagnostics) {
    checkPosition(found.range.begin, text);
    checkPosition(found.range.end, text);
    check(found.range.begin.offset <= found.range.end.offset, "a range ends before it begins");
    check(std::string_view(vsa::name(found.id)) != "unknown", "a diagnostic has no name");
    if (isOfLink(found)) continue;
    check(found.range.begin.offset >= place, "diagnostics are not in order of place");
    place = found.range.begin.offset;
  }
}

void checkOutcome(const ReadOutcome& outcome, std::string_view text) {
  check(std::string_view(vsa::name(outcome.status)) != "unknown", "the status has no name");
  check(outcome.limit.has_value() == (outcome.status == ReadStatus::OverLimit),
        "a limit without its status");
  check(outcome.isComplete() == outcome.message.empty(), "a message without a reason");
  check(outcome.bytesRead <= text.size(), "more bytes read than there are");
  const bool hasEnd = std::any_of(outcome.diagnostics.begin(), outcome.diagnostics.end(),
                                  [](const Diagnostic& found) { return found.endedReading; });
  const bool hasLeftOut = outcome.status == ReadStatus::OverLimit && outcome.applied.linksResolved;
  check(hasEnd == (!outcome.isComplete() && !hasLeftOut),
        "the end of the reading has no diagnostic");
  check(outcome.errorCount + outcome.warningCount ==
            outcome.diagnostics.size() + outcome.droppedDiagnostics,
        "diagnostics are lost");
  checkDiagnostics(outcome, text);
}

// Whether the end of the diagnostic's range must be the same for every source. The range of an
// invalid character includes the number or word that contains the character. If the source returns
// few bytes, the end of this number or word may be missing. The range then ends earlier.
bool hasDeliveredEnd(const Diagnostic& found) {
  return found.id != DiagnosticId::InvalidToken && found.id != DiagnosticId::InvalidListToken;
}

std::string shown(const ReadOutcome& outcome) {
  std::string text = vsa::name(outcome.status) + (" " + outcome.message) + '\n';
  for (const Diagnostic& found : outcome.diagnostics) {
    text += std::to_string(found.range.begin.offset) + '-';
    if (hasDeliveredEnd(found)) text += std::to_string(found.range.end.offset);
    text += ' ' + found.inputPath + ' ' + found.logLine() + '\n';
  }
  return text;
}

// Whether the reading exceeded the limit of memory. The memory for the characters of a token
// depends on how many bytes the source returns at a time, so the results of two sources may differ.
bool isOverMemory(const ReadOutcome& outcome) {
  return outcome.limit == vsa::Limit::Memory;
}

/// A file in memory.
class MemoryFile {
 public:
  MemoryFile() : descriptor_(::memfd_create("fuzz", MFD_CLOEXEC)) {
    check(descriptor_ >= 0, "no file in memory");
  }
  ~MemoryFile() { ::close(descriptor_); }
  MemoryFile(const MemoryFile&) = delete;
  MemoryFile& operator=(const MemoryFile&) = delete;

  /// Replaces the content of the file by `text`. Returns the path of the file.
  std::string pathWith(std::string_view text) const {
    const bool isWritten =
        ::ftruncate(descriptor_, 0) == 0 &&
        ::pwrite(descriptor_, text.data(), text.size(), 0) == static_cast<ssize_t>(text.size());
    check(isWritten, "the file in memory is not written");
    return "/proc/self/fd/" + std::to_string(descriptor_);
  }

 private:
  int descriptor_;
};

// Whether the text begins with a byte order mark. The byte order mark does not belong to the text
// of a file.
bool hasMark(std::string_view text) {
  return text.starts_with("\xEF\xBB\xBF");
}

void checkFile(std::string_view text, const vsa::ReadOptions& options,
               const ReadOutcome& expected) {
  static const MemoryFile file;
  FuzzScene scene;
  zn::korvo_sdk::interfaces::IScene& fromFile = *scene;
  const ReadOutcome found = vsa::readFileInto(fromFile, file.pathWith(text).c_str(), options);
  if (hasMark(text) || isOverMemory(expected) || isOverMemory(found)) return;
  checkOutcome(found, text);
  checkSame(shown(expected), shown(found), "outcome of a read from a file");
}

// Loads the first skipped buffers, from the same text and from a text without its first byte.
void checkSkipped(std::string_view text, const ReadOutcome& outcome,
                  const vsa::ReadOptions& options) {
  constexpr std::size_t MAX_LOADED = 4;
  for (std::size_t i = 0; i < std::min(outcome.skippedBuffers.size(), MAX_LOADED); ++i) {
    const vsa::SkippedBuffer& skipped = outcome.skippedBuffers[i];
    const vsa::LoadedBuffer loaded = vsa::loadBufferFromText(text, skipped, options);
    check(!loaded.isComplete() || loaded.buffer().count() == skipped.count,
          "a loaded buffer has another count");
    check(loaded.isComplete() || loaded.buffer().count() == 0, "a buffer that was not loaded");
    static_cast<void>(vsa::loadBufferFromText(text.substr(1), skipped, options));
  }
}

vsa::ReadOptions optionsOf(unsigned settings) {
  vsa::ReadOptions options;
  if ((settings & 16) != 0) options.buffers = vsa::BufferMode::Skip;
  if ((settings & 32) != 0) options.limits = {1000, 5000, 100, 3, 20, 4, 5};
  if ((settings & 64) != 0) options.keptDiagnostics = 1;
  if ((settings & 128) != 0) options.wantedNames = {"b", "lamp1"};
  return options;
}

}  // namespace

void publicApi(std::string_view input) {
  constexpr std::size_t BYTES_PER_READ[] = {0, 1, 2, 3, 5, 7, 13, 16, 31, 64, 100, 255, 0, 0, 4, 6};
  const auto [text, settings] = splitSettings(input);
  const vsa::ReadOptions options = optionsOf(settings);

  FuzzScene first;
  zn::korvo_sdk::interfaces::IScene& fromText = *first;
  const ReadOutcome expected = vsa::readTextInto(fromText, text, options);
  checkOutcome(expected, text);
  checkFile(text, options, expected);
  checkSkipped(text, expected, options);
  // Reads the text again into the same scene. The outcome must be valid there, too, although the
  // nodes already exist.
  checkOutcome(vsa::readTextInto(fromText, text, options), text);

  FuzzScene second;
  zn::korvo_sdk::interfaces::IScene& fromSource = *second;
  vsa_tests::TestSource source(std::string(text), BYTES_PER_READ[settings % 16]);
  // This number determines the default limit of memory.
  source.announced = text.size();
  const ReadOutcome found = vsa::readSourceInto(fromSource, source, options);
  checkOutcome(found, text);
  if (isOverMemory(expected) || isOverMemory(found)) return;
  checkSame(shown(expected), shown(found), "outcome of a read from a source");
}

}  // namespace vsa_fuzz
