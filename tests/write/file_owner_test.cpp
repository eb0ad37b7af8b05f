// Tests of the permissions of a replaced file whose owner is another user. Only root can change the
// owner of a file and act as another user. Without root, all files here belong to the same user.
#include <fcntl.h>
#include <grp.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <utility>
#include <vector>

#include <vsa/write.h>
#include "tests/write/file_fixture.h"
#include "tests/write/scene_builder.h"

namespace vsa_tests {

namespace {

constexpr uid_t OTHER_USER = 65534;
constexpr gid_t OTHER_GROUP = 65534;
constexpr gid_t SHARED_GROUP = 100;

struct stat statusOf(const fs::path& path) {
  struct stat status {};
  EXPECT_EQ(::stat(path.c_str(), &status), 0);
  return status;
}

bool isRoot() {
  return ::geteuid() == 0;
}

/// Makes the process act as another user while the object exists, if the process belongs to root.
class OtherUser {
 public:
  OtherUser(gid_t group, gid_t shared)
      : groups_(static_cast<std::size_t>(::getgroups(0, nullptr))) {
    if (!isChanged_) return;
    EXPECT_GE(::getgroups(static_cast<int>(groups_.size()), groups_.data()), 0);
    EXPECT_EQ(::setgroups(1, &shared), 0);
    EXPECT_EQ(::setegid(group), 0);
    EXPECT_EQ(::seteuid(OTHER_USER), 0);
  }
  OtherUser(const OtherUser&) = delete;
  OtherUser& operator=(const OtherUser&) = delete;
  ~OtherUser() {
    if (!isChanged_) return;
    EXPECT_EQ(::seteuid(0), 0);
    EXPECT_EQ(::setegid(::getgid()), 0);
    EXPECT_EQ(::setgroups(groups_.size(), groups_.data()), 0);
  }

 private:
  bool isChanged_ = isRoot();
  std::vector<gid_t> groups_;
};

class WriteFileOfAnotherUser : public WriteFile {
 protected:
  /// Writes the old file with this owner, group and mode.
  void putOldOf(uid_t user, gid_t group, mode_t mode) const {
    putOld();
    ASSERT_EQ(isRoot() ? ::chown(path.c_str(), user, group) : 0, 0);
    ASSERT_EQ(::chmod(path.c_str(), mode), 0);
    ASSERT_EQ(::chmod(folder.c_str(), 0777), 0);
  }

  /// Replaces the file as another user, whose groups are `group` and `shared`. Returns the mode of
  /// the new file.
  mode_t replacedBy(gid_t group, gid_t shared) const {
    SceneBuilder made;
    {
      const OtherUser user(group, shared);
      EXPECT_TRUE(vsa::writeFile(made.scene, path).isWritten());
    }
    EXPECT_EQ(contentOf(path), "thing n;\n");
    return statusOf(path).st_mode & 07777;
  }
};

TEST_F(WriteFileOfAnotherUser, RootKeepsTheOwner) {
  for (const auto& [user, group] : {std::pair{OTHER_USER, OTHER_GROUP}, {uid_t{0}, OTHER_GROUP}}) {
    putOldOf(user, group, 0640);
    SceneBuilder made;
    ASSERT_TRUE(vsa::writeFile(made.scene, path).isWritten());
    const struct stat status = statusOf(path);
    EXPECT_EQ(status.st_uid, isRoot() ? user : ::geteuid());
    EXPECT_EQ(status.st_gid, isRoot() ? group : ::getegid());
    EXPECT_EQ(status.st_mode & 07777, 0640u);
  }
}

// The new file has another owner and another group than the old file. Therefore it loses the
// set-user-ID bit, and its group gets no permissions.
TEST_F(WriteFileOfAnotherUser, OthersLoseWhatTheOwnerAndTheGroupHad) {
  putOldOf(0, 0, 04775);
  EXPECT_EQ(replacedBy(OTHER_GROUP, OTHER_GROUP), isRoot() ? 0705u : 04775u);
}

TEST_F(WriteFileOfAnotherUser, MembersKeepTheGroup) {
  putOldOf(0, SHARED_GROUP, 0664);
  EXPECT_EQ(replacedBy(OTHER_GROUP, SHARED_GROUP), 0664u);
  EXPECT_EQ(statusOf(path).st_gid, isRoot() ? SHARED_GROUP : ::getegid());
  putOldOf(0, SHARED_GROUP, 0660);
  EXPECT_EQ(replacedBy(SHARED_GROUP, SHARED_GROUP), 0660u);
}

TEST_F(WriteFileOfAnotherUser, FolderThatCannotBeListed) {
  putOldOf(0, 0, 0644);
  ASSERT_EQ(::chmod(folder.c_str(), 0333), 0);
  EXPECT_EQ(replacedBy(OTHER_GROUP, OTHER_GROUP), isRoot() ? 0604u : 0644u);
  ASSERT_EQ(::chmod(folder.c_str(), 0700), 0);
}

}  // namespace

}  // namespace vsa_tests
