#include "tools/vsa/log_spool.h"

#include <unistd.h>

#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <system_error>

#include "tools/scene_text/scene_dump.h"

namespace vsa_tools {

namespace {

/// A file that is gone when it is closed, in the folder that the system (TMPDIR) names for such;
/// null, with errno set, when it cannot be made.
std::FILE* openNameless() {
  std::error_code error;
  const std::filesystem::path folder = std::filesystem::temp_directory_path(error);
  errno = error.value();
  if (error) return nullptr;
  std::string path = folder / "vsa_log_XXXXXX";
  const int descriptor = ::mkstemp(path.data());
  if (descriptor < 0) return nullptr;
  ::unlink(path.c_str());
  std::FILE* const file = ::fdopen(descriptor, "w+b");
  if (file == nullptr) ::close(descriptor);
  return file;
}

}  // namespace

void LogSpool::write(zn::LogLevel level, const zn::String& text) {
  if (!problem_.empty()) return;
  TextOutput entry;  // taken whole or, when memory ends, not at all
  if (!first_) entry.put(',');
  dumpLogEntry(level, text.view(), entry);
  held_ += entry.text();
  first_ = false;
  if (held_.size() > inMemory_) spill();
}

void LogSpool::moveTo(TextOutput& out) {
  if (file_ != nullptr) {
    char block[size_t{16} * 1024];
    std::rewind(file_.get());
    while (const size_t count = std::fread(block, 1, sizeof block, file_.get()))
      out.put(std::string_view(block, count));
    if (std::ferror(file_.get()) != 0) failed();
  }
  out.put(held_);
}

void LogSpool::spill() {
  if (file_ == nullptr) file_.reset(openNameless());
  if (file_ == nullptr || std::fwrite(held_.data(), 1, held_.size(), file_.get()) != held_.size() ||
      std::fflush(file_.get()) != 0)
    failed();
  held_.clear();
}

void LogSpool::failed() {
  problem_ = std::strerror(errno);
}

}  // namespace vsa_tools
