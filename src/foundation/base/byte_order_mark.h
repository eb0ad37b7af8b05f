// The byte order mark. Internal.
#pragma once

#include <string_view>

namespace zn::detail {

/// U+FEFF in UTF-8. Some programs write it at the beginning of a file.
inline constexpr std::string_view BYTE_ORDER_MARK = "\xEF\xBB\xBF";

}  // namespace zn::detail
