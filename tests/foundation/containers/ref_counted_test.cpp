// Tests of reference-counted handles: the object is deleted with its last handle.
#include <vsa/foundation/ref_counted.h>

#include <gtest/gtest.h>

#include <thread>
#include <utility>
#include <vector>

namespace zn {
namespace {

class Counted final : public RefCounted {
 public:
  explicit Counted(int& deleted) : deleted_(deleted) {}
  int number = 7;

 private:
  ~Counted() override { ++deleted_; }
  int& deleted_;
};

class Handle : public RefersTo<Counted> {
 public:
  using RefersTo<Counted>::RefersTo;
  Counted* get() const { return object(); }
};

TEST(RefCounted, IsDeletedWithTheLastHandle) {
  int deleted = 0;
  {
    const Handle first(new Counted(deleted));
    {
      const Handle second = first;  // NOLINT: the copy is the point
      EXPECT_EQ(second.get(), first.get());
    }
    EXPECT_EQ(deleted, 0);
    EXPECT_EQ(first.get()->number, 7);
  }
  EXPECT_EQ(deleted, 1);
}

TEST(RefCounted, AssignmentReleasesTheOldObject) {
  int first = 0;
  int second = 0;
  Handle a(new Counted(first));
  Handle b(new Counted(second));
  a = b;
  EXPECT_EQ(first, 1);
  EXPECT_EQ(second, 0);
  EXPECT_EQ(a.get(), b.get());
  b = Handle();
  EXPECT_EQ(second, 0);
  a = Handle();
  EXPECT_EQ(second, 1);
}

TEST(RefCounted, SelfAssignmentKeepsTheObject) {
  int deleted = 0;
  Handle a(new Counted(deleted));
  const Handle& same = a;
  a = same;
  EXPECT_EQ(deleted, 0);
  EXPECT_EQ(a.get()->number, 7);
}

TEST(RefCounted, MovingTransfersTheObject) {
  int deleted = 0;
  {
    Handle a(new Counted(deleted));
    const Handle b(std::move(a));
    EXPECT_EQ(a.get(), nullptr);  // NOLINT: a moved-from handle holds none
    EXPECT_EQ(b.get()->number, 7);
    EXPECT_EQ(deleted, 0);
  }
  EXPECT_EQ(deleted, 1);
}

TEST(RefCounted, CountsFromSeveralThreads) {
  int deleted = 0;
  {
    const Handle shared(new Counted(deleted));
    std::vector<std::thread> threads;
    for (int i = 0; i < 4; ++i) {
      threads.emplace_back([&shared] {
        for (int k = 0; k < 10000; ++k) const Handle copy = shared;  // NOLINT: counts only
      });
    }
    for (std::thread& thread : threads) thread.join();
    EXPECT_EQ(deleted, 0);
  }
  EXPECT_EQ(deleted, 1);
}

}  // namespace
}  // namespace zn
