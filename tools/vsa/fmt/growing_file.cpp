#include "tools/vsa/fmt/growing_file.h"

#include <algorithm>

namespace vsa_tools {

namespace {

// A waiting thread is woken after this number of bytes, so that it does not change between waiting
// and reading for each block of 256 KiB.
constexpr std::uint64_t STEP_BYTES = 4 << 20;

}  // namespace

void GrowingFile::add(std::uint64_t count) {
  const std::lock_guard lock(mutex_);
  added_ += count;
  if (added_ - size_ < STEP_BYTES) return;
  size_ = added_;
  changed_.notify_all();
}

void GrowingFile::end() {
  const std::lock_guard lock(mutex_);
  size_ = added_;
  isEnded_ = true;
  changed_.notify_all();
}

void GrowingFile::cancel() {
  const std::lock_guard lock(mutex_);
  isEnded_ = isCancelled_ = true;
  changed_.notify_all();
}

bool GrowingFile::isCancelled() const {
  const std::lock_guard lock(mutex_);
  return isCancelled_;
}

std::uint64_t GrowingFile::waitForMore(std::uint64_t offset) const {
  std::unique_lock lock(mutex_);
  changed_.wait(lock, [&] { return size_ > offset || isEnded_; });
  return size_;
}

std::size_t GrowingFileSource::read(std::span<char> to) {
  const std::uint64_t size = file_.waitForMore(offset_);
  if (size <= offset_ || file_.isCancelled()) return 0;
  const std::uint64_t count = std::min<std::uint64_t>(to.size(), size - offset_);
  const std::size_t got = source_.read(to.first(static_cast<std::size_t>(count)));
  offset_ += got;
  return got;
}

}  // namespace vsa_tools
