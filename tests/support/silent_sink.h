// SilentSink: a log sink that discards every message.
#pragma once

#include <vsa/foundation/log.h>

namespace vsa_tests {

class SilentSink final : public zn::LogSink {
 public:
  void write(zn::LogLevel, const zn::String&) override {}
};

}  // namespace vsa_tests
