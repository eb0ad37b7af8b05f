#include "tools/vsa/fmt/sinks.h"

#include <algorithm>
#include <utility>

namespace vsa_tools {

bool ComparingSink::write(std::string_view text) {
  block_.resize(64 << 10);
  while (isSame_ && !text.empty()) {
    const std::size_t count = source_.read({block_.data(), std::min(block_.size(), text.size())});
    isSame_ = count > 0 && text.starts_with(std::string_view(block_.data(), count));
    text.remove_prefix(std::min(count, text.size()));
  }
  return true;
}

bool ComparingSink::isSame() {
  char more;
  isSame_ = isSame_ && source_.read({&more, 1}) == 0;
  return isSame_;
}

bool GrowingSink::write(std::string_view text) {
  if (written_.isCancelled() || !file_.write(text)) return false;
  held_ += text.size();
  comparison_.write(text);
  if (comparison_.hasDifference()) written_.add(std::exchange(held_, 0));
  return true;
}

void GrowingSink::end() {
  written_.add(held_);
  written_.end();
}

}  // namespace vsa_tools
