#include "tools/vsa/input_file.h"

#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>

namespace vsa_tools {

namespace {

/// Standard input, without a byte order mark at its start, so that a pipe reads as the file does.
class StandardInput : public zn::ByteSource {
 public:
  size_t read(char* to, size_t capacity) override {
    if (started_) return readSome(to, capacity);
    started_ = true;
    return readStart(to, capacity);
  }

  zn::String error() const override { return error_.c_str(); }

 private:
  static constexpr char MARK[] = "\xEF\xBB\xBF";
  static constexpr size_t MARK_BYTES = 3;

  size_t readSome(char* to, size_t capacity) {
    ssize_t count;
    do {
      count = ::read(STDIN_FILENO, to, capacity);
    } while (count < 0 && errno == EINTR);
    if (count < 0) error_ = std::strerror(errno);
    return count < 0 ? 0 : static_cast<size_t>(count);
  }

  /// The first block, at least as long as the mark unless the input ends before. A source is never
  /// asked for less than the mark's length at its start: blocks are read.
  size_t readStart(char* to, size_t capacity) {
    size_t held = 0;
    while (held < MARK_BYTES && held < capacity) {
      const size_t count = readSome(to + held, capacity - held);
      if (count == 0) break;
      held += count;
    }
    if (held < MARK_BYTES || std::memcmp(to, MARK, MARK_BYTES) != 0) return held;
    std::memmove(to, to + MARK_BYTES, held - MARK_BYTES);
    return held > MARK_BYTES ? held - MARK_BYTES : readSome(to, capacity);
  }

  bool started_ = false;
  std::string error_;
};

/// Why `name` cannot be opened, or an empty text.
std::string whyUnreadable(const std::string& name) {
  struct stat status {};
  if (::stat(name.c_str(), &status) != 0) return std::strerror(errno);
  if (S_ISDIR(status.st_mode)) return std::strerror(EISDIR);
  return "";
}

}  // namespace

zn::File openInput(const std::string& name, std::string& problem) {
  if (name != "-") problem = whyUnreadable(name);
  if (!problem.empty()) return zn::File();
  zn::File file = name == "-" ? zn::File(new StandardInput) : zn::File::open(name.c_str());
  // A file that opens and then delivers not one byte is no empty file.
  const zn::File::Window start = file.fill();
  if (start.begin == start.end && file.failed()) problem = file.error().buf();
  return file;
}

std::string shownName(const std::string& name) {
  return name == "-" ? "<stdin>" : name;
}

}  // namespace vsa_tools
