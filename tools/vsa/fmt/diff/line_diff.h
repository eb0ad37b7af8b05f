// The difference of two texts by lines, in the unified format.
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace vsa_tools {

/// Lines of `a` and `b` that are the same: `count` lines from the indices on.
struct MatchedLines {
  std::size_t a = 0;
  std::size_t b = 0;
  std::size_t count = 0;

  friend bool operator==(const MatchedLines&, const MatchedLines&) = default;
};

/// Matches two sequences of lines, given as hashes, and returns the matches in order: first the
/// equal lines at both ends, then the lines that both have exactly once (Cohen, "patience diff"),
/// and the same again between these. Takes n log n steps. The number of changes is not always
/// minimal.
std::vector<MatchedLines> matchLines(const std::vector<std::uint64_t>& a,
                                     const std::vector<std::uint64_t>& b);

/// Prints the difference of the files that are open as `a` and `b`, with three lines around each
/// change; nothing if they are the same. Needs 16 bytes of memory for each line. `put` receives one
/// line after another, without its line feed.
void printDiff(int a, int b, const std::string& nameA, const std::string& nameB,
               const std::function<void(std::string_view)>& put);

}  // namespace vsa_tools
