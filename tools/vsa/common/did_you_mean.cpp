#include "tools/vsa/common/did_you_mean.h"

#include <algorithm>

namespace vsa_tools {

namespace {

// The maximum number of bytes that are compared, at the beginning of each name.
constexpr std::size_t MAX_COMPARED = 64;

}  // namespace

std::size_t editDistance(std::string_view a, std::string_view b) {
  a = a.substr(0, MAX_COMPARED);
  b = b.substr(0, MAX_COMPARED);
  // Three rows of the table of distances between the beginnings of both names.
  std::vector<std::size_t> beforeLast(b.size() + 1), last(b.size() + 1), row(b.size() + 1);
  for (std::size_t j = 0; j <= b.size(); ++j) row[j] = j;
  for (std::size_t i = 1; i <= a.size(); ++i) {
    beforeLast.swap(last);
    last.swap(row);
    row[0] = i;
    for (std::size_t j = 1; j <= b.size(); ++j) {
      const std::size_t replaced = last[j - 1] + (a[i - 1] == b[j - 1] ? 0 : 1);
      row[j] = std::min({last[j] + 1, row[j - 1] + 1, replaced});
      const bool isSwap = i > 1 && j > 1 && a[i - 1] == b[j - 2] && a[i - 2] == b[j - 1];
      if (isSwap) row[j] = std::min(row[j], beforeLast[j - 2] + 1);
    }
  }
  return row[b.size()];
}

std::string closestName(std::string_view name, const std::vector<std::string>& known) {
  const std::string* closest = nullptr;
  std::size_t least = 1 + std::max<std::size_t>(1, name.size() / 3);
  for (const std::string& candidate : known) {
    const std::size_t distance = editDistance(name, candidate);
    if (distance < least) {
      least = distance;
      closest = &candidate;
    }
  }
  return closest == nullptr ? std::string() : *closest;
}

std::string didYouMean(std::string_view name, const std::vector<std::string>& known) {
  const std::string closest = closestName(name, known);
  return closest.empty() ? closest : ": did you mean " + closest + '?';
}

}  // namespace vsa_tools
