#include "tools/vsa/fmt/comparison/file_comparison.h"

#include <vsa/syntax.h>
#include "tools/vsa/fmt/comparison/same_tokens.h"

namespace vsa_tools {

void FileComparison::compare() {
  const std::lock_guard lock(mutex_);
  if (!isSame_ && !written_.isCancelled()) isSame_ = hasSameTokens();
}

bool FileComparison::isSame() const {
  const std::lock_guard lock(mutex_);
  return isSame_.value_or(false);
}

bool FileComparison::hasSameTokens() const {
  // When the new file is opened, it must be so long that it may have a byte order mark.
  written_.waitForMore(BYTE_ORDER_MARK.size() - 1);
  TextFile formatted;
  if (!formatted.open(newFile_)) return false;
  TextFileSource left(file_), right(formatted);
  GrowingFileSource growing(written_, right, formatted.begin());
  vsa::SyntaxReader expected(left), found(growing);
  return haveSameTokens(expected, found) && left.error().empty() && right.error().empty();
}

}  // namespace vsa_tools
