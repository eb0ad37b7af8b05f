// File: its handles, and the source that reads a path.
#include <vsa/foundation/file.h>

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <system_error>

#include "foundation/io/open_file.h"

namespace zn {

namespace {

using detail::OpenFile;

String messageOf(int error) {
  return String(std::generic_category().message(error).c_str());
}

/// A file of the C library, closed with its last handle.
class StdioSource final : public ByteSource {
 public:
  explicit StdioSource(std::FILE* file) : file_(file) {
    // The blocks are ours: a second buffer would only copy them.
    std::setvbuf(file_, nullptr, _IONBF, 0);
  }
  StdioSource(const StdioSource&) = delete;
  StdioSource& operator=(const StdioSource&) = delete;

  std::size_t read(char* to, std::size_t capacity) override {
    errno = 0;
    const std::size_t count = std::fread(to, 1, capacity, file_);
    if (count == 0 && std::ferror(file_) != 0) error_ = messageOf(errno == 0 ? EIO : errno);
    return count;
  }

  String error() const override { return error_; }

 private:
  ~StdioSource() override { std::fclose(file_); }

  std::FILE* file_;
  String error_;
};

// Reads past a byte order mark, when there is one at the beginning.
void skipByteOrderMark(File& file) {
  static constexpr char MARK[] = "\xEF\xBB\xBF";
  const File::Window window = file.fill();
  const std::size_t count = static_cast<std::size_t>(window.end - window.begin);
  if (count >= 3 && std::memcmp(window.begin, MARK, 3) == 0) file.skip(3);
}

// The source has an owner from the start: it goes when there is no memory for the file.
OpenFile* openOver(ByteSource* source) {
  const RefersTo<ByteSource> held(source);
  return new OpenFile(source, "there is no source to read from");
}

}  // namespace

File::File(ByteSource* source) : RefersTo<RefCounted>(openOver(source)) {
}

File File::open(const char* path) {
  File file;
  std::FILE* const handle = path == nullptr ? nullptr : std::fopen(path, "rb");
  if (handle == nullptr) {
    const int reason = path == nullptr ? EINVAL : errno;
    static_cast<RefersTo<RefCounted>&>(file) =
        RefersTo<RefCounted>(new OpenFile(nullptr, messageOf(reason)));
    return file;
  }
  ByteSource* source = nullptr;
  try {
    source = new StdioSource(handle);
  } catch (...) {
    std::fclose(handle);
    throw;
  }
  const RefersTo<ByteSource> held(source);
  file = File(source);
  skipByteOrderMark(file);
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

// A source may do anything while it is asked, assign to the very handle included: a second one
// keeps the file for the time of the call. Most bytes come from memory and need none.

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
