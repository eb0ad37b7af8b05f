#include "foundation/io/descriptor_source.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>
#include <limits>
#include <string_view>
#include <system_error>

#include "foundation/base/byte_order_mark.h"

namespace zn::detail {

namespace {

// Calls a system function, and calls it again while signals interrupt it.
template <class Call>
auto restarted(const Call& call) {
  for (;;) {
    const auto result = call();
    if (result != -1 || errno != EINTR) return result;
  }
}

}  // namespace

String messageOfError(int error) {
  return String(std::generic_category().message(error).c_str());
}

DescriptorSource* DescriptorSource::open(const char* path, int& error) {
  const int descriptor = restarted([&] { return ::open(path, O_RDONLY | O_CLOEXEC); });
  if (descriptor == -1) {
    error = errno;
    return nullptr;
  }
  try {
    return new DescriptorSource(descriptor);
  } catch (...) {
    ::close(descriptor);
    throw;
  }
}

DescriptorSource::~DescriptorSource() {
  ::close(descriptor_);
}

std::size_t DescriptorSource::read(char* to, std::size_t capacity) {
  if (isStarted_) return readSome(to, capacity);
  isStarted_ = true;
  return readStart(to, capacity);
}

std::optional<std::uint64_t> DescriptorSource::textBytes() const noexcept {
  struct stat status;
  if (::fstat(descriptor_, &status) != 0 || !S_ISREG(status.st_mode)) return std::nullopt;
  const auto bytes = static_cast<std::uint64_t>(status.st_size);
  char start[BYTE_ORDER_MARK.size()];
  const ssize_t count = restarted([&] { return ::pread(descriptor_, start, sizeof start, 0); });
  const bool isMarked = count == static_cast<ssize_t>(sizeof start) && bytes >= sizeof start &&
                        std::string_view(start, sizeof start) == BYTE_ORDER_MARK;
  return isMarked ? bytes - sizeof start : bytes;
}

std::size_t DescriptorSource::readAt(std::uint64_t offset, char* to,
                                     std::size_t count) const noexcept {
  std::size_t done = 0;
  while (done < count) {
    const std::uint64_t from = offset + markBytes_ + done;
    if (from > static_cast<std::uint64_t>(std::numeric_limits<off_t>::max())) break;
    const ssize_t read = restarted(
        [&] { return ::pread(descriptor_, to + done, count - done, static_cast<off_t>(from)); });
    if (read <= 0) break;
    done += static_cast<std::size_t>(read);
  }
  return done;
}

std::size_t DescriptorSource::readSome(char* to, std::size_t capacity) {
  const ssize_t count = restarted([&] { return ::read(descriptor_, to, capacity); });
  if (count >= 0) return static_cast<std::size_t>(count);
  error_ = messageOfError(errno);
  return 0;
}

// Reads until the bytes are known to begin with the byte order mark or to differ from it, or until
// no more bytes can be read. A pipe may deliver the mark in parts.
std::size_t DescriptorSource::readStart(char* to, std::size_t capacity) {
  std::size_t count = 0;
  do {
    const std::size_t added = readSome(to + count, capacity - count);
    if (added == 0) return count;
    count += added;
  } while (count < BYTE_ORDER_MARK.size() &&
           BYTE_ORDER_MARK.substr(0, count) == std::string_view(to, count));
  if (std::string_view(to, count).substr(0, BYTE_ORDER_MARK.size()) != BYTE_ORDER_MARK)
    return count;
  markBytes_ = BYTE_ORDER_MARK.size();
  count -= BYTE_ORDER_MARK.size();
  if (count == 0) return readSome(to, capacity);
  std::memmove(to, to + BYTE_ORDER_MARK.size(), count);
  return count;
}

}  // namespace zn::detail
