#include <vsa/file_replacement.h>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <random>
#include <system_error>
#include <utility>

namespace vsa {

namespace fs = std::filesystem;

namespace {

// A name that no file has, most likely: a dot hides it from listings, and 64 random bits follow.
std::string temporaryName(const fs::path& target) {
  constexpr char DIGITS[] = "0123456789abcdef";
  std::random_device random;
  std::string name = '.' + target.filename().string().substr(0, 200) + '.';
  for (int word = 0; word < 2; ++word) {
    const unsigned bits = random();
    for (unsigned shift = 0; shift < 32; shift += 4) name += DIGITS[(bits >> shift) & 15];
  }
  return name + ".tmp";
}

// The file that a symbolic link names, through other links too; the path itself if it is no link.
fs::path linkedFile(fs::path path) {
  constexpr int MAX_LINKS = 40;
  std::error_code error;
  for (int i = 0; i < MAX_LINKS && fs::is_symlink(path, error); ++i) {
    path = path.parent_path() / fs::read_symlink(path, error);
  }
  return path;
}

// A close that a signal interrupts has closed the file.
void closeFile(int& file) {
  if (file >= 0) ::close(file);
  file = -1;
}

// So that the new name is on the disk, too. The file is complete in any case.
void syncFolder(const char* name) {
  int folder = ::open(name, O_RDONLY | O_DIRECTORY | O_CLOEXEC);
  if (folder >= 0) ::fsync(folder);
  closeFile(folder);
}

}  // namespace

FileReplacement::~FileReplacement() {
  closeFile(file_);
  if (!temporary_.empty()) ::unlink(temporary_.c_str());
}

bool FileReplacement::fail(const char* what) {
  const int number = errno;
  error_ =
      std::string(what) + ' ' + target_.string() + ": " + std::generic_category().message(number);
  return false;
}

bool FileReplacement::open(const fs::path& path) {
  target_ = linkedFile(path);
  struct stat status {};
  const bool exists = ::stat(target_.c_str(), &status) == 0;
  if (!exists && errno == ELOOP) return fail("cannot write");
  if (!exists || S_ISREG(status.st_mode)) return openBeside();
  file_ = ::open(target_.c_str(), O_WRONLY | O_CLOEXEC);
  if (file_ < 0) return fail("cannot write");
  return true;
}

bool FileReplacement::openBeside() {
  fs::path name = target_.parent_path() / temporaryName(target_);
  file_ = ::open(name.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0666);
  if (file_ < 0) return fail("cannot write beside");
  temporary_ = std::move(name);
  return true;
}

bool FileReplacement::write(std::string_view text) {
  while (!text.empty()) {
    const ssize_t written = ::write(file_, text.data(), text.size());
    if (written > 0) {
      text.remove_prefix(static_cast<std::size_t>(written));
    } else if (written == 0 || errno != EINTR) {
      return fail("cannot write");
    }
  }
  return true;
}

bool FileReplacement::replace() {
  if (temporary_.empty()) return true;
  if (!keepPermissions() || !makeDurable()) return false;
  const fs::path parent = target_.parent_path();  // here, because there may be no memory for it
  if (::rename(temporary_.c_str(), target_.c_str()) != 0) return fail("cannot replace");
  temporary_.clear();
  syncFolder(parent.empty() ? "." : parent.c_str());
  return true;
}

// The owner is kept where the process may do so. Without it, the permissions of the old group would
// go to another one, so those are dropped.
bool FileReplacement::keepPermissions() {
  struct stat old {};
  if (::stat(target_.c_str(), &old) != 0) return true;
  mode_t mode = old.st_mode & 07777;
  struct stat made {};
  if (::fstat(file_, &made) != 0) return fail("cannot write");
  if ((made.st_uid != old.st_uid || made.st_gid != old.st_gid) &&
      ::fchown(file_, old.st_uid, old.st_gid) != 0) {
    mode &= ~static_cast<mode_t>(S_ISUID | S_ISGID);
    if (made.st_gid != old.st_gid && ::fchown(file_, static_cast<uid_t>(-1), old.st_gid) != 0) {
      mode &= ~static_cast<mode_t>(S_IRWXG);
    }
  }
  if (::fchmod(file_, mode) != 0) return fail("cannot set the permissions of");
  return true;
}

bool FileReplacement::makeDurable() {
  while (::fsync(file_) != 0) {
    if (errno != EINTR) return fail("cannot write");
  }
  const int closed = ::close(file_);
  file_ = -1;
  if (closed != 0 && errno != EINTR) return fail("cannot write");
  return true;
}

}  // namespace vsa
