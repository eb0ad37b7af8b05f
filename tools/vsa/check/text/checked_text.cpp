#include "tools/vsa/check/text/checked_text.h"

#include <sys/stat.h>
#include <unistd.h>
#include <utf8.h>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <limits>
#include <span>

#include "tools/vsa/common/interrupt.h"

namespace vsa_tools {

namespace {

// The size of the blocks that are read from a file of unknown size, and the maximum size of the
// blocks of other files. Between two blocks, reading ends if Ctrl-C was pressed.
constexpr std::size_t READ_BLOCK_BYTES = std::size_t{1} << 16;
constexpr std::size_t MAX_READ_BLOCK_BYTES = std::size_t{1} << 22;

template <class Read>
ssize_t readAgainIfInterrupted(const Read& read) {
  ssize_t count;
  do {
    count = read();
  } while (count < 0 && errno == EINTR);
  return count;
}

}  // namespace

/// The source for the reader: the kept bytes, then the remaining bytes of the file.
class CheckedText::Stream final : public vsa::Source {
 public:
  explicit Stream(CheckedText& text) : text_(text), kept_(text.text()) {}

  std::size_t read(std::span<char> to) override {
    if (const std::size_t count = kept_.copy(to.data(), to.size())) {
      kept_.remove_prefix(count);
      return count;
    }
    if (!waitForInput(text_.descriptor_)) return 0;
    const ssize_t count =
        readAgainIfInterrupted([&] { return ::read(text_.descriptor_, to.data(), to.size()); });
    if (count < 0) text_.problem_ = std::strerror(errno);
    return static_cast<std::size_t>(std::max<ssize_t>(count, 0));
  }
  std::string error() const override { return text_.problem_; }

 private:
  CheckedText& text_;
  std::string_view kept_;
};

CheckedText::CheckedText(const std::string& name, std::uint64_t maxKept) : name_(name) {
  descriptor_ = name == "-" ? ::dup(STDIN_FILENO) : openForReading(name.c_str());
  struct stat status {};
  if (descriptor_ < 0 || ::fstat(descriptor_, &status) != 0) {
    if (errno != EINTR) problem_ = std::strerror(errno);
    return;
  }
  isOpen_ = true;
  const auto size = static_cast<std::uint64_t>(status.st_size);
  isRegular_ = S_ISREG(status.st_mode) && name != "-";
  if (isRegular_ && size <= maxKept) expectedBytes_ = static_cast<std::size_t>(size);
  // One byte more than the maximum shows that the file is larger. (The sum may be 0 by overflow.)
  const std::uint64_t limit = std::max(maxKept, maxKept + 1);
  isKept_ = readUpTo(isRegular_ && size > maxKept ? sizeof utf8::bom : limit);
  skipMark();
  if (bytes_.empty() && !problem_.empty())
    isOpen_ = false;  // for example a directory: it can be opened, but not read
}

CheckedText::CheckedText(InMemory copied) : isOpen_(true) {
  copied.bytes.copy(bytes_.room(copied.bytes.size()), copied.bytes.size());
  bytes_.add(copied.bytes.size());
  skipMark();
}

CheckedText::~CheckedText() {
  if (descriptor_ >= 0) ::close(descriptor_);
}

bool CheckedText::keep() {
  if (!isKept_ && isRegular_) {
    isKept_ = readUpTo(std::numeric_limits<std::uint64_t>::max());
    skipMark();
  }
  return isKept_;
}

void CheckedText::skipMark() {
  markBytes_ = utf8::starts_with_bom(bytes_.view()) ? sizeof utf8::bom : 0;
}

// Returns the size of the block to read after `size` bytes. For a small file, it is one byte more
// than expected, so that one call reads the file and detects its end.
std::size_t CheckedText::blockAfter(std::size_t size) const {
  if (expectedBytes_ == 0 || size > expectedBytes_) return READ_BLOCK_BYTES;
  return std::min(expectedBytes_ + 1 - size, MAX_READ_BLOCK_BYTES);
}

// Appends bytes of the file to bytes_ until there are `limit`. Returns true if reading ended before
// that: at the end of the file, at an error, or after Ctrl-C.
bool CheckedText::readUpTo(std::uint64_t limit) {
  if (bytes_.empty()) bytes_.room(expectedBytes_ + 1);
  while (bytes_.size() < limit) {
    if (isRegular_ ? isInterrupted() : !waitForInput(descriptor_)) return true;
    const std::size_t size = bytes_.size();
    const std::size_t block = std::min<std::uint64_t>(blockAfter(size), limit - size);
    char* const room = bytes_.room(block);
    const ssize_t count = readAgainIfInterrupted([&] { return ::read(descriptor_, room, block); });
    if (count < 0) problem_ = std::strerror(errno);
    bytes_.add(static_cast<std::size_t>(std::max<ssize_t>(count, 0)));
    const bool isExpectedEnd = bytes_.size() == expectedBytes_ && bytes_.size() < size + block;
    if (count <= 0 || isExpectedEnd) return true;
  }
  return false;
}

vsa::ReadOutcome CheckedText::readInto(vsa::Scene& scene, const vsa::ReadOptions& options) {
  if (isKept_) return vsa::readTextInto(scene, text(), options);
  if (isRegular_) return vsa::readFileInto(scene, name_.c_str(), options);
  Stream stream(*this);
  return vsa::readSourceInto(scene, stream, options);
}

std::string CheckedText::read(std::uint64_t offset, std::uint64_t count) const {
  if (isKept_ || !isRegular_) {
    return std::string(text().substr(std::min<std::uint64_t>(offset, text().size()), count));
  }
  std::string part(count, '\0');
  std::size_t size = 0;
  while (size < count) {
    const ssize_t got = readAgainIfInterrupted([&] {
      return ::pread(descriptor_, part.data() + size, count - size,
                     static_cast<off_t>(markBytes_ + offset + size));
    });
    if (got <= 0) break;
    size += static_cast<std::size_t>(got);
  }
  part.resize(size);
  return part;
}

LinePart CheckedText::lineAt(const vsa::TextPosition& position, std::uint64_t reach) const {
  const std::uint64_t before = std::min({position.column - 1, reach, position.offset});
  const std::uint64_t begin = position.offset - before;
  LinePart part;
  part.text = read(begin, before + reach + 1);
  part.column = position.column - before;
  part.isCutBefore = part.column > 1;
  const std::size_t lineEnd = part.text.find('\n', std::min<std::size_t>(before, part.text.size()));
  part.isCutAfter = lineEnd == std::string::npos && part.text.size() == before + reach + 1;
  if (lineEnd != std::string::npos) {
    part.text.resize(lineEnd);
  } else if (part.isCutAfter) {
    part.text.pop_back();
  }
  if (!part.isCutAfter && part.text.ends_with('\r')) part.text.pop_back();
  return part;
}

}  // namespace vsa_tools
