// Helpers of the fault tests: a log sink that allocates nothing, the outcome of a read, and a check
// that the scene is usable afterwards.
#pragma once

#include <algorithm>
#include <cstddef>
#include <new>
#include <string>
#include <string_view>

#include <vsa/foundation/log.h>
#include <vsa/model/scene.h>

namespace vsa_tests {

/// A log sink with a fixed buffer: it never allocates and never fails.
class FixedSink final : public zn::LogSink {
 public:
  void write(zn::LogLevel, const zn::String& text) override {
    const std::string_view line = text.view();
    const std::size_t remaining = CAPACITY - used_;
    const std::size_t kept = std::min(remaining, line.size());
    std::copy_n(line.data(), kept, text_ + used_);
    used_ += kept;
    if (used_ < CAPACITY) text_[used_++] = '\n';
    ++lines;
  }

  std::string_view text() const { return {text_, used_}; }

  std::size_t lines = 0;

 private:
  static constexpr std::size_t CAPACITY = 1 << 16;
  char text_[CAPACITY];
  std::size_t used_ = 0;
};

/// The outcome of one read with a fault.
enum class End { True, False, NoMemory, OtherException };

template <class Read>
End endOf(const Read& read) {
  try {
    return read() ? End::True : End::False;
  } catch (const std::bad_alloc&) {
    return End::NoMemory;
  } catch (...) {
    return End::OtherException;
  }
}

/// The content of a scene in the format of an expectation.
std::string sceneText(const zn::korvo_sdk::Scene& scene);

/// Expects that the scene is usable after a fault: it can be dumped, and another text can be read
/// into it. The earlier text may have reached the scene's limit of empty elements, so the limit is
/// raised by the number that the probe needs.
void expectUsable(zn::korvo_sdk::Scene& scene, const std::string& where);

}  // namespace vsa_tests
