// TextFile: a text that can be read more than once. It is a file, or a temporary copy of standard
// input or of a pipe.
#pragma once

#include <sys/stat.h>

#include <cstdint>
#include <cstdio>
#include <functional>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <utility>

#include <vsa/read.h>

namespace vsa_tools {

struct CloseFile {
  void operator()(std::FILE* file) const { std::fclose(file); }
};
using FilePointer = std::unique_ptr<std::FILE, CloseFile>;

inline constexpr std::string_view BYTE_ORDER_MARK = "\xEF\xBB\xBF";

/// An open text. A byte order mark at its beginning is not part of the text.
class TextFile {
 public:
  /// Opens the file `name`. "-" is standard input. Standard input and named pipes are copied to a
  /// temporary file, and so is a device if `maxBytes` bounds the copy. The copy ends after more
  /// than `maxBytes` bytes, so that the reading finds that the text is too long. Returns false if
  /// the file cannot be read, or the copy not written. Then problem() returns the reason. If Ctrl-C
  /// ends the copying, returns true: the text is then incomplete.
  bool open(const std::string& name, std::uint64_t maxBytes = vsa::UNLIMITED);
  /// Closes the file, so that it takes no descriptor. A temporary copy stays open.
  void close();
  /// Opens the file again after close(). Returns false if it cannot be opened, or if it is another
  /// file now or has changed since open().
  bool reopen();
  /// Returns whether the name still is that of the same file, and the file has not changed since
  /// open(), as far as the system knows. Always true for a temporary copy.
  bool isUnchanged() const;

  /// The file descriptor for TextFileSource.
  int descriptor() const { return ::fileno(file_.get()); }
  /// The offset at which the text begins, after a byte order mark.
  std::size_t begin() const { return hasMark_ ? BYTE_ORDER_MARK.size() : 0; }
  bool hasMark() const { return hasMark_; }
  /// The reason why open() or reopen() failed.
  const std::string& problem() const { return problem_; }

 private:
  bool fail();
  bool copy(int input, std::uint64_t maxBytes);
  bool readMark();

  FilePointer file_;
  std::string name_;       // empty if the text is a temporary copy
  struct stat status_ {};  // that of the file when it was opened
  bool hasMark_ = false;
  std::string problem_;
};

/// Reads a TextFile from its beginning. Ctrl-C ends the reading. Several sources on several threads
/// may read the same file.
class TextFileSource final : public vsa::Source {
 public:
  /// `onRead` is called after each read with the number of its bytes.
  explicit TextFileSource(const TextFile& file, std::function<void(std::size_t)> onRead = {})
      : descriptor_(file.descriptor()), offset_(file.begin()), onRead_(std::move(onRead)) {}
  /// Reads another open file from its beginning.
  explicit TextFileSource(int descriptor) : descriptor_(descriptor) {}

  std::size_t read(std::span<char> to) override;
  std::optional<std::uint64_t> size() const override;
  std::string error() const override { return error_; }

 private:
  int descriptor_;
  std::size_t offset_ = 0;
  std::function<void(std::size_t)> onRead_;
  std::string error_;
};

}  // namespace vsa_tools
