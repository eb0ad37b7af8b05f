#include "tools/vsa/input/loss.h"

#include "tools/vsa/input/encoding.h"

namespace vsa_tools {

std::optional<Loss> byteLoss(const InspectedSource& source) {
  if (const char* compressor = compressorOf(source.head())) {
    return Loss{std::string("this file is compressed with ") + compressor + "; a text is not",
                std::nullopt};
  }
  if (const char* encoding = foreignEncoding(source.head())) {
    return Loss{std::string("this looks like ") + encoding + "; a VSA text is UTF-8", std::nullopt};
  }
  if (!source.firstNul()) return std::nullopt;
  return Loss{"a NUL byte, at which a string, comment or name ends", source.firstNul()};
}

}  // namespace vsa_tools
