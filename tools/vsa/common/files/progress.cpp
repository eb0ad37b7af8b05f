#include "tools/vsa/common/files/progress.h"

#include <unistd.h>

#include <algorithm>
#include <utility>

namespace vsa_tools {

namespace {

constexpr std::chrono::milliseconds DELAY{1000};
constexpr std::chrono::milliseconds INTERVAL{100};
constexpr std::size_t BAR_CELLS = 20;

}  // namespace

std::string progressLine(const std::string& what, std::uint64_t done, std::uint64_t total) {
  const double fraction =
      total == 0 ? 1.0 : std::min(1.0, static_cast<double>(done) / static_cast<double>(total));
  const auto filled = static_cast<std::size_t>(fraction * BAR_CELLS);
  const std::string percent = std::to_string(static_cast<int>(fraction * 100));
  return what + " [" + std::string(filled, '#') + std::string(BAR_CELLS - filled, ' ') + "] " +
         std::string(3 - percent.size(), ' ') + percent + " %";
}

Progress::Progress(std::string what)
    : Progress(std::move(what), ::isatty(STDERR_FILENO) ? stderr : nullptr, DELAY) {
}

Progress::Progress(std::string what, std::FILE* stream, Clock::duration delay)
    : what_(std::move(what)), stream_(stream), next_(Clock::now() + delay) {
}

Progress::~Progress() {
  hide();
}

void Progress::update(std::uint64_t done, std::uint64_t total) {
  if (stream_ == nullptr) return;
  const std::lock_guard lock(mutex_);
  const Clock::time_point now = Clock::now();
  if (now < next_) return;
  next_ = now + INTERVAL;
  std::fprintf(stream_, "\r%s", progressLine(what_, done, total).c_str());
  std::fflush(stream_);
  isShown_ = true;
}

void Progress::hide() {
  if (stream_ == nullptr) return;
  const std::lock_guard lock(mutex_);
  if (isShown_) erase();
}

// Erases the line. After a carriage return, CSI K erases to the end of the line (ECMA-48).
void Progress::erase() {
  std::fputs("\r\x1B[K", stream_);
  std::fflush(stream_);
  isShown_ = false;
}

}  // namespace vsa_tools
