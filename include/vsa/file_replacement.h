// FileReplacement: a new file in the folder of the file that it replaces.
//
//   vsa::FileReplacement file;
//   if (!file.open(path) || !file.write(text) || !file.replace()) std::puts(file.error().c_str());
#pragma once

#include <filesystem>
#include <string>
#include <string_view>

#include <vsa/foundation/api.h>
#include <vsa/write.h>

namespace vsa {

/// A sink that writes one file, for programs that write a text themselves; vsa::writeFile uses it.
/// The bytes go to a new file in the folder of the old one; `replace` renames it to the name of the
/// old file. Until then the old file is unchanged, even if this object is destroyed or the process
/// ends. A pipe or a device is written to directly. The functions throw std::bad_alloc only.
class VSA_API FileReplacement final : public Sink {
 public:
  FileReplacement() = default;
  FileReplacement(const FileReplacement&) = delete;
  FileReplacement& operator=(const FileReplacement&) = delete;
  /// Deletes the new file, unless it has replaced the old one.
  ~FileReplacement() override;

  /// Opens the new file for `path`, once. If `path` is a symbolic link, the file that it refers to
  /// is replaced. Like `write` and `replace`, returns false on failure; `error` returns the reason.
  /// A path with a NUL in it fails.
  bool open(const std::filesystem::path& path);
  /// Appends to the new file.
  bool write(std::string_view text) override;
  /// The path of the new file until `replace`; empty if the bytes go to a pipe or a device.
  const std::filesystem::path& newFile() const noexcept { return temporary_; }
  /// Gives the new file the permissions of the old one, waits until it is on the disk, and renames
  /// it. If there is an old file, only the owner may read the new file before it is renamed.
  bool replace();

  /// Why a function returned false, as a message for people.
  std::string error() const override { return error_; }

 private:
  bool openBeside(unsigned mode);
  bool makeDurable();
  bool keepPermissions();
  bool fail(const char* what);

  std::filesystem::path target_;
  std::filesystem::path temporary_;  // the new file; empty if the target itself is open
  int file_ = -1;
  std::string error_;
};

}  // namespace vsa
