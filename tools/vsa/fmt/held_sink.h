// HeldSink: keeps a formatted text until the file is known to be correct.
#pragma once

#include <future>
#include <optional>
#include <string_view>

#include <vsa/write.h>
#include "tools/vsa/fmt/format_file.h"
#include "tools/vsa/fmt/text_file.h"

namespace vsa_tools {

/// Writes a text to another sink if a check succeeds. The check may still be running on another
/// thread. Until it ends, the text is kept in a temporary file, so that writing does not have to
/// wait. If that file cannot be written, writing waits for the check. A deferred check runs during
/// the first call.
class HeldSink final : public vsa::Sink {
 public:
  /// The result of the check. It is empty if the check succeeds. If the check fails, it is the
  /// outcome that the formatting must return.
  using Check = std::shared_future<std::optional<FormatOutcome>>;

  /// `out` must outlive the object.
  HeldSink(vsa::Sink& out, Check check) : out_(out), check_(std::move(check)) {}

  /// Returns false if the check has failed, if `out` cannot be written, or if the kept text cannot
  /// be read again, also because of Ctrl-C.
  bool write(std::string_view text) override;
  /// Waits for the result of the check and writes the kept text. Returns false in the cases of
  /// write().
  bool release();

 private:
  bool isCheckRunning() const;
  bool hold(std::string_view& text);

  vsa::Sink& out_;
  Check check_;
  FilePointer held_;  // the temporary file with the kept text
  bool isReleased_ = false;
};

}  // namespace vsa_tools
