// What the tests of faults ask with: a log that takes no memory, how a reading ended, and whether
// the scene is as good as any afterwards.
#pragma once

#include <algorithm>
#include <cstddef>
#include <new>
#include <string>
#include <string_view>

#include <vsa/foundation/log.h>
#include <vsa/model/scene.h>

namespace vsa_tests {

/// The log as it comes, without an allocation: a sink that cannot fail.
class FixedSink final : public zn::LogSink {
 public:
  void write(zn::LogLevel, const zn::String& text) override {
    const std::string_view line = text.view();
    const std::size_t room = CAPACITY - used_;
    const std::size_t kept = std::min(room, line.size());
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

/// What came of one read under a fault.
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

/// What a scene holds, in the form of an expectation.
std::string sceneText(const zn::korvo_sdk::Scene& scene);

/// After a fault the scene must be as good as any: it can be dumped, and another text read into it.
/// The text before may have used up the scene's limit of empty elements, which is raised by what
/// the probe needs.
void expectUsable(zn::korvo_sdk::Scene& scene, const std::string& where);

}  // namespace vsa_tests
