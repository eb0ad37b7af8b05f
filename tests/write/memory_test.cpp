// Tests of the memory for writing: it stays below a bound even if the text is larger, and a failed
// allocation is reported.
#include <gtest/gtest.h>

#include <filesystem>
#include <string>

#include "tests/support/allocation_tracker.h"
#include "tests/support/disk_file.h"
#include "tests/support/text.h"
#include "tests/write/round_trip.h"
#include "tests/write/scene_builder.h"

namespace vsa_tests {

namespace {

using zn::korvo_sdk::AttrType;
using zn::korvo_sdk::DataType;
using zn::korvo_sdk::Input;
using zn::korvo_sdk::Scene;

constexpr std::int64_t MAX_BYTES = std::int64_t{8} << 20;

class CountingSink final : public vsa::Sink {
 public:
  bool write(std::string_view text) override {
    bytes += text.size();
    return true;
  }

  std::uint64_t bytes = 0;
};

/// Adds nodes, arrays, strings and buffers that need more than 9 MB of text.
void fill(Scene& scene) {
  SceneBuilder made;
  for (int i = 0; i < 150000; ++i) {
    zn::korvo_sdk::Node& node =
        *scene.createNode("thing", ("node" + std::to_string(i)).c_str(), "");
    SceneBuilder::setReal(static_cast<Input&>(*node.createInput("x", AttrType::Real)), 0.1 * i);
    node.createInput("r", AttrType::Node)->setNode(&node);
  }
  zn::korvo_sdk::Node& large = *scene.createNode("thing", "large", "");
  std::vector<unsigned char> bytes(3000000);
  for (std::size_t i = 0; i < bytes.size(); ++i) {
    bytes[i] = static_cast<unsigned char>(i * 2654435761U >> 13);
  }
  SceneBuilder::setBuffer(static_cast<Input&>(*large.createInput("b", AttrType::Buffer)),
                          DataType::Rgb8, bytes);
  Input& array = static_cast<Input&>(*large.createArray("a", AttrType::Int));
  for (int i = 0; i < 100000; ++i) array.appendElement();
  SceneBuilder::setString(static_cast<Input&>(*large.createInput("s", AttrType::String)),
                          std::string(3000000, '"'));
}

std::int64_t peakOf(const Scene& scene, const vsa::WriteOptions& options) {
  CountingSink sink;
  AllocationTracker::start();
  const vsa::WriteResult result = vsa::writeTo(scene, sink, options);
  AllocationTracker::stop();
  EXPECT_TRUE(result.isWritten()) << result.message;
  EXPECT_GT(sink.bytes, 9000000u);
  EXPECT_EQ(sink.bytes, result.bytesWritten);
  return AllocationTracker::count().peakBytes;
}

TEST(WriteMemory, IsBoundedForSeveralForms) {
  Scene scene;
  fill(scene);
  std::vector<vsa::WriteOptions> forms(4);
  forms[1].buffers = vsa::BufferForm::Compressed;
  forms[2].order = vsa::NodeOrder::Name;
  forms[2].links = vsa::LinkPlace::Last;
  forms[3].lossy = true;
  for (const vsa::WriteOptions& options : forms) EXPECT_LT(peakOf(scene, options), MAX_BYTES);
}

TEST(WriteMemory, LongCommentsAreNotCopied) {
  for (const std::string key : {"note", "time"}) {
    const std::string comment = "# " + key + ": " + std::string(12 << 20, 'x');
    Scene scene;
    ASSERT_TRUE(readInto(scene, comment + "\nthing a;").result);
    EXPECT_LT(peakOf(scene, {}), MAX_BYTES) << key;
  }
}

TEST(WriteMemory, DeepScenesAreWalkedWithoutRecursion) {
  SceneBuilder made;
  made.scene.setDepthLimit(Scene::MAX_DEPTH_LIMIT);
  Input* input = &made.input("o", AttrType::Object);
  for (int level = 2; level < 3000; ++level) {
    input = static_cast<Input*>(input->createInput("o", AttrType::Object));
  }
  input->createInput("x", AttrType::Int);
  CountingSink sink;
  AllocationTracker::start();
  EXPECT_TRUE(vsa::writeTo(made.scene, sink).isWritten());
  AllocationTracker::stop();
  EXPECT_LT(AllocationTracker::count().peakBytes, MAX_BYTES);
  Scene again;
  again.setDepthLimit(Scene::MAX_DEPTH_LIMIT);
  ASSERT_TRUE(readInto(again, vsa::writeText(made.scene).text).result);
  EXPECT_EQ(dumpOf(made.scene), dumpOf(again));
}

/// Makes a scene whose writing requires several kinds of memory: names of temporary files, paths,
/// and problems.
void fillSmall(SceneBuilder& made) {
  made.array("array", AttrType::Object).appendElement();
  SceneBuilder::setBuffer(made.input("b", AttrType::Buffer), DataType::Byte,
                          std::vector<unsigned char>(100));
  made.input("a name that is no identifier and fits no small string", AttrType::Bool);
}

/// Returns the number of temporary files that remain in the folder of `path`.
std::size_t newFilesBeside(const std::filesystem::path& path) {
  const std::string start = "." + path.filename().string() + ".";
  std::size_t count = 0;
  for (const auto& entry : std::filesystem::directory_iterator(path.parent_path())) {
    if (entry.path().filename().string().starts_with(start)) ++count;
  }
  return count;
}

TEST(WriteMemory, EveryFailedAllocationLeavesTheOldFile) {
  SceneBuilder made;
  fillSmall(made);
  const DiskFile file("old\n");
  const std::filesystem::path path = file.path();
  vsa::WriteOptions options;
  options.lossy = true;
  options.buffers = vsa::BufferForm::Compressed;
  for (std::uint64_t n = 1;; ++n) {
    AllocationTracker::start();
    AllocationTracker::failAt(n, n % 2 == 0);
    const vsa::WriteResult result = vsa::writeFile(made.scene, path, options);
    const bool hasFailed = AllocationTracker::hasFailed();
    AllocationTracker::failAt(0, false);
    AllocationTracker::stop();
    if (!hasFailed) {
      EXPECT_TRUE(result.isWritten()) << result.message;
      break;
    }
    EXPECT_EQ(result.status, vsa::WriteStatus::OutOfMemory) << n << result.message;
    ASSERT_EQ(contentOf(path), "old\n") << n;
    ASSERT_EQ(newFilesBeside(path), 0u) << n;
  }
  EXPECT_NE(contentOf(path), "old\n");
}

TEST(WriteMemory, FailedAllocationsOfATextLeaveNone) {
  SceneBuilder made;
  fillSmall(made);
  for (std::uint64_t n = 1;; ++n) {
    AllocationTracker::start();
    AllocationTracker::failAt(n, false);
    const vsa::TextResult result = vsa::writeText(made.scene);
    const bool hasFailed = AllocationTracker::hasFailed();
    AllocationTracker::failAt(0, false);
    AllocationTracker::stop();
    EXPECT_EQ(result.text, "");
    EXPECT_EQ(result.status,
              hasFailed ? vsa::WriteStatus::OutOfMemory : vsa::WriteStatus::NotCarried);
    if (!hasFailed) break;
  }
}

}  // namespace

}  // namespace vsa_tests
