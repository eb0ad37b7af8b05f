#include "tools/vsa/fmt/sinks.h"

#include <algorithm>

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
  if (written_.isCancelled()) return false;
  comparison_.write(text);
  if (!comparison_.hasDifference()) {
    same_ += text.size();
    return true;
  }
  if (!copyBeginning() || !file_.write(text)) return false;
  written_.add(text.size());
  return true;
}

bool GrowingSink::end() {
  const bool isCopied = copyBeginning();
  written_.end();
  return isCopied;
}

// Copies the bytes that are the same as in the old file.
bool GrowingSink::copyBeginning() {
  std::string block(same_ == 0 ? 0 : 256 << 10, '\0');
  while (same_ > 0) {
    const auto count = static_cast<std::size_t>(std::min<std::uint64_t>(block.size(), same_));
    const std::size_t got = old_.read({block.data(), count});
    if (got == 0 || !file_.write({block.data(), got})) return false;
    written_.add(got);
    same_ -= got;
  }
  return true;
}

}  // namespace vsa_tools
