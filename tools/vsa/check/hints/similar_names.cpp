#include "tools/vsa/check/hints/similar_names.h"

#include <algorithm>
#include <vector>

namespace vsa_tools {

namespace {

// The maximum length of compared names. Nobody types longer names by hand.
constexpr std::size_t MAX_NAME = 200;

char lowerLetter(char c) {
  return c >= 'A' && c <= 'Z' ? static_cast<char>(c + 32) : c;
}

std::string digitsOf(std::string_view name) {
  std::string digits;
  for (const char c : name) {
    if (c >= '0' && c <= '9') digits += c;
  }
  return digits;
}

}  // namespace

std::string loweredName(std::string_view name) {
  std::string result(name);
  std::transform(result.begin(), result.end(), result.begin(), lowerLetter);
  return result;
}

// Computes the distances of the beginnings of both names row by row.
std::size_t editDistance(std::string_view a, std::string_view b, std::size_t limit) {
  const std::size_t difference = a.size() > b.size() ? a.size() - b.size() : b.size() - a.size();
  if (difference > limit || a.size() > MAX_NAME || b.size() > MAX_NAME) return limit + 1;
  std::vector<std::size_t> beforeLast(b.size() + 1), last(b.size() + 1), row(b.size() + 1);
  for (std::size_t j = 0; j <= b.size(); ++j) last[j] = j;
  for (std::size_t i = 1; i <= a.size(); ++i) {
    row[0] = i;
    for (std::size_t j = 1; j <= b.size(); ++j) {
      const bool isSame = lowerLetter(a[i - 1]) == lowerLetter(b[j - 1]);
      row[j] = std::min({last[j] + 1, row[j - 1] + 1, last[j - 1] + (isSame ? 0 : 1)});
      const bool isSwapped = i > 1 && j > 1 && lowerLetter(a[i - 1]) == lowerLetter(b[j - 2]) &&
                             lowerLetter(a[i - 2]) == lowerLetter(b[j - 1]);
      if (isSwapped) row[j] = std::min(row[j], beforeLast[j - 2] + 1);
    }
    beforeLast.swap(last);
    last.swap(row);
  }
  return std::min(last[b.size()], limit + 1);
}

NearestName::NearestName(std::string_view written)
    : written_(written), distance_(std::clamp<std::size_t>(written.size() / 3, 1, 3) + 1) {
}

void NearestName::consider(std::string_view name) {
  if (name == written_ || name.empty() || distance_ == 0) return;
  const std::size_t distance = editDistance(written_, name, distance_);
  if (distance == distance_ && name != nearest_) isUnique_ = false;
  if (distance >= distance_) return;
  distance_ = distance;
  nearest_ = name;
  isUnique_ = true;
}

std::optional<Suggestion> NearestName::found() const {
  // Any two names of one letter are similar. Therefore a name of one letter gets no suggestion,
  // unless only the case differs. Many names of two or three letters are similar, too. A suggestion
  // for such a name is sure only if nothing but the case differs.
  constexpr std::size_t MIN_SURE = 4;
  const bool isOfOneLetter = written_.size() == 1 && distance_ > 0;
  if (nearest_.empty() || isOfOneLetter) return std::nullopt;
  const bool isSure = isUnique_ && digitsOf(written_) == digitsOf(nearest_) &&
                      (distance_ == 0 || (distance_ == 1 && written_.size() >= MIN_SURE));
  return Suggestion{nearest_, isSure};
}

}  // namespace vsa_tools
