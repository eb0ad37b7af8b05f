// MemoryFile: a file in memory that has a name. It is for functions that open a file by its name.
#pragma once

#include <sys/mman.h>
#include <unistd.h>

#include <string>
#include <string_view>

#include "fuzz/support/check.h"

namespace vsa_fuzz {

class MemoryFile {
 public:
  explicit MemoryFile(std::string_view content)
      : descriptor_(::memfd_create("input", MFD_CLOEXEC)) {
    const auto size = static_cast<ssize_t>(content.size());
    if (descriptor_ < 0 || ::write(descriptor_, content.data(), content.size()) != size) {
      fail("no file in memory");
    }
  }
  ~MemoryFile() { ::close(descriptor_); }
  MemoryFile(const MemoryFile&) = delete;
  MemoryFile& operator=(const MemoryFile&) = delete;

  std::string name() const { return "/proc/self/fd/" + std::to_string(descriptor_); }

 private:
  int descriptor_;
};

}  // namespace vsa_fuzz
