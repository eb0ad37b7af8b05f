// Tests of editing buffers, which are inputs or elements of arrays.
#include <array>
#include <cstdint>
#include <cstring>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include <vsa/edit.h>
#include <vsa/write.h>
#include "tests/api/scene_of.h"

namespace {

using api_test::dumpOf;
using api_test::sceneOf;
using vsa::EditError;
using vsa::ElementType;
using vsa::ValueType;

#define EXPECT_DONE(change) EXPECT_EQ((change).error(), EditError::None)
#define EXPECT_REFUSED(change, reason) EXPECT_EQ((change).error(), EditError::reason)

TEST(EditBuffer, MakesBuffers) {
  struct Point {
    float x, y, z;
  };
  vsa::Scene scene;
  const vsa::Node mesh = scene.addNode("mesh", "m");
  EXPECT_DONE(mesh.add("a").setBuffer(ElementType::Float, std::vector<float>{1, 2}));
  EXPECT_DONE(mesh.add("b").setBuffer(ElementType::Pos3f, std::array{1.0F, 2.0F, 3.0F}));
  EXPECT_DONE(mesh.add("c").setBuffer(ElementType::Vec3f,
                                      std::vector<std::array<float, 3>>{{1, 2, 3}, {4, 5, 6}}));
  EXPECT_DONE(mesh.add("d").setBuffer(ElementType::Vec3f, std::vector<Point>{{1, 2, 3}}));
  EXPECT_DONE(mesh.add("e").setBuffer(ElementType::Rgba8, std::array<std::uint8_t, 4>{1, 2, 3, 4}));
  EXPECT_DONE(mesh.add("f").setBuffer(ElementType::Int32, std::vector<std::int32_t>{}));
  EXPECT_DONE(mesh.add("g").setBuffer(ElementType::UInt64,
                                      std::array{std::numeric_limits<std::uint64_t>::max()}));
  vsa::BufferMemory memory = vsa::allocateBuffer(8);
  const void* const address = memory.get();
  std::memset(memory.get(), 0, 8);
  EXPECT_DONE(mesh.add("h").setBuffer(ElementType::Float, 2, std::move(memory)));
  EXPECT_EQ(mesh["h"].buffer().bytes().data(), address);  // moved, not copied
  EXPECT_EQ(dumpOf(scene), dumpOf(sceneOf(R"(
mesh m: .a = float[2] {1 2}; .b = pos3f[1] {1 2 3}; .c = vec3f[2] {1 2 3 4 5 6}; .d = vec3f[1] {1 2 3};
  .e = rgba8[1] {1 2 3 4}; .f = int32[0] {}; .g = uint64[1] {18446744073709551615}; .h = float[2] {0 0};
)")));
}

TEST(EditBuffer, AppendsBuffersAndNoElementWithoutOne) {
  vsa::Scene scene;
  const vsa::Input array = scene.addNode("mesh", "m").add("k");
  EXPECT_DONE(array.makeArray(ValueType::Buffer));
  EXPECT_REFUSED(array.append().status, BadBufferType);
  EXPECT_REFUSED(array.resize(2), BadBufferType);
  EXPECT_REFUSED(array.append(1), OtherElementType);
  EXPECT_REFUSED(array.appendBuffer(ElementType::Float, std::array{1.0}), BufferSize);
  EXPECT_REFUSED(array.appendBufferBytes(ElementType::Bool, {}), BadBufferType);
  EXPECT_TRUE(array.elements().empty());
  EXPECT_DONE(array.appendBuffer(ElementType::Float, std::vector<float>{1, 2}));
  EXPECT_DONE(array.appendBuffer(ElementType::Int32, 0, nullptr));
  EXPECT_EQ(dumpOf(scene), dumpOf(sceneOf("mesh m: .k[0] = float[2] {1 2}; .k[1] = int32[0] {};")));
  EXPECT_TRUE(vsa::writeText(scene).isWritten());
  EXPECT_DONE(array.resize(1));
  EXPECT_REFUSED(vsa::Input().appendBuffer(ElementType::Float, 0, nullptr), Missing);
}

TEST(EditBuffer, RefusesBuffersThatDoNotFit) {
  vsa::Scene scene;
  const vsa::Input a = scene.addNode("mesh", "m").add("a");
  EXPECT_REFUSED(a.setBuffer(ElementType::Vec3f, std::array{1.0F, 2.0F}), BufferSize);
  EXPECT_REFUSED(a.setBuffer(ElementType::Vec3f, std::array{1.0, 2.0, 3.0}), BufferSize);
  EXPECT_REFUSED(a.setBuffer(ElementType::Float, 1, nullptr), BufferSize);
  EXPECT_REFUSED(a.setBuffer(ElementType::Float, ~0ULL, vsa::allocateBuffer(4)), BufferSize);
  EXPECT_REFUSED(a.setBuffer(ElementType::Bool, 0, nullptr), BadBufferType);
  for (const ElementType type : {ElementType::Null, ElementType::Ptr, ElementType::Xformf,
                                 ElementType::Aabbd, ElementType::Obbi, ElementType(60)}) {
    EXPECT_REFUSED(a.setBufferBytes(type, {}), BadBufferType);
  }
  EXPECT_EQ(a.type(), ValueType::Null);
}

}  // namespace
