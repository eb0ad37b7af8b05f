#include "tools/vsa/fmt/held_sink.h"

#include <unistd.h>

#include <cerrno>
#include <chrono>
#include <string>

namespace vsa_tools {

namespace {

/// Copies the whole file to the sink.
bool copy(std::FILE* file, vsa::Sink& sink) {
  TextFileSource source(::fileno(file));
  std::string block(256 << 10, '\0');
  while (const std::size_t count = source.read(block)) {
    if (!sink.write(std::string_view(block).substr(0, count))) return false;
  }
  return source.error().empty();
}

}  // namespace

bool HeldSink::isCheckRunning() const {
  return check_.wait_for(std::chrono::seconds(0)) == std::future_status::timeout;
}

/// Appends the text to the temporary file, and removes the written part from `text`. Returns false
/// if the temporary file cannot be created or written.
bool HeldSink::hold(std::string_view& text) {
  if (held_ == nullptr) held_.reset(std::tmpfile());
  if (held_ == nullptr) return false;
  while (!text.empty()) {
    const ssize_t count = ::write(::fileno(held_.get()), text.data(), text.size());
    if (count > 0) {
      text.remove_prefix(static_cast<std::size_t>(count));
    } else if (count == 0 || errno != EINTR) {
      return false;
    }
  }
  return true;
}

bool HeldSink::release() {
  if (check_.get().has_value()) return false;
  if (isReleased_) return true;
  isReleased_ = true;
  return held_ == nullptr || copy(held_.get(), out_);
}

bool HeldSink::write(std::string_view text) {
  if (!isReleased_) {
    if (isCheckRunning() && hold(text)) return true;
    if (!release()) return false;
  }
  return out_.write(text);
}

}  // namespace vsa_tools
