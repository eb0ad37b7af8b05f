// Checks that the sink receives the log while it is set.
#include <utility>
#include <vector>

#include <vsa/vsa.h>

int main() {
  zn::korvo_sdk::Scene scene;
  const zn::String text = "lamp a; a.x = 1; a.x = 2.5; a.y = 1 2;";
#include "block.inc"
  return messages.lines.size() == 2 && messages.lines[0].first == zn::LogLevel::Warning &&
                 messages.lines[1].first == zn::LogLevel::Error &&
                 messages.lines[1].second.view() == "BAD TOKEN (1,37): expected ';', found '2'."
             ? 0
             : 1;
}
