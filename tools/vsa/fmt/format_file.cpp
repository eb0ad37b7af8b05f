#include "tools/vsa/fmt/format_file.h"

#include <sys/stat.h>

#include <atomic>
#include <cerrno>
#include <cstdint>
#include <cstring>
#include <future>
#include <mutex>
#include <optional>
#include <utility>

#include <vsa/file_replacement.h>
#include <vsa/syntax.h>
#include "tools/scene_text/printable_text.h"
#include "tools/vsa/common/interrupt.h"
#include "tools/vsa/common/output/exit_status.h"
#include "tools/vsa/common/writing/output_sink.h"
#include "tools/vsa/fmt/comparison/same_tokens.h"
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
        shown_(printable(shownName(name))),
        arguments_(arguments),
        onProgress_(onProgress),
        bytes_(TextFileSource(file).size().value_or(0)) {}

  FormatOutcome print() {
    const HeldSink::Check check = startCheck();
    OutputSink sink;
    HeldSink held(sink, check);
    const bool isWritten = format(held) && held.release() && sink.flush();
    if (const auto& refused = check.get()) return *refused;
    return isWritten ? FormatOutcome() : failed(EXIT_USAGE, shown_, sink.error());
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
    if (!formatInto(formatted.get())) return failed(EXIT_USAGE, shown_, std::strerror(errno));
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
    const std::string newFile = replacement.newFile();
    GrowingFile written;
    std::mutex comparing;
    std::optional<bool> isSame;  // whether both texts have the same tokens
    const auto compare = [&] {
      const std::lock_guard lock(comparing);
      if (!isSame) isSame = hasSameTokens(newFile, written);
    };
    const HeldSink::Check check = std::async(launchFor(file_), [&] {
      std::optional<FormatOutcome> refused = refusal(read());
      if (refused) {
        written.cancel();
      } else {
        compare();
      }
      return refused;
    });
    const CancelAtEnd ending(written);
    const Written result = writeChanges(replacement, written);
    if (result == Written::Whole) compare();
    if (const auto& refused = check.get()) return *refused;
    if (result == Written::Unchanged) return {};
    if (result == Written::Failed) {
      const std::string problem = replacement.error();
      return failed(EXIT_USAGE, shown_, problem.empty() ? "changed while it was read" : problem);
    }
    return replaceBy(replacement, isSame.value_or(false));
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
  Written writeChanges(vsa::FileReplacement& replacement, GrowingFile& written) const {
    TextFileSource whole(file_.descriptor()), beginning(file_.descriptor());
    ComparingSink old(whole);
    GrowingSink changes(replacement, old, beginning, written);
    const bool isFormatted = format(changes);
    const bool isChanged = !old.isSame();
    if (isFormatted && isChanged && changes.end()) return Written::Whole;
    written.cancel();
    return isFormatted && !isChanged ? Written::Unchanged : Written::Failed;
  }

  /// Replaces the file by the new file, unless that cannot be read as the same text or the file has
  /// changed meanwhile. `isSame` says whether both have the same tokens.
  FormatOutcome replaceBy(vsa::FileReplacement& replacement, bool isSame) const {
    if (!isSame || isTooLong(replacement.newFile())) {
      return failed(EXIT_NOT_READ, shown_,
                    "left alone, because its formatted text reads differently");
    }
    if (!file_.isUnchanged()) {
      return failed(EXIT_USAGE, shown_, "left alone, because it changed while it was read");
    }
    if (!replacement.replace()) return failed(EXIT_USAGE, shown_, replacement.error());
    return {};
  }

  /// Compares the tokens of the new file, which may still grow, with those of the file.
  bool hasSameTokens(const std::string& newFile, const GrowingFile& written) const {
    TextFile formatted;
    if (!openGrowing(formatted, newFile, written)) return false;
    TextFileSource left(file_), right(formatted);
    GrowingFileSource growing(written, right, formatted.begin());
    vsa::SyntaxReader expected(left), found(growing);
    return haveSameTokens(expected, found) && left.error().empty() && right.error().empty();
  }

  /// Opens the new file when it is so long that it may have a byte order mark.
  static bool openGrowing(TextFile& file, const std::string& name, const GrowingFile& written) {
    written.waitForMore(BYTE_ORDER_MARK.size() - 1);
    return file.open(name);
  }

  /// Whether the new file is longer than a text may be.
  bool isTooLong(const std::string& newFile) const {
    TextFile formatted;
    if (!formatted.open(newFile)) return true;
    return TextFileSource(formatted).size().value_or(0) > arguments_.options().limits.textBytes;
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
  bool format(vsa::Sink& sink) const {
    TextFileSource source = sourceOf(file_);
    vsa::SyntaxReader reader(source);
    if (file_.hasMark() && !sink.write(BYTE_ORDER_MARK)) return false;
    return formatText(reader, sink) && source.error().empty();
  }

  bool formatInto(std::FILE* to) const {
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
  const std::string shown = printable(shownName(name));
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
