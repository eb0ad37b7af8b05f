#include "tools/vsa/common/files/files_progress.h"

#include <algorithm>
#include <filesystem>
#include <system_error>
#include <utility>

namespace vsa_tools {

FilesProgress::FilesProgress(std::string what, const std::vector<std::string>& names)
    : progress_(std::move(what)) {
  addFiles(names);
}

FilesProgress::FilesProgress(std::string what, const std::vector<std::string>& names,
                             std::FILE* stream, Progress::Clock::duration delay)
    : progress_(std::move(what), stream, delay) {
  addFiles(names);
}

void FilesProgress::addFiles(const std::vector<std::string>& names) {
  for (const std::string& name : names) {
    std::error_code error;
    const std::uintmax_t size = std::filesystem::file_size(name, error);
    files_.push_back({error ? 1 : std::max<std::uint64_t>(size, 1), 0});
    bytes_ += files_.back().bytes;
  }
}

void FilesProgress::update(std::size_t file, std::uint64_t done, std::uint64_t total) {
  std::uint64_t sum = 0;
  {
    const std::lock_guard lock(mutex_);
    File& at = files_[file];
    const double part = total == 0 ? 1.0 : static_cast<double>(done) / static_cast<double>(total);
    const auto bytes = static_cast<std::uint64_t>(part * static_cast<double>(at.bytes));
    done_ -= at.done;
    at.done = std::min(bytes, at.bytes);
    done_ += at.done;
    sum = done_;
  }
  progress_.update(sum, bytes_);
}

}  // namespace vsa_tools
