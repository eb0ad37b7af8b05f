// FilesProgress: shows the progress of work on several files.
#pragma once

#include <cstddef>
#include <cstdint>
#include <mutex>
#include <string>
#include <vector>

#include "tools/vsa/common/files/progress.h"

namespace vsa_tools {

/// A progress line for several files. The size in bytes of a file is its share of the work. Several
/// threads may call all functions.
class FilesProgress {
 public:
  /// The line begins with `what`, see Progress. An empty file or a file of unknown size counts as
  /// one byte.
  FilesProgress(std::string what, const std::vector<std::string>& names);
  /// For tests: shows the line on another stream, after another delay.
  FilesProgress(std::string what, const std::vector<std::string>& names, std::FILE* stream,
                Progress::Clock::duration delay);

  /// Reports that `done` of the `total` steps of a file are done. `file` is its index in `names`.
  /// If `total` is 0, the file is done.
  void update(std::size_t file, std::uint64_t done, std::uint64_t total);
  /// Reports that a file is done.
  void finish(std::size_t file) { update(file, 1, 1); }
  /// See Progress::hide().
  void hide() { progress_.hide(); }

 private:
  void addFiles(const std::vector<std::string>& names);

  struct File {
    std::uint64_t bytes;
    std::uint64_t done;
  };
  std::mutex mutex_;
  std::vector<File> files_;
  // The bytes of all files, and the bytes of the finished parts.
  std::uint64_t bytes_ = 0, done_ = 0;
  Progress progress_;
};

}  // namespace vsa_tools
