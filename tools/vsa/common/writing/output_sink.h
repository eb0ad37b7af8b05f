// OutputSink: a sink that writes to standard output.
#pragma once

#include <string>
#include <string_view>

#include <vsa/write.h>

namespace vsa_tools {

/// Writes to standard output. On a terminal, the text is escaped by safeLines().
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

/// Returns `text` escaped by printable(), except that line feeds remain.
std::string safeLines(std::string_view text);

}  // namespace vsa_tools
