// FileComparison: compares a file with its formatted text while that is written.
#pragma once

#include <mutex>
#include <optional>
#include <string>
#include <utility>

#include "tools/vsa/fmt/growing_file.h"
#include "tools/vsa/fmt/text_file.h"

namespace vsa_tools {

/// Compares the tokens of a file with those of a new file, which another thread may still write.
/// The functions may be called from any thread.
class FileComparison {
 public:
  /// `file` must outlive the object.
  FileComparison(const TextFile& file, std::string newFile)
      : file_(file), newFile_(std::move(newFile)) {}

  /// What is written of the new file. If it is cancelled, compare() does nothing.
  GrowingFile& written() { return written_; }
  /// Compares both files, unless another call does or did it, and waits for the result. Reads the
  /// new file up to its end, so it must be ended or cancelled by another thread or before the call.
  void compare();
  /// Whether both files have the same tokens. False if they were not compared or cannot be read.
  bool isSame() const;

 private:
  bool hasSameTokens() const;

  const TextFile& file_;
  const std::string newFile_;
  GrowingFile written_;
  mutable std::mutex mutex_;
  std::optional<bool> isSame_;  // the result of the comparison
};

}  // namespace vsa_tools
