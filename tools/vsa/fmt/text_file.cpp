#include "tools/vsa/fmt/text_file.h"

#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <cstring>
#include <string_view>

#include "tools/vsa/common/interrupt.h"

namespace vsa_tools {

bool TextFile::fail() {
  problem_ = errno == ESPIPE ? "not a regular file" : std::strerror(errno);
  return false;
}

bool TextFile::open(const std::string& name) {
  file_.reset(name == "-" ? std::tmpfile() : std::fopen(name.c_str(), "re"));
  if (file_ == nullptr) return fail();
  if (name == "-" && !copyInput()) return false;
  std::array<char, BYTE_ORDER_MARK.size()> head{};
  const ssize_t count = ::pread(descriptor(), head.data(), head.size(), 0);
  if (count < 0) return fail();  // for example, a directory or a pipe was opened
  hasMark_ = std::string_view(head.data(), static_cast<std::size_t>(count)) == BYTE_ORDER_MARK;
  return true;
}

bool TextFile::copyInput() {
  std::array<char, 65536> block;
  while (true) {
    if (!waitForInput(STDIN_FILENO)) return true;  // interrupted
    const ssize_t count = ::read(STDIN_FILENO, block.data(), block.size());
    if (count < 0 && errno == EINTR) continue;
    if (count < 0) return fail();
    if (count == 0) return std::fflush(file_.get()) == 0 || fail();
    const auto size = static_cast<std::size_t>(count);
    if (std::fwrite(block.data(), 1, size, file_.get()) != size) return fail();
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
