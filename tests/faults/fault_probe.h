// Helpers of the fault tests: a log sink that does not allocate memory, the outcome of a read, and
// a check that a scene is still usable.
#pragma once

#include <algorithm>
#include <cstddef>
#include <new>
#include <string>
#include <string_view>

#include <vsa/foundation/log.h>
#include <vsa/model/scene.h>

namespace vsa_tests {

/// A log sink with a fixed buffer of 64 KiB. It never allocates memory and never fails. Text beyond
/// the buffer is dropped, but its lines are counted.
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

/// How a read with a fault ended.
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

/// Returns the content of a scene in the form of an expected result.
std::string sceneText(const zn::korvo_sdk::Scene& scene);

/// Expects that the scene is usable after a fault: it can be dumped, and another text can be read
/// into it without a message, which does not change the nodes that are there. Raises the scene's
/// limit of empty elements by the number that the other text needs, because the first text may have
/// reached the limit.
void expectUsable(zn::korvo_sdk::Scene& scene, const std::string& where);

}  // namespace vsa_tests
