#include "tools/vsa/input/input_file.h"

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>

namespace vsa_tools {

namespace {

/// Reads from a file descriptor; the destructor closes it if `owns` is true.
class DescriptorSource final : public InspectedSource {
 public:
  DescriptorSource(int descriptor, bool owns) : descriptor_(descriptor), owns_(owns) {}
  DescriptorSource(const DescriptorSource&) = delete;
  DescriptorSource& operator=(const DescriptorSource&) = delete;

  zn::String error() const override { return error_.c_str(); }

 private:
  ~DescriptorSource() override {
    if (owns_) ::close(descriptor_);
  }

  std::size_t readRaw(char* to, std::size_t capacity) override {
    ssize_t count;
    do {
      count = ::read(descriptor_, to, capacity);
    } while (count < 0 && errno == EINTR);
    if (count < 0) error_ = std::strerror(errno);
    return count < 0 ? 0 : static_cast<std::size_t>(count);
  }

  int descriptor_;
  bool owns_;
  std::string error_;
};

}  // namespace

InputFile openInput(const std::string& name) {
  InputFile input;
  const bool isNamed = name != "-";
  const int descriptor = isNamed ? ::open(name.c_str(), O_RDONLY | O_CLOEXEC) : STDIN_FILENO;
  if (descriptor < 0) {
    input.problem = std::strerror(errno);
    return input;
  }
  auto* const source = new DescriptorSource(descriptor, isNamed);
  input.file = zn::File(source);
  input.source = source;
  // Opening a directory succeeds, reading it fails.
  const zn::File::Window start = input.file.fill();
  if (start.begin == start.end && input.file.failed()) input.problem = input.file.error().buf();
  return input;
}

std::string shownName(const std::string& name) {
  return name == "-" ? "<stdin>" : name;
}

}  // namespace vsa_tools
