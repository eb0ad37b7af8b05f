// Tests of sinks of the host: what they receive, and what happens if they fail or throw.
#include <gtest/gtest.h>

#include <exception>
#include <new>
#include <stdexcept>
#include <string>
#include <string_view>

#include <vsa/write.h>
#include "tests/support/text.h"
#include "tests/write/file_fixture.h"
#include "tests/write/scene_builder.h"

namespace vsa_tests {

namespace {

using zn::korvo_sdk::AttrType;

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
  made.fillLarge();
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
  made.fillLarge();
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

class SilentlyFailingSink : public vsa::Sink {
 public:
  bool write(std::string_view) override { return false; }
};

TEST(WriteSink, FailureNeedsNoMessage) {
  SceneBuilder made;
  SilentlyFailingSink sink;
  const vsa::WriteResult result = vsa::writeTo(made.scene, sink);
  EXPECT_EQ(result.status, vsa::WriteStatus::Unwritable);
  EXPECT_EQ(result.message, "");
}

/// A sink whose error() throws. Its write() returns false if `writes` is true, and otherwise
/// throws.
template <class Thrown>
class ThrowingErrorSink : public vsa::Sink {
 public:
  explicit ThrowingErrorSink(bool writes) : writes_(writes) {}
  bool write(std::string_view) override {
    if (writes_) return false;
    throw Thrown();
  }
  std::string error() const override { throw Thrown(); }

 private:
  bool writes_;
};

template <class Thrown>
vsa::WriteResult writtenTo(bool throwsMessage) {
  SceneBuilder made;
  ThrowingErrorSink<Thrown> sink(throwsMessage);
  return vsa::writeTo(made.scene, sink);
}

struct NoStandardException {};

struct ExceptionWithoutText : std::exception {
  const char* what() const noexcept override { return nullptr; }
};

TEST(WriteSink, MessageMayThrow) {
  EXPECT_EQ(writtenTo<std::bad_alloc>(true).status, vsa::WriteStatus::OutOfMemory);
  const vsa::WriteResult result = writtenTo<NoStandardException>(true);
  EXPECT_EQ(result.status, vsa::WriteStatus::HostException);
  EXPECT_THROW(std::rethrow_exception(result.exception), NoStandardException);
}

TEST(WriteSink, ExceptionsWithoutAMessage) {
  const vsa::WriteResult other = writtenTo<NoStandardException>(false);
  EXPECT_EQ(other.status, vsa::WriteStatus::HostException);
  EXPECT_EQ(other.message, "");
  EXPECT_THROW(std::rethrow_exception(other.exception), NoStandardException);
  const vsa::WriteResult textless = writtenTo<ExceptionWithoutText>(false);
  EXPECT_EQ(textless.status, vsa::WriteStatus::HostException);
  EXPECT_EQ(textless.message, "");
  EXPECT_THROW(std::rethrow_exception(textless.exception), ExceptionWithoutText);
}

TEST_F(WriteFile, OwnedSceneIsWrittenToSinksAndFiles) {
  vsa::Scene scene;
  scene.plain().createNode("thing", "n", "");
  FailingSink sink;
  EXPECT_TRUE(vsa::writeTo(scene, sink).isWritten());
  EXPECT_EQ(sink.taken, 9u);
  EXPECT_TRUE(vsa::writeFile(scene, path).isWritten());
  EXPECT_EQ(contentOf(path), "thing n;\n");
  EXPECT_EQ(vsa::writeFile(scene, folder).status, vsa::WriteStatus::Unwritable);
  EXPECT_EQ(vsa::writeFile(scene, folder / std::string(300, 'a')).status,
            vsa::WriteStatus::Unwritable);
  scene.plain().createNode("thing", "a b", "");
  EXPECT_EQ(vsa::writeFile(scene, path).status, vsa::WriteStatus::NotCarried);
}

}  // namespace

}  // namespace vsa_tests
