// File: blocks from a source, bytes to the reader.
#include <vsa/foundation/file.h>

#include <array>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <memory>
#include <system_error>

namespace zn {

namespace {

/// What the handles share: the source, one block of it, and the place in the block.
class OpenFile final : public RefCounted {
 public:
  OpenFile(ByteSource* source, String failure) : source_(source), failure_(std::move(failure)) {
    if (source_ != nullptr) source_->retain();
  }
  OpenFile(const OpenFile&) = delete;
  OpenFile& operator=(const OpenFile&) = delete;

  bool isOpen() const noexcept { return source_ != nullptr; }

  String error() const { return source_ == nullptr ? failure_ : source_->error(); }

  File::Window fill() {
    if (at_ == filled_ && source_ != nullptr) {
      if (block_ == nullptr) block_ = std::make_unique_for_overwrite<char[]>(BLOCK_BYTES);
      at_ = 0;
      filled_ = 0;
      filled_ = source_->read(block_.get(), BLOCK_BYTES);
    }
    return {block_.get() + at_, block_.get() + filled_};
  }

  void skip(std::size_t count) noexcept { at_ += count; }

  bool read(signed char& c) {
    if (at_ == filled_) {
      const File::Window window = fill();
      if (window.begin == window.end) return false;
    }
    c = static_cast<signed char>(block_[at_++]);
    return true;
  }

 private:
  static constexpr std::size_t BLOCK_BYTES = std::size_t{1} << 18;

  ~OpenFile() override {
    if (source_ != nullptr) source_->release();
  }

  ByteSource* source_;
  String failure_;  // why there is no source
  std::unique_ptr<char[]> block_;
  std::size_t at_ = 0;
  std::size_t filled_ = 0;
};

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

OpenFile* fileOf(RefCounted* object) {
  return static_cast<OpenFile*>(object);
}

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
  return object() != nullptr && fileOf(object())->isOpen();
}

bool File::failed() const {
  return !error().isEmpty();
}

String File::error() const {
  return object() == nullptr ? String("no file was opened") : fileOf(object())->error();
}

bool File::read(signed char& c) {
  return object() != nullptr && fileOf(object())->read(c);
}

File::Window File::fill() {
  return object() == nullptr ? Window{nullptr, nullptr} : fileOf(object())->fill();
}

void File::skip(std::size_t count) noexcept {
  if (object() != nullptr) fileOf(object())->skip(count);
}

}  // namespace zn
