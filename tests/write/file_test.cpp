// Files are replaced in one step: whatever happens to a writing, the old file or the new one is
// there, and nothing else.
#include <fcntl.h>
#include <gtest/gtest.h>
#include <signal.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <string>
#include <thread>
#include <vector>

#include "tests/support/text.h"
#include "tests/write/round_trip.h"
#include "tests/write/scene_builder.h"

namespace vsa_tests {

namespace {

namespace fs = std::filesystem;
using zn::korvo_sdk::AttrType;
using zn::korvo_sdk::DataType;
using zn::korvo_sdk::Scene;

/// A folder that exists during a test.
class WriteFile : public testing::Test {
 protected:
  WriteFile() {
    const testing::TestInfo* const test = testing::UnitTest::GetInstance()->current_test_info();
    folder = fs::path(testing::TempDir()) /
             ("vsa_write_" + std::to_string(::getpid()) + '_' + test->name());
    fs::create_directory(folder);
    path = folder / "scene.vsa";
  }
  ~WriteFile() override { fs::remove_all(folder); }

  void putOld() const { std::ofstream(path, std::ios::binary) << "old\n"; }

  std::size_t filesInFolder() const {
    return static_cast<std::size_t>(
        std::distance(fs::directory_iterator(folder), fs::directory_iterator()));
  }

  /// Expects the old file and no other.
  void expectOld() const {
    EXPECT_EQ(contentOf(path), "old\n");
    EXPECT_EQ(filesInFolder(), 1u);
  }

  fs::path folder, path;
};

/// Some megabytes of text.
void fillLarge(SceneBuilder& made) {
  SceneBuilder::setBuffer(made.input("x", AttrType::Buffer), DataType::Double,
                          std::vector<double>(1000000, 0.1));
}

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

/// Runs `run` in a child process and returns its wait status.
template <class Run>
int inChild(const Run& run) {
  const pid_t child = ::fork();
  if (child == 0) ::_exit(run());
  int status = 0;
  ::waitpid(child, &status, 0);
  return status;
}

TEST_F(WriteFile, FullDiskLeavesTheOldFile) {
  putOld();
  SceneBuilder made;
  fillLarge(made);
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
  fillLarge(made);
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

// --- sinks ---

class FailingSink : public vsa::Sink {
 public:
  bool write(std::string_view text) override {
    taken += text.size();
    return taken < 100000;
  }
  std::string error() const override { return "no more"; }

  std::size_t taken = 0;
};

TEST(WriteSink, FailureEndsTheWriting) {
  SceneBuilder made;
  fillLarge(made);
  FailingSink sink;
  const vsa::WriteResult result = vsa::writeTo(made.scene, sink);
  EXPECT_EQ(result.status, vsa::WriteStatus::Unwritable);
  EXPECT_EQ(result.message, "no more");
  EXPECT_LT(sink.taken, 200000u);
}

class ThrowingSink : public vsa::Sink {
 public:
  bool write(std::string_view) override { throw std::runtime_error("thrown"); }
};

TEST(WriteSink, ExceptionIsKept) {
  SceneBuilder made;
  ThrowingSink sink;
  const vsa::WriteResult result = vsa::writeTo(made.scene, sink);
  EXPECT_EQ(result.status, vsa::WriteStatus::HostException);
  EXPECT_EQ(result.message, "thrown");
  EXPECT_THROW(std::rethrow_exception(result.exception), std::runtime_error);
}

TEST(WriteSink, ProblemWritesNothing) {
  SceneBuilder made;
  fillLarge(made);
  made.input("a b", AttrType::Bool);
  FailingSink sink;
  EXPECT_EQ(vsa::writeTo(made.scene, sink).status, vsa::WriteStatus::NotCarried);
  EXPECT_EQ(sink.taken, 0u);
}

TEST(WriteSink, OwnedSceneIsWritten) {
  vsa::Scene scene;
  EXPECT_EQ(vsa::writeText(scene).text, "");
  scene.plain().createNode("thing", "n", "");
  EXPECT_EQ(vsa::writeText(scene).text, "thing n;\n");
}

}  // namespace

}  // namespace vsa_tests
