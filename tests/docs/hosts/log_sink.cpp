// Checks that the sink receives the log while it is set.
#include <string>
#include <utility>
#include <vector>

#include <vsa/vsa.h>

int main() {
  zn::korvo_sdk::Scene scene;
  const zn::String text = "lamp a; a.x = 1; a.x = 2.5; a.y = 1 2;";
#include "block.inc"
  return messages.lines.size() == 2 && messages.lines[0].first == zn::LogLevel::Warning &&
                 messages.lines[1].first == zn::LogLevel::Error &&
                 std::string(messages.lines[1].second.buf()).starts_with("BAD TOKEN")
             ? 0
             : 1;
}
