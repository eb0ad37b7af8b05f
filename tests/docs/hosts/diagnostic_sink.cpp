// Prints the diagnostics of a text.
#include <cstdio>
#include <vector>

#include <vsa/vsa.h>

namespace {

// Discards the log of the text, because the page of the documentation shows only the diagnostics.
class SilentLog final : public zn::LogSink {
 public:
  void write(zn::LogLevel, const zn::String&) override {}
};

}  // namespace

int main() {
  using namespace zn::korvo_sdk;
  SilentLog log;
  const zn::ScopedLogSink silence(&log);
  Scene scene;
#include "block.inc"
}
