// GrowingFile: lets one thread read a file while another thread still writes it.
#pragma once

#include <condition_variable>
#include <cstdint>
#include <mutex>
#include <span>

#include "tools/vsa/fmt/text_file.h"

namespace vsa_tools {

/// The number of bytes that a thread has written to a file, for a thread that reads the file at the
/// same time. All functions may be called from any thread.
class GrowingFile {
 public:
  /// Adds `count` bytes that are in the file now.
  void add(std::uint64_t count);
  /// Ends the file: no bytes will be added. Further calls have no effect.
  void end();
  /// Ends the file because it is not needed: then GrowingFileSource delivers no more bytes, and
  /// GrowingSink writes none.
  void cancel();

  bool isCancelled() const;
  /// Waits until more than `offset` bytes may be read, or the file has ended. Returns how many
  /// bytes may be read. Before end(), these may be up to 4 MiB less than what was added.
  std::uint64_t waitForMore(std::uint64_t offset) const;

 private:
  mutable std::mutex mutex_;
  mutable std::condition_variable changed_;
  std::uint64_t added_ = 0;  // the bytes in the file
  std::uint64_t size_ = 0;   // the bytes that the reading thread may read
  bool isEnded_ = false;
  bool isCancelled_ = false;
};

/// Cancels a growing file at the end of a scope, so that no thread waits for more bytes. This has
/// no effect on a thread that has read the whole file.
class CancelAtEnd {
 public:
  explicit CancelAtEnd(GrowingFile& file) : file_(file) {}
  ~CancelAtEnd() { file_.cancel(); }
  CancelAtEnd(const CancelAtEnd&) = delete;
  CancelAtEnd& operator=(const CancelAtEnd&) = delete;

 private:
  GrowingFile& file_;
};

/// Reads a growing file. Waits at its end until it has more bytes or has ended. A cancelled file
/// ends where the reading has stopped.
class GrowingFileSource final : public vsa::Source {
 public:
  /// `source` reads the file from its byte `offset`. `file` and `source` must outlive the object.
  GrowingFileSource(const GrowingFile& file, vsa::Source& source, std::uint64_t offset = 0)
      : file_(file), source_(source), offset_(offset) {}

  std::size_t read(std::span<char> to) override;
  std::string error() const override { return source_.error(); }

 private:
  const GrowingFile& file_;
  vsa::Source& source_;
  std::uint64_t offset_;
};

}  // namespace vsa_tools
