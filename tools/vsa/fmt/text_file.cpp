#include "tools/vsa/fmt/text_file.h"

#include <fcntl.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <cstring>
#include <string_view>

#include "tools/vsa/common/interrupt.h"

namespace vsa_tools {

namespace {

/// Returns whether both are the same file with the same content, as far as the system knows.
bool isSameFile(const struct stat& a, const struct stat& b) {
  return a.st_dev == b.st_dev && a.st_ino == b.st_ino && a.st_size == b.st_size &&
         a.st_mtim.tv_sec == b.st_mtim.tv_sec && a.st_mtim.tv_nsec == b.st_mtim.tv_nsec;
}

}  // namespace

bool TextFile::fail() {
  problem_ = errno == ESPIPE ? "not a regular file" : std::strerror(errno);
  return false;
}

bool TextFile::open(const std::string& name, std::uint64_t maxBytes) {
  name_.clear();
  if (name == "-") return copy(STDIN_FILENO, maxBytes) && readMark();
  const int opened = openForReading(name.c_str());
  file_.reset(opened < 0 ? nullptr : ::fdopen(opened, "r"));
  if (file_ == nullptr || ::fstat(descriptor(), &status_) != 0) return fail();
  const bool isBoundedDevice = S_ISCHR(status_.st_mode) && maxBytes != vsa::UNLIMITED;
  if (S_ISFIFO(status_.st_mode) || isBoundedDevice) {
    const FilePointer input = std::move(file_);
    return copy(::fileno(input.get()), maxBytes) && readMark();
  }
  name_ = name;
  return readMark();
}

bool TextFile::readMark() {
  std::array<char, BYTE_ORDER_MARK.size()> head{};
  const ssize_t count = ::pread(descriptor(), head.data(), head.size(), 0);
  if (count < 0) return fail();  // for example, a directory or a terminal was opened
  hasMark_ = std::string_view(head.data(), static_cast<std::size_t>(count)) == BYTE_ORDER_MARK;
  return true;
}

void TextFile::close() {
  if (!name_.empty()) file_.reset();
}

bool TextFile::reopen() {
  if (file_ != nullptr) return true;
  // If the name is that of a pipe now, opening it must not wait for a process that writes to it.
  const int descriptor = ::open(name_.c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC);
  if (descriptor < 0) return fail();
  file_.reset(::fdopen(descriptor, "r"));
  struct stat status {};
  if (file_ == nullptr || ::fstat(descriptor, &status) != 0) return fail();
  if (isSameFile(status, status_)) return true;
  problem_ = "the file has changed since it was read";
  return false;
}

bool TextFile::isUnchanged() const {
  struct stat status {};
  return name_.empty() || (::stat(name_.c_str(), &status) == 0 && isSameFile(status, status_));
}

bool TextFile::copy(int input, std::uint64_t maxBytes) {
  file_.reset(std::tmpfile());
  if (file_ == nullptr) return fail();
  std::array<char, 65536> block;
  std::uint64_t copied = 0;
  while (true) {
    if (!waitForInput(input)) return true;  // interrupted
    const ssize_t count = ::read(input, block.data(), block.size());
    if (count < 0 && errno == EINTR) continue;
    if (count < 0) return fail();
    const auto size = static_cast<std::size_t>(count);
    copied += size;
    if (std::fwrite(block.data(), 1, size, file_.get()) != size) return fail();
    // A byte order mark does not count.
    const bool isTooLong = copied > maxBytes && copied - maxBytes > BYTE_ORDER_MARK.size();
    if (count == 0 || isTooLong) return std::fflush(file_.get()) == 0 || fail();
  }
}

std::size_t TextFileSource::read(std::span<char> to) {
  if (isInterrupted()) error_ = "interrupted";
  if (!error_.empty()) return 0;
  ssize_t count;
  do {
    count = ::pread(descriptor_, to.data(), to.size(), static_cast<off_t>(offset_));
  } while (count < 0 && errno == EINTR);
  if (count < 0) {
    error_ = std::strerror(errno);
    return 0;
  }
  offset_ += static_cast<std::size_t>(count);
  if (onRead_) onRead_(static_cast<std::size_t>(count));
  return static_cast<std::size_t>(count);
}

std::optional<std::uint64_t> TextFileSource::size() const {
  struct stat status {};
  if (::fstat(descriptor_, &status) != 0) return std::nullopt;
  const auto bytes = static_cast<std::uint64_t>(status.st_size);
  return bytes > offset_ ? bytes - offset_ : 0;
}

}  // namespace vsa_tools
