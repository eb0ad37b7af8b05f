// FileReplacement: writes a new file and then puts it in the place of an old file.
//
//   vsa::FileReplacement file;
//   if (!file.open(path) || !file.write(text) || !file.replace()) std::puts(file.error().c_str());
#pragma once

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <string>
#include <string_view>

#include <vsa/foundation/api.h>
#include <vsa/write.h>

namespace vsa {

/// A sink that replaces one file by a new one. vsa::writeFile uses this class, and programs that
/// create a text themselves can use it. The bytes go to a new file in the folder of the old file.
/// `replace` renames the new file to the name of the old one. Before that call the old file does
/// not change, even if this object is destroyed or the process ends. A process that ends without
/// destroying this object leaves the new file behind. If the path is a pipe or a device, the bytes
/// go to it directly. The functions throw std::bad_alloc and no other exception.
class VSA_API FileReplacement final : public Sink {
 public:
  /// An object without a file. Call `open` next.
  FileReplacement() = default;
  FileReplacement(const FileReplacement&) = delete;
  FileReplacement& operator=(const FileReplacement&) = delete;
  /// Deletes the new file if `replace` has not renamed it.
  ~FileReplacement() override;

  /// Creates the new file for `path`. Call it once. If `path` is a symbolic link, the file to which
  /// the link refers is replaced or created. A path that contains a NUL is an error. Like `write`
  /// and `replace`, the function returns false on failure, and `error` then returns the reason.
  bool open(const std::filesystem::path& path);
  /// Appends `text` to the new file, or to the pipe or device. Call it after `open` and before
  /// `replace`.
  bool write(std::string_view text) override;
  /// The path of the new file. It is empty if there is no new file: before `open` has succeeded,
  /// after `replace` has succeeded, and if the bytes go to a pipe or a device.
  const std::filesystem::path& newFile() const noexcept { return temporary_; }
  /// Puts the new file in the place of the old one. Gives the new file the permissions of the old
  /// file, and its owner and group if the process may set them, waits until its bytes are on the
  /// disk, and renames it. If the bytes go to a pipe or a device, only returns true. Before the new
  /// file has these permissions, only its owner can read it, because the old file may be protected
  /// from other users. If the owner or the group cannot be set, the new file lacks the permissions
  /// that would then apply to others: the set-user-ID and set-group-ID bits, and those of the group
  /// if the group differs. If there is no old file, the new file has the default permissions from
  /// the start. Fails if `open` was not called, or if an earlier call failed: the new file may not
  /// be complete.
  bool replace();

  /// The reason why a function returned false, as a message for people. After `open`, it is empty
  /// if no function has failed. Before `open`, it is the reason why `replace` would fail.
  std::string error() const override { return error_; }

 private:
  bool openBeside(unsigned mode);
  void beginWriteback(std::size_t count) noexcept;
  bool makeDurable();
  bool keepPermissions();
  bool fail(const char* what);

  std::filesystem::path target_;
  std::filesystem::path temporary_;  // the new file; empty if the bytes go to `target_` directly
  int file_ = -1;
  std::uint64_t writtenBytes_ = 0;
  std::uint64_t writebackBytes_ = 0;  // for the bytes before it, the transfer to the disk has begun
  std::string error_ = "no file is open";
};

}  // namespace vsa
