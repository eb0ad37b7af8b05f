// Prefetches a text. Internal.
#pragma once

#include <vsa/foundation/string.h>
#include "foundation/base/prefetch.h"

namespace zn::detail {

/// Has access to the memory of a String.
class StringPrefetch {
 public:
  /// A hint that `text`, which is short, will be read soon. Its header and its characters are in
  /// one or two cache lines. Without it the read of links/100k takes 15 % longer.
  static void prefetch(const String& text) noexcept {
    zn::detail::prefetch(text.object());
    zn::detail::prefetch(text.object(), sizeof(StringBuffer) + 8);
  }
};

}  // namespace zn::detail
