// Holds back a formatted text until the check of the file has succeeded.
#pragma once

#include <future>
#include <optional>
#include <string_view>

#include <vsa/write.h>
#include "tools/vsa/fmt/format_file.h"
#include "tools/vsa/fmt/text_file.h"

namespace vsa_tools {

/// Writes a text to another sink after a check has succeeded. A check that is still running on
/// another thread does not block the writing: until it ends, the text is kept in a temporary file.
class HeldSink final : public vsa::Sink {
 public:
  /// The result of the check: nothing if it succeeds, otherwise the outcome of the formatting.
  using Check = std::shared_future<std::optional<FormatOutcome>>;

  /// `out` must outlive the object.
  HeldSink(vsa::Sink& out, Check check) : out_(out), check_(std::move(check)) {}

  /// Returns false if the check has failed or `out` cannot be written.
  bool write(std::string_view text) override;
  /// Waits for the check and writes the text that is still held back. Returns what write() returns.
  bool release();

 private:
  bool isCheckRunning() const;
  bool hold(std::string_view& text);

  vsa::Sink& out_;
  Check check_;
  FilePointer held_;  // the temporary file
  bool isReleased_ = false;
};

}  // namespace vsa_tools
