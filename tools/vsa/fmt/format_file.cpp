#include "tools/vsa/fmt/format_file.h"

#include <sys/stat.h>

#include <atomic>
#include <cerrno>
#include <cstdint>
#include <cstring>
#include <future>
#include <optional>
#include <utility>

#include <vsa/file_replacement.h>
#include <vsa/syntax.h>
#include "tools/scene_text/printable_text.h"
#include "tools/vsa/common/interrupt.h"
#include "tools/vsa/common/output/exit_status.h"
#include "tools/vsa/common/writing/output_sink.h"
#include "tools/vsa/fmt/comparison/file_comparison.h"
#include "tools/vsa/fmt/diff/line_diff.h"
#include "tools/vsa/fmt/growing_file.h"
#include "tools/vsa/fmt/held_sink.h"
#include "tools/vsa/fmt/layout/text_layout.h"
#include "tools/vsa/fmt/reading/nul_search.h"
#include "tools/vsa/fmt/reading/reading_check.h"
#include "tools/vsa/fmt/sinks.h"
#include "tools/vsa/fmt/text_file.h"
#include "tools/vsa/input/input_file.h"

namespace vsa_tools {

namespace {

FormatOutcome failed(int status, const std::string& shown, const std::string& problem) {
  return {status, {"vsa: " + shown + ": " + printable(problem)}, {}};
}

/// Formats one open file.
class Formatting {
  // The passes that are counted for the progress: the text is checked and formatted.
  static constexpr std::uint64_t PASSES = 2;

 public:
  Formatting(const TextFile& file, const std::string& name, const ReadArguments& arguments,
             const ReadingProgress& onProgress)
      : file_(file),
        name_(name),
        shown_(printableLine(shownName(name))),
        arguments_(arguments),
        onProgress_(onProgress),
        bytes_(TextFileSource(file).size().value_or(0)) {}

  FormatOutcome print() {
    const HeldSink::Check check = startCheck();
    OutputSink sink;
    HeldSink held(sink, check);
    const bool isWritten = format(held) && held.release() && sink.flush();
    if (const auto& refused = check.get()) return *refused;
    return isWritten ? FormatOutcome() : failedWith(sink.error());
  }

  FormatOutcome check() {
    const HeldSink::Check check = startCheck();
    TextFileSource whole(file_.descriptor());
    ComparingSink sink(whole);
    format(sink);
    if (const auto& refused = check.get()) return *refused;
    if (sink.isSame()) return {};
    return {EXIT_NOT_READ, {"vsa: " + shown_ + ": not formatted"}, {}};
  }

  FormatOutcome diff() {
    const HeldSink::Check check = startCheck();
    const FilePointer formatted(std::tmpfile());
    if (formatted == nullptr) return failed(EXIT_USAGE, shown_, std::strerror(errno));
    if (!formatInto(formatted.get())) return failedWith(std::strerror(errno));
    if (const auto& refused = check.get()) return *refused;
    FormatOutcome outcome;
    printDiff(file_.descriptor(), ::fileno(formatted.get()), shown_, shown_ + " (formatted)",
              [&](std::string_view line) { outcome.output.append(line) += '\n'; });
    if (!outcome.output.empty()) outcome.status = EXIT_NOT_READ;
    return outcome;
  }

  // Replaces the file by its formatted text. For a large file, one thread checks it while this one
  // formats it. The thread that ends first compares the tokens of both texts, so two threads are
  // sufficient. For a small file, this thread does everything, and checks last. The new text is not
  // read into a scene: what a reading gets from ShortListSource depends only on the tokens and on
  // white space in lists, so texts with the same tokens have the same scene.
  FormatOutcome replace() {
    vsa::FileReplacement replacement;
    if (!replacement.open(name_)) {
      if (const auto refused = refusal(read())) return *refused;
      return failed(EXIT_USAGE, shown_, replacement.error());
    }
    FileComparison tokens(file_, replacement.newFile());
    const HeldSink::Check check = std::async(launchFor(file_), [&] {
      std::optional<FormatOutcome> refused = refusal(read());
      if (refused) {
        tokens.written().cancel();
      } else {
        tokens.compare();
      }
      return refused;
    });
    const CancelAtEnd ending(tokens.written());
    const Written result = writeChanges(replacement, tokens.written());
    if (result == Written::Whole) tokens.compare();
    const auto& refused = check.get();
    // Then the text that was read may be a mixture of two.
    if (!file_.isUnchanged()) {
      return failed(EXIT_USAGE, shown_, "left alone, because it changed while it was read");
    }
    if (refused) return *refused;
    if (result == Written::Unchanged) return {};
    if (result == Written::Failed) return failedWith(replacement.error());
    return replaceBy(replacement, tokens.isSame());
  }

 private:
  /// What was written of the formatted text.
  enum class Written : std::uint8_t {
    Whole,
    Unchanged,  ///< Nothing: the file is formatted already.
    Failed,
  };

  /// Formats the file into the new file. Writes nothing until both differ. Cancels `written` unless
  /// the new file is whole.
  Written writeChanges(vsa::FileReplacement& replacement, GrowingFile& written) {
    TextFileSource whole(file_.descriptor()), beginning(file_.descriptor());
    ComparingSink old(whole);
    GrowingSink changes(replacement, old, beginning, written);
    const bool isFormatted = format(changes);
    const bool isChanged = !old.isSame();
    if (isFormatted && isChanged && changes.end()) return Written::Whole;
    written.cancel();
    return isFormatted && !isChanged ? Written::Unchanged : Written::Failed;
  }

  /// Replaces the file by the new file, unless that cannot be read as the same text. `isSame` says
  /// whether both have the same tokens.
  FormatOutcome replaceBy(vsa::FileReplacement& replacement, bool isSame) const {
    if (!isSame) {
      return failed(EXIT_NOT_READ, shown_,
                    "left alone, because its formatted text reads differently");
    }
    if (isTooLong(replacement.newFile())) {
      return failed(EXIT_NOT_READ, shown_,
                    "left alone, because its formatted text exceeds the limit (--max-text)");
    }
    if (!replacement.replace()) return failed(EXIT_USAGE, shown_, replacement.error());
    return {};
  }

  /// Whether the new file is longer than a text may be.
  bool isTooLong(const std::string& newFile) const {
    TextFile formatted;
    if (!formatted.open(newFile)) return true;
    return TextFileSource(formatted).size() > arguments_.options().limits.textBytes;
  }

  /// Returns how a text is read: on another thread if it is large, otherwise when the result is
  /// requested.
  static std::launch launchFor(const TextFile& file) {
    constexpr off_t LARGE_BYTES = 4 << 20;
    struct stat status {};
    const bool isLarge = ::fstat(file.descriptor(), &status) == 0 && status.st_size >= LARGE_BYTES;
    return isLarge ? std::launch::async : std::launch::deferred;
  }

  /// Returns the future result of reading the file: that of refusal(). A large file is read on
  /// another thread from now on. A small file is read when the result is requested.
  HeldSink::Check startCheck() const {
    return std::async(launchFor(file_), [this] { return refusal(read()); });
  }

  /// Reads the file. The result is not complete if the file has a NUL byte: formatting would drop
  /// the NUL bytes between tokens, which show that the file is damaged.
  ReadingCheck read() const {
    TextFileSource source = sourceOf(file_);
    NulSearch bytes(source);
    ReadingCheck reading = checkReading(bytes, arguments_);
    reading.isComplete = reading.isComplete && !bytes.hasNul();
    return reading;
  }

  TextFileSource sourceOf(const TextFile& file) const {
    if (!onProgress_) return TextFileSource(file);
    return TextFileSource(
        file, [this](std::size_t count) { onProgress_(done_ += count, PASSES * bytes_); });
  }

  /// Writes the formatted text to the sink. A byte order mark of the file is written first.
  bool format(vsa::Sink& sink) {
    TextFileSource source = sourceOf(file_);
    vsa::SyntaxReader reader(source);
    if (file_.hasMark() && !sink.write(BYTE_ORDER_MARK)) return false;
    const bool isWritten = formatText(reader, sink);
    readError_ = source.error();
    return isWritten && readError_.empty();
  }

  /// Returns the outcome of a format() that failed: the file could not be read, or the sink failed
  /// with the error `written`.
  FormatOutcome failedWith(const std::string& written) const {
    return failed(EXIT_USAGE, shown_, readError_.empty() ? written : readError_);
  }

  bool formatInto(std::FILE* to) {
    FileSink sink(to);
    return format(sink) && std::fflush(to) == 0;
  }

  /// Returns the outcome for a file that cannot be read completely, has a NUL byte, is compressed
  /// or has another encoding. Returns nothing for any other file. If `reading` is not complete,
  /// reads the whole text again, because a reading in parts may fail although that of the whole
  /// text does not.
  std::optional<FormatOutcome> refusal(const ReadingCheck& reading) const {
    if (reading.isComplete) return std::nullopt;
    TextFileSource source(file_);
    FormatOutcome outcome;
    outcome.status = EXIT_NOT_READ;
    outcome.messages = endingDiagnostics(shownName(name_), source, arguments_);
    if (outcome.messages.empty()) return std::nullopt;
    outcome.messages.push_back("vsa: " + shown_ +
                               ": not formatted, because it was not read completely");
    return outcome;
  }

  const TextFile& file_;
  const std::string& name_;
  const std::string shown_;  // the name in messages
  const ReadArguments& arguments_;
  const ReadingProgress& onProgress_;
  const std::uint64_t bytes_;  // the size of the text in bytes
  std::string readError_;      // the error that ended the reading of the file in format()
  // The number of bytes that were read in all passes.
  mutable std::atomic<std::uint64_t> done_ = 0;
};

/// Returns whether a file of that name could be replaced. Opening a pipe would wait for its writer.
bool isRegular(const std::string& name) {
  struct stat status {};
  return ::stat(name.c_str(), &status) != 0 || S_ISREG(status.st_mode);
}

FormatOutcome run(Formatting& formatting, FormatMode mode) {
  switch (mode) {
    case FormatMode::Check:
      return formatting.check();
    case FormatMode::Diff:
      return formatting.diff();
    case FormatMode::Replace:
      return formatting.replace();
    default:
      return formatting.print();
  }
}

}  // namespace

FormatOutcome formatFile(const std::string& name, FormatMode mode, const ReadArguments& arguments,
                         const ReadingProgress& onProgress) {
  const std::string shown = printableLine(shownName(name));
  if (mode == FormatMode::Replace && !isRegular(name)) {
    return failed(EXIT_USAGE, shown, "not a regular file");
  }
  TextFile file;
  if (!file.open(name, arguments.options().limits.textBytes)) {
    if (isInterrupted()) return {EXIT_INTERRUPTED, {}, {}};
    return failed(EXIT_USAGE, shown, file.problem());
  }
  Formatting formatting(file, name, arguments, onProgress);
  FormatOutcome outcome = run(formatting, mode);
  if (isInterrupted()) return {EXIT_INTERRUPTED, {}, {}};
  return outcome;
}

}  // namespace vsa_tools
