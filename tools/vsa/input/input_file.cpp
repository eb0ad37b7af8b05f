#include "tools/vsa/input/input_file.h"

#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>
#include <optional>

#include "tools/vsa/common/interrupt.h"

namespace vsa_tools {

namespace {

// Returns the size of a regular file, or nothing if it is 0 or unknown. Some system files report a
// size of 0 although they contain bytes.
std::optional<std::uint64_t> sizeOf(int descriptor) {
  struct stat status;
  const bool isFile = ::fstat(descriptor, &status) == 0 && S_ISREG(status.st_mode);
  if (!isFile || status.st_size == 0) return std::nullopt;
  return static_cast<std::uint64_t>(status.st_size);
}

/// Reads from a file descriptor. If `owns` is true, the destructor closes the descriptor.
class DescriptorSource final : public InspectedSource {
 public:
  DescriptorSource(int descriptor, bool owns)
      : descriptor_(descriptor), owns_(owns), size_(sizeOf(descriptor)) {}
  ~DescriptorSource() override {
    if (owns_) ::close(descriptor_);
  }
  DescriptorSource(const DescriptorSource&) = delete;
  DescriptorSource& operator=(const DescriptorSource&) = delete;

  std::optional<std::uint64_t> size() const override { return owns_ ? size_ : std::nullopt; }

 private:
  std::string rawError() const override { return error_; }
  std::size_t readRaw(char* to, std::size_t capacity) override {
    if (!size_ && !waitForInput(descriptor_)) {
      error_ = "interrupted";
      return 0;
    }
    ssize_t count;
    do {
      count = ::read(descriptor_, to, capacity);
    } while (count < 0 && errno == EINTR);
    if (count < 0) error_ = std::strerror(errno);
    return count < 0 ? 0 : static_cast<std::size_t>(count);
  }

  int descriptor_;
  bool owns_;
  // The result of sizeOf(). A regular file of known size is never waited for.
  std::optional<std::uint64_t> size_;
  std::string error_;
};

}  // namespace

InputFile openInput(const std::string& name) {
  InputFile input;
  const bool isNamed = name != "-";
  const int descriptor = isNamed ? openForReading(name.c_str()) : STDIN_FILENO;
  if (descriptor < 0) {
    input.problem = isInterrupted() ? "interrupted" : std::strerror(errno);
    return input;
  }
  input.source = std::make_unique<DescriptorSource>(descriptor, isNamed);
  input.source->readHead();
  input.problem = input.source->openError();
  return input;
}

std::string shownName(const std::string& name) {
  return name == "-" ? "<stdin>" : name;
}

}  // namespace vsa_tools
