// The progress of work on several files.
#pragma once

#include <cstddef>
#include <cstdint>
#include <mutex>
#include <string>
#include <vector>

#include "tools/vsa/common/files/progress.h"

namespace vsa_tools {

/// A progress line for several files, weighted by their sizes in bytes. All functions may be called
/// by several threads.
class FilesProgress {
 public:
  /// `what` begins the line, see Progress. A file of unknown size counts as one byte.
  FilesProgress(std::string what, const std::vector<std::string>& names);
  /// Shows the line on another stream, for tests.
  FilesProgress(std::string what, const std::vector<std::string>& names, std::FILE* stream,
                Progress::Clock::duration delay);

  /// Reports that `done` of the `total` steps of a file are done.
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
  std::uint64_t bytes_ = 0, done_ = 0;  // the bytes of all files, and those that are done
  Progress progress_;
};

}  // namespace vsa_tools
