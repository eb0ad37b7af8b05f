// Tests that files are replaced in one step. Even if writing fails, the path leads to either the
// old file or the new one, and no other file remains beside it. A killed process may leave a
// temporary file. Pipes and devices are not replaced, but written to.
#include <fcntl.h>
#include <gtest/gtest.h>
#include <signal.h>
#include <sys/ioctl.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <atomic>
#include <chrono>
#include <filesystem>
#include <string>
#include <thread>

#include <vsa/file_replacement.h>
#include "tests/support/text.h"
#include "tests/write/file_fixture.h"
#include "tests/write/scene_builder.h"

namespace vsa_tests {

namespace {

namespace fs = std::filesystem;
using zn::korvo_sdk::AttrType;

TEST_F(WriteFile, MakesTheFile) {
  SceneBuilder made;
  const vsa::WriteResult result = vsa::writeFile(made.scene, path);
  EXPECT_TRUE(result.isWritten()) << result.message;
  EXPECT_EQ(result.bytesWritten, 9u);
  EXPECT_EQ(contentOf(path), "thing n;\n");
  EXPECT_EQ(filesInFolder(), 1u);
  struct stat status {};
  const mode_t mask = ::umask(0);
  ::umask(mask);
  ASSERT_EQ(::stat(path.c_str(), &status), 0);
  EXPECT_EQ(status.st_mode & 07777, 0666 & ~mask);
}

TEST_F(WriteFile, ReplacesTheFileAndKeepsItsPermissions) {
  putOld();
  for (const mode_t mode : {0600, 0444, 0755}) {
    ASSERT_EQ(::chmod(path.c_str(), mode), 0);
    SceneBuilder made;
    ASSERT_TRUE(vsa::writeFile(made.scene, path).isWritten());
    struct stat status {};
    ASSERT_EQ(::stat(path.c_str(), &status), 0);
    EXPECT_EQ(status.st_mode & 07777, mode);
    EXPECT_EQ(contentOf(path), "thing n;\n");
    EXPECT_EQ(filesInFolder(), 1u);
  }
}

TEST_F(WriteFile, ReplacesWhatALinkNames) {
  putOld();
  const fs::path inner = folder / "inner", outer = folder / "outer";
  fs::create_symlink("scene.vsa", inner);
  fs::create_symlink(inner, outer);
  SceneBuilder made;
  ASSERT_TRUE(vsa::writeFile(made.scene, outer).isWritten());
  EXPECT_TRUE(fs::is_symlink(outer));
  EXPECT_TRUE(fs::is_symlink(inner));
  EXPECT_EQ(contentOf(path), "thing n;\n");
}

TEST_F(WriteFile, PipeThatALinkOfTheSystemNames) {
  int ends[2];
  ASSERT_EQ(::pipe(ends), 0);
  SceneBuilder made;
  const vsa::WriteResult result =
      vsa::writeFile(made.scene, "/proc/self/fd/" + std::to_string(ends[1]));
  ::close(ends[1]);
  EXPECT_TRUE(result.isWritten()) << result.message;
  char text[16];
  const ssize_t count = ::read(ends[0], text, sizeof text);
  ::close(ends[0]);
  ASSERT_EQ(count, 9);
  EXPECT_EQ(std::string(text, 9), "thing n;\n");
}

TEST_F(WriteFile, LinksInACircle) {
  const fs::path one = folder / "one", other = folder / "other";
  fs::create_symlink(one, other);
  fs::create_symlink(other, one);
  SceneBuilder made;
  EXPECT_EQ(vsa::writeFile(made.scene, one).status, vsa::WriteStatus::Unwritable);
  EXPECT_TRUE(fs::is_symlink(one));
  EXPECT_TRUE(fs::is_symlink(other));
  EXPECT_EQ(filesInFolder(), 2u);
}

TEST_F(WriteFile, PathWithANul) {
  putOld();
  SceneBuilder made;
  const fs::path withNul(path.string() + std::string("\0.vsa", 5));
  const vsa::WriteResult result = vsa::writeFile(made.scene, withNul);
  EXPECT_EQ(result.status, vsa::WriteStatus::Unwritable);
  EXPECT_EQ(result.message, "the path has a NUL");
  expectOld();
}

TEST_F(WriteFile, NobodyElseReadsTheNewFileOfAPrivateOne) {
  putOld();
  ASSERT_EQ(::chmod(path.c_str(), 0600), 0);
  vsa::FileReplacement file;
  ASSERT_TRUE(file.open(path)) << file.error();
  for (const fs::directory_entry& entry : fs::directory_iterator(folder)) {
    EXPECT_EQ(entry.status().permissions() & fs::perms::all, fs::perms(0600)) << entry.path();
  }
  EXPECT_EQ(filesInFolder(), 2u);
  ASSERT_TRUE(file.write("new\n") && file.replace()) << file.error();
  EXPECT_EQ(contentOf(path), "new\n");
}

TEST_F(WriteFile, TextInPiecesOfOneByte) {
  putOld();
  vsa::FileReplacement file;
  ASSERT_TRUE(file.open(path)) << file.error();
  for (const char* const piece : {"n", "e", "w"}) EXPECT_TRUE(file.write(piece)) << file.error();
  EXPECT_TRUE(file.replace()) << file.error();
  EXPECT_EQ(contentOf(path), "new");
}

TEST_F(WriteFile, RelativePath) {
  const fs::path before = fs::current_path();
  fs::current_path(folder);
  SceneBuilder made;
  const vsa::WriteResult result = vsa::writeFile(made.scene, "scene.vsa");
  fs::current_path(before);
  EXPECT_TRUE(result.isWritten()) << result.message;
  EXPECT_EQ(contentOf(path), "thing n;\n");
}

TEST_F(WriteFile, ProblemLeavesTheOldFile) {
  putOld();
  SceneBuilder made;
  made.input("a b", AttrType::Bool);
  EXPECT_EQ(vsa::writeFile(made.scene, path).status, vsa::WriteStatus::NotCarried);
  expectOld();
}

TEST_F(WriteFile, FolderThatDoesNotExist) {
  SceneBuilder made;
  const vsa::WriteResult result = vsa::writeFile(made.scene, folder / "none" / "scene.vsa");
  EXPECT_EQ(result.status, vsa::WriteStatus::Unwritable);
  EXPECT_NE(result.message.find("No such file or directory"), std::string::npos);
  EXPECT_EQ(filesInFolder(), 0u);
}

TEST_F(WriteFile, FolderInsteadOfAFile) {
  SceneBuilder made;
  const vsa::WriteResult result = vsa::writeFile(made.scene, folder);
  EXPECT_EQ(result.status, vsa::WriteStatus::Unwritable);
  EXPECT_NE(result.message.find("Is a directory"), std::string::npos) << result.message;
}

TEST_F(WriteFile, DeviceWithoutSpace) {
  SceneBuilder made;
  const vsa::WriteResult result = vsa::writeFile(made.scene, "/dev/full");
  EXPECT_EQ(result.status, vsa::WriteStatus::Unwritable);
  EXPECT_NE(result.message.find("No space left on device"), std::string::npos);
  EXPECT_TRUE(fs::is_character_file("/dev/full"));
}

TEST_F(WriteFile, PipeIsWrittenTo) {
  const fs::path pipe = folder / "pipe";
  ASSERT_EQ(::mkfifo(pipe.c_str(), 0600), 0);
  std::string received;
  std::thread reader([&] { received = contentOf(pipe); });
  SceneBuilder made;
  EXPECT_TRUE(vsa::writeFile(made.scene, pipe).isWritten());
  reader.join();
  EXPECT_EQ(received, "thing n;\n");
  EXPECT_TRUE(fs::is_fifo(pipe));
}

TEST_F(WriteFile, NameThatIsTooLong) {
  SceneBuilder made;
  const vsa::WriteResult result = vsa::writeFile(made.scene, folder / std::string(300, 'a'));
  EXPECT_EQ(result.status, vsa::WriteStatus::Unwritable);
  EXPECT_NE(result.message.find("cannot replace"), std::string::npos) << result.message;
  EXPECT_EQ(filesInFolder(), 0u);
}

TEST_F(WriteFile, LinkThatLeadsToItself) {
  fs::create_symlink("scene.vsa", path);
  SceneBuilder made;
  const vsa::WriteResult result = vsa::writeFile(made.scene, path);
  EXPECT_EQ(result.status, vsa::WriteStatus::Unwritable);
  EXPECT_NE(result.message.find("Too many levels of symbolic links"), std::string::npos);
  EXPECT_TRUE(fs::is_symlink(path));
  EXPECT_EQ(filesInFolder(), 1u);
}

std::atomic<int> signals = 0;

// A pipe has room for some 64 KiB. When it is full, the writer waits for the reader, and signals
// interrupt the writer.
TEST_F(WriteFile, SignalsDoNotEndTheWriting) {
  const fs::path pipe = folder / "pipe";
  ASSERT_EQ(::mkfifo(pipe.c_str(), 0600), 0);
  struct sigaction counts {};
  struct sigaction before {};
  counts.sa_handler = [](int) { ++signals; };
  ::sigaction(SIGUSR1, &counts, &before);
  SceneBuilder made;
  made.fillLarge();
  const pthread_t writer = ::pthread_self();
  std::string received;
  std::thread reader([&] {
    const int end = ::open(pipe.c_str(), O_RDONLY | O_CLOEXEC);
    int bytes = 0, last = -1;
    for (int i = 0; i < 3000 && (signals < 20 || bytes != last); ++i) {
      last = bytes;
      ::pthread_kill(writer, SIGUSR1);
      std::this_thread::sleep_for(std::chrono::milliseconds(10));
      ::ioctl(end, FIONREAD, &bytes);
      if (bytes == 0) last = -1;
    }
    char block[4096];
    for (ssize_t count = 1; count > 0;) {
      count = ::read(end, block, sizeof block);
      if (count > 0) received.append(block, static_cast<std::size_t>(count));
    }
    ::close(end);
  });
  const vsa::WriteResult result = vsa::writeFile(made.scene, pipe);
  reader.join();
  ::sigaction(SIGUSR1, &before, nullptr);
  EXPECT_TRUE(result.isWritten()) << result.message;
  EXPECT_EQ(received, vsa::writeText(made.scene).text);
}

/// A replacement of a file. Its file descriptor has been closed, as a host may do by mistake.
class ClosedReplacement {
 public:
  explicit ClosedReplacement(const fs::path& path) {
    const int next = ::open("/dev/null", O_RDONLY | O_CLOEXEC);
    ::close(next);
    EXPECT_TRUE(file.open(path));
    EXPECT_EQ(::close(next), 0);
  }

  vsa::FileReplacement file;
};

TEST_F(WriteFile, ClosedDescriptorLeavesTheOldFile) {
  ClosedReplacement made(path);
  EXPECT_FALSE(made.file.write("new\n"));
  EXPECT_FALSE(made.file.replace());
  EXPECT_NE(made.file.error().find("Bad file descriptor"), std::string::npos);
  putOld();
  ClosedReplacement replacing(path);
  EXPECT_FALSE(replacing.file.replace());
  EXPECT_EQ(contentOf(path), "old\n");
}

TEST_F(WriteFile, ReplacesNothingAfterAFailure) {
  vsa::FileReplacement unopened;
  EXPECT_FALSE(unopened.replace());
  EXPECT_EQ(unopened.error(), "no file is open");
  vsa::FileReplacement failed;
  EXPECT_FALSE(failed.open(folder / "nosuch" / "a.vsa"));
  const std::string reason = failed.error();
  EXPECT_NE(reason, "");
  EXPECT_FALSE(failed.replace());
  EXPECT_EQ(failed.error(), reason);
  EXPECT_EQ(filesInFolder(), 0U);
}

TEST_F(WriteFile, ObjectWithoutAFileClosesNoDescriptor) {
  const int status = inChild([&] {
    const int input = ::dup2(::open("/dev/null", O_RDONLY), STDIN_FILENO);
    {
      vsa::FileReplacement unopened;
      vsa::FileReplacement failed;
      if (failed.open(path.string() + std::string(1, '\0'))) return 1;
    }
    return ::fcntl(input, F_GETFD) != -1 ? 7 : 1;
  });
  ASSERT_TRUE(WIFEXITED(status));
  EXPECT_EQ(WEXITSTATUS(status), 7);
}

// After a failed write, the new file is not complete. Therefore it does not replace the old file.
TEST_F(WriteFile, AFailedWriteLeavesTheOldFile) {
  putOld();
  const int status = inChild([&] {
    ::signal(SIGXFSZ, SIG_IGN);
    vsa::FileReplacement file;
    const rlimit limit{4096, 4096};
    ::setrlimit(RLIMIT_FSIZE, &limit);
    const bool isWritten = file.open(path) && file.write(std::string(5000, 'x'));
    return !isWritten && !file.replace() && !file.error().empty() ? 7 : 1;
  });
  ASSERT_TRUE(WIFEXITED(status));
  EXPECT_EQ(WEXITSTATUS(status), 7);
  expectOld();
}

TEST_F(WriteFile, FullDiskLeavesTheOldFile) {
  putOld();
  SceneBuilder made;
  made.fillLarge();
  const int status = inChild([&] {
    ::signal(SIGXFSZ, SIG_IGN);
    const rlimit limit{1 << 20, 1 << 20};
    ::setrlimit(RLIMIT_FSIZE, &limit);
    const vsa::WriteResult result = vsa::writeFile(made.scene, path);
    return result.status == vsa::WriteStatus::Unwritable && !result.message.empty() ? 7 : 1;
  });
  ASSERT_TRUE(WIFEXITED(status));
  EXPECT_EQ(WEXITSTATUS(status), 7);
  expectOld();
}

TEST_F(WriteFile, KilledProcessLeavesTheOldFileOrTheNewOne) {
  SceneBuilder made;
  made.fillLarge();
  const std::string whole = vsa::writeText(made.scene).text;
  int leftOld = 0;
  for (int delay = 0; delay < 40; ++delay) {
    putOld();
    const pid_t child = ::fork();
    if (child == 0) ::_exit(vsa::writeFile(made.scene, path).isWritten() ? 0 : 1);
    std::this_thread::sleep_for(std::chrono::milliseconds(delay));
    ::kill(child, SIGKILL);
    int status = 0;
    ::waitpid(child, &status, 0);
    const std::string now = contentOf(path);
    ASSERT_TRUE(now == "old\n" || now == whole) << now.size();
    leftOld += now == "old\n" ? 1 : 0;
  }
  EXPECT_GT(leftOld, 0);
}

}  // namespace

}  // namespace vsa_tests
