// Prints the diagnostics of a text.
#include <cstdio>
#include <vector>

#include <vsa/vsa.h>

namespace {

// The excerpt's text is logged, too; the page shows what the excerpt prints.
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
