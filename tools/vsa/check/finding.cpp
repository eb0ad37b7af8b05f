#include "tools/vsa/check/finding.h"

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

}  // namespace vsa_tools
