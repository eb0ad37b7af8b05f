#include "tools/vsa/dump/log_spool.h"

#include <fcntl.h>
#include <stdlib.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>

#include "tools/scene_text/scene_dump.h"

namespace vsa_tools {

namespace {

/// A file without a name, which is deleted when it is closed; null, with errno set, on failure. It
/// is not tmpfile(), which ignores TMPDIR: /tmp is often in memory and too small for a long log.
std::FILE* openTemporary() {
  const char* const folder = std::getenv("TMPDIR");
  std::string path = std::string(folder == nullptr ? "/tmp" : folder) + "/vsa_log_XXXXXX";
  const int descriptor = ::mkostemp(path.data(), O_CLOEXEC);
  if (descriptor < 0) return nullptr;
  ::unlink(path.c_str());
  std::FILE* const file = ::fdopen(descriptor, "w+b");
  if (file == nullptr) ::close(descriptor);
  return file;
}

}  // namespace

void LogSpool::write(zn::LogLevel level, const zn::String& text) {
  if (!problem_.empty()) return;
  // Complete the entry first: if memory runs out, the buffer must not end in half an entry.
  TextOutput entry;
  if (!first_) entry.put(',');
  dumpLogEntry(level, text.view(), entry);
  buffer_ += entry.text();
  first_ = false;
  if (buffer_.size() > memoryLimit_) spill();
}

void LogSpool::moveTo(TextOutput& out) {
  if (file_ != nullptr) {
    char block[size_t{16} * 1024];
    std::rewind(file_.get());
    while (const size_t count = std::fread(block, 1, sizeof block, file_.get()))
      out.put(std::string_view(block, count));
    if (std::ferror(file_.get()) != 0) setProblem();
  }
  out.put(buffer_);
}

void LogSpool::spill() {
  if (file_ == nullptr) file_.reset(openTemporary());
  if (file_ == nullptr ||
      std::fwrite(buffer_.data(), 1, buffer_.size(), file_.get()) != buffer_.size() ||
      std::fflush(file_.get()) != 0)
    setProblem();
  buffer_.clear();
}

void LogSpool::setProblem() {
  problem_ = std::strerror(errno);
}

}  // namespace vsa_tools
