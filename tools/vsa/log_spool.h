// A log on its way into a JSON dump. The dump begins with the result, which is known when the read
// has ended, and the log stands behind it; and a small text may log very much, for each message
// quotes names whole. So the log waits as JSON text: a short one in memory, a longer one in a
// temporary file that has no name.
#pragma once

#include <cstdio>
#include <memory>
#include <string>

#include <vsa/foundation/log.h>
#include "tools/scene_text/text_output.h"

namespace vsa_tools {

class LogSpool : public zn::LogSink {
 public:
  /// At most `inMemory` bytes, and the message that exceeds them, are held in memory.
  explicit LogSpool(size_t inMemory = size_t{8} * 1024 * 1024) : inMemory_(inMemory) {}

  /// Takes a message. One that the temporary file has no room for is lost, and problem() then says
  /// so: a sink that threw would change what it listens to.
  void write(zn::LogLevel level, const zn::String& text) override;

  /// Writes the entries, with commas between them, to `out`; once, when all were taken.
  void moveTo(TextOutput& out);

  /// Why not all entries could be kept or given back, in the system's words; empty when they could.
  const std::string& problem() const { return problem_; }

 private:
  struct Close {
    void operator()(std::FILE* file) const { std::fclose(file); }
  };

  /// Moves what is in memory to the file, which is made for the first of it.
  void spill();
  void failed();

  size_t inMemory_;
  bool first_ = true;
  std::string held_;
  std::unique_ptr<std::FILE, Close> file_;
  std::string problem_;
};

}  // namespace vsa_tools
