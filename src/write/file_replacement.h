// A file that is written beside the one it replaces. Internal.
#pragma once

#include <filesystem>
#include <string>

#include <vsa/write.h>

namespace vsa::impl {

/// The sink of one file. The bytes go to a new file in the folder of the old one; `replace` puts it
/// in the place of the old file in one step. Until then, and for ever if this object is destroyed
/// before or the process ends, the old file is as it was. What is no regular file (a pipe, a
/// device) is written to as it is.
class FileReplacement final : public Sink {
 public:
  FileReplacement() = default;
  FileReplacement(const FileReplacement&) = delete;
  FileReplacement& operator=(const FileReplacement&) = delete;
  /// Deletes the new file, unless it has replaced the old one.
  ~FileReplacement() override;

  /// Opens the new file for `path`. False: it cannot be; `error` says why. Each function returns
  /// so.
  bool open(const std::filesystem::path& path);
  bool write(std::string_view text) override;
  /// Waits until the new file is on the disk, gives it the permissions of the old one, and its
  /// name.
  bool replace();

  std::string error() const override { return error_; }

 private:
  bool openBeside();
  bool makeDurable();
  bool keepPermissions();
  bool fail(const char* what);

  std::filesystem::path target_;
  std::filesystem::path temporary_;  // empty if the target itself is open
  int file_ = -1;
  std::string error_;
};

}  // namespace vsa::impl
