// Helpers for tests that read through the public API: a source in memory, and the result of a
// reading as text.
#pragma once

#include <algorithm>
#include <cstring>
#include <functional>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include <vsa/read.h>
#include "tests/support/declared_lamp.h"
#include "tools/scene_text/read_outcome.h"
#include "tools/scene_text/scene_dump.h"

namespace vsa_tests {

/// Delivers a text, at most `bytesPerRead` bytes at a time. 0 means no limit.
class TestSource final : public vsa::Source {
 public:
  explicit TestSource(std::string text, std::size_t bytesPerRead = 0)
      : text_(std::move(text)), bytesPerRead_(bytesPerRead) {}

  std::size_t read(std::span<char> to) override {
    if (onRead) onRead(at_);
    const std::size_t limit = bytesPerRead_ == 0 ? to.size() : std::min(bytesPerRead_, to.size());
    const std::size_t count = std::min(limit, text_.size() - at_);
    std::memcpy(to.data(), text_.data() + at_, count);
    at_ += count;
    return count;
  }
  std::optional<std::uint64_t> size() const override { return announced; }
  std::string error() const override { return failure; }

  /// A function that is called before each read with the number of bytes delivered so far.
  std::function<void(std::size_t)> onRead;
  std::optional<std::uint64_t> announced;
  std::string failure;

 private:
  std::string text_;
  std::size_t bytesPerRead_;
  std::size_t at_ = 0;
};

/// Returns the result of a reading as a text in the form of the expected result of a case: whether
/// links were resolved, the diagnostics as a log, and the scene. Diagnostics that only the public
/// API reports are omitted.
inline std::string outcomeText(const vsa::ReadResult& result,
                               const std::vector<vsa::Diagnostic>& diagnostics) {
  vsa_tools::ReadOutcome plain;
  plain.result = result.applied.linksResolved;
  for (const vsa::Diagnostic& found : diagnostics) {
    const bool isOfApi =
        found.id >= vsa::DiagnosticId::EndMark || found.id == vsa::DiagnosticId::UnexpectedEof;
    if (isOfApi) continue;
    const bool isWarning = found.severity == vsa::Severity::Warning;
    plain.log.push_back({isWarning ? zn::LogLevel::Warning : zn::LogLevel::Error, found.logLine()});
  }
  vsa_tools::TextOutput out;
  vsa_tools::dumpCase(plain, result.scene.plain(), out);
  return out.text();
}

}  // namespace vsa_tests
