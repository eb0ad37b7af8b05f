// OutputSink: a sink that writes to standard output.
#pragma once

#include <string>
#include <string_view>

#include <vsa/write.h>

namespace vsa_tools {

/// Escapes the parts of a text by printable(), except that line feeds remain. A UTF-8 character may
/// begin in one part and end in the next one.
class PrintableParts {
 public:
  /// Returns the escaped text of what add() has not returned yet and of `part`. A character that
  /// `part` does not complete is left for the next call.
  std::string add(std::string_view part);
  /// Returns the escaped bytes of a character that no part has completed.
  std::string end();

 private:
  std::string rest_;
};

/// Writes to standard output. On a terminal, the text is escaped by PrintableParts.
class OutputSink final : public vsa::Sink {
 public:
  OutputSink();
  bool write(std::string_view text) override;
  /// Writes the remaining text. Returns false if the output cannot be written.
  bool flush();
  std::string error() const override { return problem_; }

 private:
  bool put(std::string_view text);

  bool isTerminal_;
  PrintableParts parts_;
  std::string problem_;
};

}  // namespace vsa_tools
