#include "tools/vsa/check/output/format.h"

#include "tools/vsa/check/output/json_format.h"
#include "tools/vsa/check/output/junit_format.h"
#include "tools/vsa/check/output/sarif_format.h"
#include "tools/vsa/check/output/text_formats.h"

namespace vsa_tools {

std::unique_ptr<Format> makeFormat(FormatName name, bool isColoured, bool isStrict) {
  switch (name) {
    case FormatName::Full:
      break;
    case FormatName::Line:
      return std::make_unique<LineFormat>();
    case FormatName::Log:
      return std::make_unique<LogFormat>();
    case FormatName::Json:
      return std::make_unique<JsonFormat>();
    case FormatName::Sarif:
      return std::make_unique<SarifFormat>();
    case FormatName::Github:
      return std::make_unique<GithubFormat>();
    case FormatName::Junit:
      return std::make_unique<JunitFormat>(isStrict);
  }
  return std::make_unique<FullFormat>(isColoured);
}

}  // namespace vsa_tools
