// StringSink: a sink that stores the written text.
#pragma once

#include <string>
#include <string_view>

#include <vsa/write.h>

namespace vsa_tools {

struct StringSink final : vsa::Sink {
  bool write(std::string_view more) override {
    text += more;
    return true;
  }

  std::string text;
};

}  // namespace vsa_tools
