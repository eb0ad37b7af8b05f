// printDiff() reads both files twice. The first time, it hashes all lines. The second time, it
// reads only the lines that it prints.
#include "tools/vsa/fmt/diff/line_diff.h"

#include <unistd.h>

#include <algorithm>
#include <array>

namespace vsa_tools {

namespace {

constexpr std::size_t CONTEXT_LINES = 3;

/// The hashes and the ends of the lines of a file.
class Lines {
 public:
  explicit Lines(int file) : file_(file) {
    std::array<char, 65536> block;
    std::uint64_t offset = 0;
    std::uint64_t hash = HASH_START;
    for (std::size_t count; (count = readAt(offset, block.data(), block.size())) > 0;) {
      for (std::size_t i = 0; i < count; ++i) {
        hash = (hash ^ static_cast<unsigned char>(block[i])) * HASH_FACTOR;
        if (block[i] != '\n') continue;
        endLine(hash, offset + i + 1);
        hash = HASH_START;
      }
      offset += count;
    }
    endsWithFeed_ = ends_.empty() ? offset == 0 : ends_.back() == offset;
    if (!endsWithFeed_) endLine(hash, offset);
  }

  const std::vector<std::uint64_t>& hashes() const { return hashes_; }
  std::size_t count() const { return hashes_.size(); }
  bool lacksFeed(std::size_t line) const { return !endsWithFeed_ && line + 1 == count(); }

  /// Returns the text of a line without its line feed.
  std::string text(std::size_t line) const {
    const std::uint64_t begin = line == 0 ? 0 : ends_[line - 1];
    std::string text(static_cast<std::size_t>(ends_[line] - begin), '\0');
    text.resize(readAt(begin, text.data(), text.size()));
    if (text.ends_with('\n')) text.pop_back();
    return text;
  }

 private:
  // The constants of the FNV-1a hash.
  static constexpr std::uint64_t HASH_START = 0xCBF29CE484222325U;
  static constexpr std::uint64_t HASH_FACTOR = 0x100000001B3U;

  void endLine(std::uint64_t hash, std::uint64_t end) {
    hashes_.push_back(hash);
    ends_.push_back(end);
  }

  std::size_t readAt(std::uint64_t offset, char* to, std::size_t size) const {
    std::size_t count = 0;
    while (count < size) {
      const ssize_t more =
          ::pread(file_, to + count, size - count, static_cast<off_t>(offset + count));
      if (more <= 0) break;
      count += static_cast<std::size_t>(more);
    }
    return count;
  }

  int file_;
  std::vector<std::uint64_t> hashes_;
  std::vector<std::uint64_t> ends_;
  bool endsWithFeed_ = true;
};

/// A change: the lines of the first file from `a` to `aEnd` are replaced by the lines of the second
/// file from `b` to `bEnd`. Both ends are exclusive.
struct Change {
  std::size_t a, aEnd, b, bEnd;
};

std::vector<Change> changesOf(const Lines& a, const Lines& b) {
  std::vector<Change> changes;
  Change next{0, 0, 0, 0};
  std::vector<MatchedLines> matches = matchLines(a.hashes(), b.hashes());
  matches.push_back({a.count(), b.count(), 0});
  for (const MatchedLines& match : matches) {
    next.aEnd = match.a;
    next.bEnd = match.b;
    if (next.a < next.aEnd || next.b < next.bEnd) changes.push_back(next);
    next.a = match.a + match.count;
    next.b = match.b + match.count;
  }
  return changes;
}

/// Returns a range of lines in the unified format. "4,7" means seven lines from line 4 on, "4"
/// means only line 4, and "3,0" means an empty range directly after line 3.
std::string rangeText(std::size_t begin, std::size_t end) {
  const std::size_t count = end - begin;
  const std::string first = std::to_string(count == 0 ? begin : begin + 1);
  return count == 1 ? first : first + ',' + std::to_string(count);
}

class DiffPrinter {
 public:
  using Put = std::function<void(std::string_view)>;
  DiffPrinter(const Lines& a, const Lines& b, const Put& put) : a_(a), b_(b), put_(put) {}

  /// Prints changes in hunks. Changes are in one hunk if their lines of context overlap or touch.
  void print(const std::vector<Change>& changes) {
    for (std::size_t i = 0; i < changes.size();) {
      std::size_t end = i + 1;
      while (end < changes.size() && changes[end].a - changes[end - 1].aEnd <= 2 * CONTEXT_LINES) {
        ++end;
      }
      printHunk(changes.data() + i, changes.data() + end);
      i = end;
    }
  }

 private:
  void printHunk(const Change* first, const Change* end) {
    const std::size_t before = std::min(first->a, CONTEXT_LINES);
    const std::size_t after = std::min(a_.count() - end[-1].aEnd, CONTEXT_LINES);
    put_("@@ -" + rangeText(first->a - before, end[-1].aEnd + after) + " +" +
         rangeText(first->b - before, end[-1].bEnd + after) + " @@");
    std::size_t at = first->a - before;
    for (const Change* change = first; change != end; ++change) {
      printLines(a_, at, change->a, ' ');
      printLines(a_, change->a, change->aEnd, '-');
      printLines(b_, change->b, change->bEnd, '+');
      at = change->aEnd;
    }
    printLines(a_, at, at + after, ' ');
  }

  void printLines(const Lines& lines, std::size_t at, std::size_t end, char mark) {
    for (; at < end; ++at) {
      put_(mark + lines.text(at));
      if (lines.lacksFeed(at)) put_("\\ No newline at end of file");
    }
  }

  const Lines& a_;
  const Lines& b_;
  const Put& put_;
};

}  // namespace

void printDiff(int a, int b, const std::string& nameA, const std::string& nameB,
               const std::function<void(std::string_view)>& put) {
  const Lines before(a), after(b);
  const std::vector<Change> changes = changesOf(before, after);
  if (changes.empty()) return;
  put("--- " + nameA);
  put("+++ " + nameB);
  DiffPrinter(before, after, put).print(changes);
}

}  // namespace vsa_tools
