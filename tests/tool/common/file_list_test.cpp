#include "tools/vsa/common/files/file_list.h"

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>

namespace vsa_tools {
namespace {

namespace fs = std::filesystem;
using Names = std::vector<std::string>;

class FileListTest : public testing::Test {
 protected:
  void SetUp() override {
    const auto* test = testing::UnitTest::GetInstance()->current_test_info();
    folder_ =
        fs::temp_directory_path() / ("vsa_list_" + std::to_string(::getpid()) + "_" + test->name());
    fs::create_directories(folder_);
  }
  void TearDown() override { fs::remove_all(folder_); }

  std::string write(const std::string& name, const std::string& text = "") {
    fs::create_directories((folder_ / name).parent_path());
    std::ofstream(folder_ / name, std::ios::binary) << text;
    return (folder_ / name).native();
  }

  /// Returns the names relative to the folder of the test.
  Names shortened(const Names& names) const {
    Names result;
    for (const std::string& name : names)
      result.push_back(fs::path(name).lexically_relative(folder_).native());
    return result;
  }

  fs::path folder_;
};

TEST_F(FileListTest, AFileIsTakenAsItIsNamed) {
  const FileList list = listFiles({"missing.vsa", "-", "a/../b", "@"});
  EXPECT_EQ((Names{"missing.vsa", "-", "a/../b", "@"}), list.files);
  EXPECT_TRUE(list.problems.empty());
}

TEST_F(FileListTest, StandardInputIsReadOnce) {
  const std::vector<FileListProblem> problem = {{"-", "standard input can be read only once"}};
  const FileList twice = listFiles({"-", "a", "-"});
  EXPECT_EQ((Names{"-", "a"}), twice.files);
  EXPECT_EQ(problem, twice.problems);
  EXPECT_EQ(problem, listFiles({"-", "@-"}).problems);
  EXPECT_EQ(problem, listFiles({"-", "@" + write("list", "-\n")}).problems);
}

TEST_F(FileListTest, AFolderStandsForItsTextsSortedByName) {
  for (const char* name : {"b.vsa", "a.vsa", "sub/z.vsa", "sub/y.txt", ".hidden.vsa", ".git/x.vsa",
                           "a/deep/er.vsa", "vsa"}) {
    write(name);
  }
  const FileList list = listFiles({folder_.native()});
  EXPECT_EQ((Names{"a.vsa", "a/deep/er.vsa", "b.vsa", "sub/z.vsa"}), shortened(list.files));
  EXPECT_TRUE(list.problems.empty());
}

TEST_F(FileListTest, AHiddenFolderThatIsNamedIsSearched) {
  write(".hidden/x.vsa");
  EXPECT_EQ(Names{".hidden/x.vsa"}, shortened(listFiles({(folder_ / ".hidden").native()}).files));
}

TEST_F(FileListTest, LinksToFoldersAreNotFollowed) {
  write("a.vsa");
  fs::create_directory_symlink(folder_, folder_ / "loop");
  fs::create_symlink(folder_ / "a.vsa", folder_ / "b.vsa");
  EXPECT_EQ((Names{"a.vsa", "b.vsa"}), shortened(listFiles({folder_.native()}).files));
}

// Reading a pipe or a device may never end. A missing file is reported when it is opened.
TEST_F(FileListTest, AFolderStandsForItsRegularFiles) {
  write("a.vsa");
  ASSERT_EQ(0, ::mkfifo((folder_ / "pipe.vsa").c_str(), 0600));
  fs::create_symlink("pipe.vsa", folder_ / "pipe_link.vsa");
  fs::create_symlink("/dev/zero", folder_ / "device.vsa");
  fs::create_symlink("a.vsa", folder_ / "link.vsa");
  fs::create_symlink("none", folder_ / "missing.vsa");
  EXPECT_EQ((Names{"a.vsa", "link.vsa", "missing.vsa"}),
            shortened(listFiles({folder_.native()}).files));
  EXPECT_EQ(Names{"pipe.vsa"}, shortened(listFiles({(folder_ / "pipe.vsa").native()}).files));
}

TEST_F(FileListTest, AFolderWithoutTextsIsAProblem) {
  write("empty/readme.txt");
  const FileList list = listFiles({(folder_ / "empty").native()});
  EXPECT_TRUE(list.files.empty());
  ASSERT_EQ(1u, list.problems.size());
  EXPECT_EQ("there are no *.vsa files in this folder", list.problems[0].text);
}

TEST_F(FileListTest, AListNamesFilesAndFolders) {
  const std::string file = write("sub/a.vsa");
  const std::string names = write("names", file + "\n\n  \n" + folder_.native() + "/sub\n@x");
  const FileList list = listFiles({"@" + names});
  ASSERT_EQ(3u, list.files.size());
  EXPECT_EQ(file, list.files[0]);
  EXPECT_EQ(file, list.files[1]);
  EXPECT_EQ("@x", list.files[2]);
}

TEST_F(FileListTest, NamesInAListMayBeSeparatedByNul) {
  using namespace std::string_literals;
  const std::string names = write("names", "a b.vsa\0new\nline.vsa\0"s);
  EXPECT_EQ((Names{"a b.vsa", "new\nline.vsa"}),
            listFiles({"@" + names}, NameSeparator::Nul).files);
}

TEST_F(FileListTest, ANameThatEndsWithANulMayBeBlanks) {
  using namespace std::string_literals;
  const std::string names = write("names", " \0\0\t\r\0"s);
  EXPECT_EQ((Names{" ", "\t\r"}), listFiles({"@" + names}, NameSeparator::Nul).files);
}

TEST_F(FileListTest, AListThatCannotBeReadIsAProblem) {
  const FileList list = listFiles({"@" + (folder_ / "missing").native(), "@" + folder_.native()});
  EXPECT_TRUE(list.files.empty());
  ASSERT_EQ(2u, list.problems.size());
  EXPECT_EQ("No such file or directory", list.problems[0].text);
  EXPECT_EQ("Is a directory", list.problems[1].text);
}

}  // namespace
}  // namespace vsa_tools
