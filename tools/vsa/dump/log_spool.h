// A log sink for the JSON dump. The dump starts with the result of the read, which is known only
// after the whole log, and the log of a short text can be very long because messages quote names in
// full. The spool keeps the log as JSON text: up to a limit in memory, beyond it in a temporary
// file.
#pragma once

#include <cstdio>
#include <memory>
#include <string>

#include <vsa/foundation/log.h>
#include "tools/scene_text/text_output.h"

namespace vsa_tools {

class LogSpool : public zn::LogSink {
 public:
  /// Holds at most `memoryLimit` bytes and one message in memory.
  explicit LogSpool(size_t memoryLimit = size_t{8} * 1024 * 1024) : memoryLimit_(memoryLimit) {}

  /// Appends a message. If the temporary file cannot be written, drops it and sets problem(): an
  /// exception would end the read that logs the message.
  void write(zn::LogLevel level, const zn::String& text) override;

  /// Writes the entries to `out`, separated by commas. Call it once, after the last write().
  void moveTo(TextOutput& out);

  /// The system's error message if entries were lost; empty if not.
  const std::string& problem() const { return problem_; }

 private:
  struct Close {
    void operator()(std::FILE* file) const { std::fclose(file); }
  };

  /// Moves the buffer to the temporary file, which the first call creates.
  void spill();
  void setProblem();

  size_t memoryLimit_;
  bool first_ = true;
  std::string buffer_;
  std::unique_ptr<std::FILE, Close> file_;
  std::string problem_;
};

}  // namespace vsa_tools
