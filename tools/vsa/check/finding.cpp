#include "tools/vsa/check/finding.h"

#include "tools/vsa/common/output/quoted_text.h"

namespace vsa_tools {

const char* name(Level level) {
  switch (level) {
    case Level::Note:
      return "note";
    case Level::Warning:
      return "warning";
    case Level::Error:
      break;
  }
  return "error";
}

std::string withoutLongQuotes(const std::string& text) {
  constexpr std::size_t MAX_BYTES = 400;
  return text.size() > MAX_BYTES ? shortened(text) : text;
}

}  // namespace vsa_tools
