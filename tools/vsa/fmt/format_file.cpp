#include "tools/vsa/fmt/format_file.h"

#include <sys/stat.h>

#include <cerrno>
#include <cstring>
#include <future>
#include <utility>

#include <vsa/file_replacement.h>
#include <vsa/syntax.h>
#include "tools/scene_text/printable_text.h"
#include "tools/vsa/common/interrupt.h"
#include "tools/vsa/common/output/exit_status.h"
#include "tools/vsa/common/writing/output_sink.h"
#include "tools/vsa/fmt/comparison/reading_check.h"
#include "tools/vsa/fmt/comparison/same_tokens.h"
#include "tools/vsa/fmt/diff/line_diff.h"
#include "tools/vsa/fmt/layout/text_layout.h"
#include "tools/vsa/fmt/sinks.h"
#include "tools/vsa/fmt/text_file.h"
#include "tools/vsa/input/input_file.h"

namespace vsa_tools {

namespace {

constexpr std::string_view BYTE_ORDER_MARK = "\xEF\xBB\xBF";

FormatOutcome failed(int status, const std::string& shown, const std::string& problem) {
  return {status, false, {"vsa: " + shown + ": " + printable(problem)}, {}};
}

/// Writes the formatted text, with the byte order mark of the file.
bool format(const TextFile& file, vsa::Sink& sink) {
  TextFileSource source(file);
  vsa::SyntaxReader reader(source);
  if (file.hasMark() && !sink.write(BYTE_ORDER_MARK)) return false;
  return formatText(reader, sink) && source.error().empty();
}

bool isSameText(const TextFile& a, const TextFile& b) {
  TextFileSource left(a), right(b);
  vsa::SyntaxReader x(left), y(right);
  return haveSameTokens(x, y) && left.error().empty() && right.error().empty();
}

/// Whether the files are equal byte for byte.
bool areEqual(const TextFile& a, const TextFile& b) {
  TextFileSource left(a.descriptor()), right(b.descriptor());
  ComparingSink sink(left);
  std::string block(64 << 10, '\0');
  while (const std::size_t count = right.read(block)) {
    sink.write(std::string_view(block).substr(0, count));
  }
  return sink.isSame() && left.error().empty() && right.error().empty();
}

/// The formatting of one open file.
class Formatting {
 public:
  Formatting(const TextFile& file, const std::string& name, const ReadArguments& arguments)
      : file_(file), name_(name), shown_(printable(shownName(name))), arguments_(arguments) {}

  FormatOutcome print() {
    if (!startReading(file_).get().isComplete) return notRead();
    OutputSink sink;
    if (!format(file_, sink) || !sink.flush()) return failed(EXIT_USAGE, shown_, sink.error());
    return {};
  }

  FormatOutcome check() {
    std::future<ReadingCheck> reading = startReading(file_);
    TextFileSource whole(file_.descriptor());
    ComparingSink sink(whole);
    format(file_, sink);
    if (!reading.get().isComplete) return notRead();
    if (sink.isSame()) return {};
    return {EXIT_NOT_READ, true, {"vsa: " + shown_ + ": not formatted"}, {}};
  }

  FormatOutcome diff() {
    std::future<ReadingCheck> reading = startReading(file_);
    const FilePointer formatted(std::tmpfile());
    if (formatted == nullptr) return failed(EXIT_USAGE, shown_, std::strerror(errno));
    FileSink sink(formatted.get());
    const bool isWritten = format(file_, sink) && std::fflush(formatted.get()) == 0;
    if (!isWritten) return failed(EXIT_USAGE, shown_, std::strerror(errno));
    if (!reading.get().isComplete) return notRead();
    FormatOutcome outcome;
    printDiff(file_.descriptor(), ::fileno(formatted.get()), shown_, shown_ + " (formatted)",
              [&](std::string_view line) { outcome.output.append(line) += '\n'; });
    outcome.isChanged = !outcome.output.empty();
    if (outcome.isChanged) outcome.status = EXIT_NOT_READ;
    return outcome;
  }

  FormatOutcome replace() {
    std::future<ReadingCheck> reading = startReading(file_);
    vsa::FileReplacement replacement;
    const bool isWritten = replacement.open(name_) && format(file_, replacement);
    const ReadingCheck before = reading.get();
    if (!before.isComplete) return notRead();
    if (!isWritten) return failed(EXIT_USAGE, shown_, replacement.error());
    TextFile formatted;
    if (!formatted.open(replacement.newFile())) {
      return failed(EXIT_USAGE, shown_, formatted.problem());
    }
    if (areEqual(file_, formatted)) return {};
    if (!readsTheSame(formatted, before)) {
      return failed(EXIT_NOT_READ, shown_,
                    "left alone, because its formatted text reads differently");
    }
    if (!replacement.replace()) return failed(EXIT_USAGE, shown_, replacement.error());
    return {EXIT_READ, true, {}, {}};
  }

 private:
  /// Reads a text, on another thread if it is large.
  std::future<ReadingCheck> startReading(const TextFile& file) const {
    constexpr off_t LARGE_BYTES = 4 << 20;
    struct stat status {};
    const bool isLarge = ::fstat(file.descriptor(), &status) == 0 && status.st_size >= LARGE_BYTES;
    return std::async(isLarge ? std::launch::async : std::launch::deferred, [this, &file] {
      TextFileSource source(file);
      return checkReading(source, arguments_);
    });
  }

  bool readsTheSame(const TextFile& formatted, const ReadingCheck& before) const {
    std::future<ReadingCheck> reading = startReading(formatted);
    const bool sameTokens = isSameText(file_, formatted);
    const ReadingCheck after = reading.get();
    return sameTokens && after.isComplete && after.digest == before.digest;
  }

  FormatOutcome notRead() const {
    FormatOutcome outcome;
    outcome.status = EXIT_NOT_READ;
    TextFileSource source(file_);
    outcome.messages = endingDiagnostics(shownName(name_), source, arguments_);
    outcome.messages.push_back("vsa: " + shown_ +
                               ": not formatted, because it was not read completely");
    return outcome;
  }

  const TextFile& file_;
  const std::string& name_;
  const std::string shown_;  // in messages
  const ReadArguments& arguments_;
};

bool isRegular(const TextFile& file) {
  struct stat status {};
  return ::fstat(file.descriptor(), &status) == 0 && S_ISREG(status.st_mode);
}

FormatOutcome run(Formatting formatting, FormatMode mode) {
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

FormatOutcome formatFile(const std::string& name, FormatMode mode, const ReadArguments& arguments) {
  const std::string shown = printable(shownName(name));
  TextFile file;
  if (!file.open(name)) return failed(EXIT_USAGE, shown, file.problem());
  if (!isRegular(file)) return failed(EXIT_USAGE, shown, "not a regular file");
  FormatOutcome outcome = run(Formatting(file, name, arguments), mode);
  if (isInterrupted()) return {EXIT_INTERRUPTED, outcome.isChanged, {}, {}};
  return outcome;
}

}  // namespace vsa_tools
