// OutputSink: a sink that writes to standard output.
#pragma once

#include <string>
#include <string_view>

#include <vsa/write.h>

namespace vsa_tools {

/// Writes to standard output. On a terminal, control characters are escaped.
class OutputSink final : public vsa::Sink {
 public:
  OutputSink();
  bool write(std::string_view text) override;
  /// Writes the remaining text. Returns false if the output cannot be written.
  bool flush();
  std::string error() const override { return problem_; }

 private:
  bool fail();

  bool isTerminal_;
  std::string problem_;
};

/// Returns `text` with all terminal control characters escaped except line feeds.
std::string safeLines(std::string_view text);

}  // namespace vsa_tools
