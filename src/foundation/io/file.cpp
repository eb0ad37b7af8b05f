// File: the handle, and the source of a path.
#include <vsa/foundation/file.h>

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>
#include <string_view>
#include <system_error>

#include "foundation/io/open_file.h"

namespace zn {

namespace {

using detail::OpenFile;

constexpr std::string_view BYTE_ORDER_MARK = "\xEF\xBB\xBF";

String messageOf(int error) {
  return String(std::generic_category().message(error).c_str());
}

// Repeats a system call as long as signals interrupt it.
template <class Call>
auto restarted(const Call& call) {
  for (;;) {
    const auto result = call();
    if (result != -1 || errno != EINTR) return result;
  }
}

/// Reads a file descriptor, without a byte order mark at its beginning, and closes it in the end.
/// It calls read(2) because fread waits for a full block, even of a pipe that has some bytes.
class DescriptorSource final : public ByteSource {
 public:
  explicit DescriptorSource(int descriptor) noexcept : descriptor_(descriptor) {}
  DescriptorSource(const DescriptorSource&) = delete;
  DescriptorSource& operator=(const DescriptorSource&) = delete;

  std::size_t read(char* to, std::size_t capacity) override {
    if (isStarted_) return readSome(to, capacity);
    isStarted_ = true;
    return readStart(to, capacity);
  }

  String error() const override { return error_; }

 private:
  ~DescriptorSource() override { ::close(descriptor_); }

  std::size_t readSome(char* to, std::size_t capacity) {
    const ssize_t count = restarted([&] { return ::read(descriptor_, to, capacity); });
    if (count >= 0) return static_cast<std::size_t>(count);
    error_ = messageOf(errno);
    return 0;
  }

  // Reads until the bytes complete the mark or differ from it: a pipe may deliver the mark in
  // parts.
  std::size_t readStart(char* to, std::size_t capacity) {
    std::size_t count = 0;
    do {
      const std::size_t added = readSome(to + count, capacity - count);
      if (added == 0) return count;
      count += added;
    } while (count < BYTE_ORDER_MARK.size() &&
             BYTE_ORDER_MARK.substr(0, count) == std::string_view(to, count));
    if (std::string_view(to, count).substr(0, BYTE_ORDER_MARK.size()) != BYTE_ORDER_MARK)
      return count;
    count -= BYTE_ORDER_MARK.size();
    if (count == 0) return readSome(to, capacity);
    std::memmove(to, to + BYTE_ORDER_MARK.size(), count);
    return count;
  }

  int descriptor_;
  bool isStarted_ = false;
  String error_;
};

// Retains the source first: it is deleted when there is no memory for the file.
OpenFile* openOver(ByteSource* source) {
  const RefersTo<ByteSource> held(source);
  return new OpenFile(source, "there is no source to read from");
}

File failedFile(int error) {
  File file;
  static_cast<RefersTo<RefCounted>&>(file) =
      RefersTo<RefCounted>(new OpenFile(nullptr, messageOf(error)));
  return file;
}

ByteSource* sourceOf(int descriptor) {
  try {
    return new DescriptorSource(descriptor);
  } catch (...) {
    ::close(descriptor);
    throw;
  }
}

}  // namespace

File::File(ByteSource* source) : RefersTo<RefCounted>(openOver(source)) {
}

File File::open(const char* path) {
  if (path == nullptr) return failedFile(EINVAL);
  const int descriptor = restarted([&] { return ::open(path, O_RDONLY | O_CLOEXEC); });
  if (descriptor == -1) return failedFile(errno);
  ByteSource* const source = sourceOf(descriptor);
  const RefersTo<ByteSource> held(source);
  File file(source);
  file.fill();  // a directory can be opened, but not read
  return file;
}

bool File::isOpen() const noexcept {
  return object() != nullptr && OpenFile::of(*this)->isOpen();
}

bool File::failed() const {
  return !error().isEmpty();
}

String File::error() const {
  const File held(*this);
  return object() == nullptr ? String("no file was opened") : OpenFile::of(held)->error();
}

// A source may assign to the handle that is being read. A copy of the handle keeps the file alive
// during the call. Buffered bytes need no call, and so no copy.

bool File::read(signed char& c) {
  OpenFile* const opened = OpenFile::of(*this);
  if (opened == nullptr) return false;
  if (opened->isBuffered()) return opened->read(c);
  const File held(*this);
  return opened->read(c);
}

File::Window File::fill() {
  const File held(*this);
  return object() == nullptr ? Window{nullptr, nullptr} : OpenFile::of(held)->fill();
}

void File::skip(std::size_t count) noexcept {
  if (object() != nullptr) OpenFile::of(*this)->skip(count);
}

}  // namespace zn
