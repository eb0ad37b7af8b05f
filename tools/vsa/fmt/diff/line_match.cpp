// matchLines(): finds the lines that are the same in two texts.
#include <algorithm>
#include <optional>
#include <unordered_map>

#include "tools/vsa/fmt/diff/line_diff.h"

namespace vsa_tools {

namespace {

using Hashes = std::vector<std::uint64_t>;

/// A range of lines in each text. `aEnd` and `bEnd` are exclusive.
struct Area {
  std::size_t a, aEnd, b, bEnd;
};

class LineMatcher {
 public:
  LineMatcher(const Hashes& a, const Hashes& b) : a_(a), b_(b) {}

  std::vector<MatchedLines> run() {
    match({0, a_.size(), 0, b_.size()}, 0);
    return std::move(found_);
  }

 private:
  // The maximum depth of the recursion. At this depth, only equal lines at both ends of an area are
  // matched.
  static constexpr int MAX_DEPTH = 64;

  void match(Area area, int depth) {
    const std::size_t head = sameAtBegin(area);
    add({area.a, area.b, head});
    area.a += head;
    area.b += head;
    const std::size_t tail = sameAtEnd(area);
    area.aEnd -= tail;
    area.bEnd -= tail;
    if (depth < MAX_DEPTH && area.a < area.aEnd && area.b < area.bEnd) matchUnique(area, depth);
    add({area.aEnd, area.bEnd, tail});
  }

  std::size_t sameAtBegin(const Area& area) const {
    std::size_t count = 0;
    while (area.a + count < area.aEnd && area.b + count < area.bEnd &&
           a_[area.a + count] == b_[area.b + count]) {
      ++count;
    }
    return count;
  }

  std::size_t sameAtEnd(const Area& area) const {
    std::size_t count = 0;
    while (area.a + count < area.aEnd && area.b + count < area.bEnd &&
           a_[area.aEnd - 1 - count] == b_[area.bEnd - 1 - count]) {
      ++count;
    }
    return count;
  }

  void matchUnique(const Area& area, int depth) {
    const std::vector<MatchedLines> anchors = longestIncreasing(uniqueLines(area));
    if (anchors.empty()) return;
    std::size_t a = area.a, b = area.b;
    for (const MatchedLines& anchor : anchors) {
      // This line was already matched: it is one of the equal lines after an earlier anchor.
      if (anchor.a < a || anchor.b < b) continue;
      match({a, anchor.a, b, anchor.b}, depth + 1);
      const std::size_t count = sameAtBegin({anchor.a, area.aEnd, anchor.b, area.bEnd});
      add({anchor.a, anchor.b, count});
      a = anchor.a + count;
      b = anchor.b + count;
    }
    match({a, area.aEnd, b, area.bEnd}, depth + 1);
  }

  /// Returns the lines that occur exactly once in each text of the area, in the order of `b`.
  std::vector<MatchedLines> uniqueLines(const Area& area) const {
    struct Places {
      std::size_t inA = 0, inB = 0, a = 0;
    };
    std::unordered_map<std::uint64_t, Places> lines;
    for (std::size_t i = area.a; i < area.aEnd; ++i) {
      Places& places = lines[a_[i]];
      ++places.inA;
      places.a = i;
    }
    for (std::size_t i = area.b; i < area.bEnd; ++i) {
      const auto line = lines.find(b_[i]);
      if (line != lines.end()) ++line->second.inB;
    }
    std::vector<MatchedLines> unique;
    for (std::size_t i = area.b; i < area.bEnd; ++i) {
      const auto line = lines.find(b_[i]);
      const bool isUnique = line != lines.end() && line->second.inA == 1 && line->second.inB == 1;
      if (isUnique) unique.push_back({line->second.a, i, 1});
    }
    return unique;
  }

  /// Returns the longest subsequence of `lines` that is also in the order of `a` (patience
  /// sorting).
  static std::vector<MatchedLines> longestIncreasing(const std::vector<MatchedLines>& lines) {
    constexpr std::size_t NONE = static_cast<std::size_t>(-1);
    std::vector<std::size_t> tops;  // the index of the last line in each pile
    std::vector<std::size_t> before(lines.size(), NONE);
    for (std::size_t i = 0; i < lines.size(); ++i) {
      const auto pile =
          std::lower_bound(tops.begin(), tops.end(), lines[i].a,
                           [&](std::size_t top, std::size_t a) { return lines[top].a < a; });
      if (pile != tops.begin()) before[i] = *(pile - 1);
      if (pile == tops.end()) {
        tops.push_back(i);
      } else {
        *pile = i;
      }
    }
    std::vector<MatchedLines> longest;
    for (std::size_t i = tops.empty() ? NONE : tops.back(); i != NONE; i = before[i]) {
      longest.push_back(lines[i]);
    }
    std::reverse(longest.begin(), longest.end());
    return longest;
  }

  void add(const MatchedLines& lines) {
    if (lines.count == 0) return;
    if (!found_.empty()) {
      MatchedLines& last = found_.back();
      if (last.a + last.count == lines.a && last.b + last.count == lines.b) {
        last.count += lines.count;
        return;
      }
    }
    found_.push_back(lines);
  }

  const Hashes& a_;
  const Hashes& b_;
  std::vector<MatchedLines> found_;
};

}  // namespace

std::vector<MatchedLines> matchLines(const Hashes& a, const Hashes& b) {
  return LineMatcher(a, b).run();
}

}  // namespace vsa_tools
