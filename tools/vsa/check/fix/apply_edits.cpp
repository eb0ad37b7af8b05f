#include "tools/vsa/check/fix/apply_edits.h"

#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <iterator>
#include <map>
#include <stdexcept>

namespace vsa_tools {

namespace {

bool isInside(const TextEdit& edit, std::string_view text) {
  return edit.begin <= edit.end && edit.end <= text.size();
}

/// Returns whether two edits overlap. Two edits that begin at the same place overlap even if one of
/// them is an insertion, because their order is not known.
bool overlaps(const TextEdit& a, const TextEdit& b) {
  return (a.begin < b.end && b.begin < a.end) || a.begin == b.begin;
}

/// Edits that do not overlap, by the place where they begin.
using DisjointEdits = std::multimap<std::uint64_t, const TextEdit&>;

// Returns whether an edit overlaps none of the taken edits. Only the edit before it and the one
// after it can overlap it.
bool isFree(const TextEdit& edit, const DisjointEdits& taken) {
  const auto after = taken.lower_bound(edit.begin);
  if (after != taken.end() && overlaps(edit, after->second)) return false;
  return after == taken.begin() || !overlaps(edit, std::prev(after)->second);
}

[[noreturn]] void throwError(const std::string& path) {
  throw std::runtime_error(path + ": " + std::strerror(errno));
}

void writeAll(int descriptor, std::string_view bytes, const std::string& path) {
  while (!bytes.empty()) {
    const ssize_t count = ::write(descriptor, bytes.data(), bytes.size());
    if (count < 0 && errno != EINTR) throwError(path);
    bytes.remove_prefix(static_cast<std::size_t>(std::max<ssize_t>(count, 0)));
  }
}

/// A new file that is to replace another file in its folder. The destructor removes the new file
/// unless it has replaced the other one.
class Replacement {
 public:
  explicit Replacement(const std::string& path) : path_(path), name_(path + ".XXXXXX") {
    descriptor_ = ::mkstemp(name_.data());
    if (descriptor_ < 0) throwError(path);
  }
  ~Replacement() {
    if (descriptor_ >= 0) ::close(descriptor_);
    if (!isDone_) ::unlink(name_.c_str());
  }
  Replacement(const Replacement&) = delete;
  Replacement& operator=(const Replacement&) = delete;

  void replace(std::string_view bytes) {
    struct stat status {};
    if (::stat(path_.c_str(), &status) != 0) throwError(path_);
    if (::access(path_.c_str(), W_OK) != 0) throwError(path_);
    writeAll(descriptor_, bytes, path_);
    if (::fchmod(descriptor_, status.st_mode & 07777) != 0) throwError(path_);
    if (::fsync(descriptor_) != 0) throwError(path_);
    if (::rename(name_.c_str(), path_.c_str()) != 0) throwError(path_);
    isDone_ = true;
  }

 private:
  std::string path_, name_;
  int descriptor_ = -1;
  bool isDone_ = false;
};

}  // namespace

EditedText withEdits(std::string_view text, const std::vector<std::vector<TextEdit>>& findings) {
  EditedText edited;
  DisjointEdits taken;
  for (const std::vector<TextEdit>& edits : findings) {
    const bool isApplied = !edits.empty() && std::ranges::all_of(edits, [&](const TextEdit& edit) {
      return isInside(edit, text) && isFree(edit, taken);
    });
    if (!isApplied) continue;
    for (const TextEdit& edit : edits) taken.emplace(edit.begin, edit);
    ++edited.fixed;
  }
  std::uint64_t at = 0;
  for (const auto& [begin, edit] : taken) {
    edited.text.append(text, at, begin - at);
    edited.text += edit.text;
    at = edit.end;
  }
  edited.text.append(text, at);
  return edited;
}

void replaceFile(const std::string& path, std::string_view bytes) {
  std::error_code error;
  const std::filesystem::path target = std::filesystem::canonical(path, error);
  if (error) throw std::runtime_error(path + ": " + error.message());
  Replacement(target.native()).replace(bytes);
}

}  // namespace vsa_tools
