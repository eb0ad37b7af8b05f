// Tests of typed buffers: which C++ type reads which element type, and which problem other types
// give.
#include <vsa/values/buffer_view.h>

#include <array>
#include <cstdint>
#include <numeric>
#include <string>

#include <gtest/gtest.h>

#include "tests/api/scene_of.h"

namespace {

using api_test::sceneOf;
using vsa::BufferProblem;
using vsa::ElementType;
using vsa::InputView;

TEST(TypedBuffer, GivesElementsWithoutACopy) {
  const vsa::Scene scene = sceneOf("mesh m: .points = pos3f[2] {1 2 3, 4 5 6};");
  const vsa::TypedBuffer points = scene["m"]["points"].buffer<float, 3>();
  EXPECT_EQ(points.problem(), BufferProblem::None);
  EXPECT_EQ(points.message(), "");
  ASSERT_EQ(points.size(), 2U);
  EXPECT_EQ(points[1], (std::array{4.0F, 5.0F, 6.0F}));
  EXPECT_EQ(points.numbers().size(), 6U);
  EXPECT_EQ(points.numbers()[3], 4.0F);
  const std::span<const std::array<float, 3>> span = points;
  EXPECT_EQ(static_cast<const void*>(span.data()), scene["m"]["points"].plain()->buffer().memory);
  float sum = 0;
  for (const auto& [x, y, z] : points) sum += x + y + z;
  EXPECT_EQ(sum, 21.0F);
}

TEST(TypedBuffer, GivesSingleNumbers) {
  const vsa::Scene scene = sceneOf("mesh m: .ids = uint32[4] {1 2 3 4};");
  const auto ids = scene["m"]["ids"].buffer<std::uint32_t>();
  EXPECT_EQ(std::accumulate(ids.begin(), ids.end(), 0U), 10U);
}

TEST(TypedBuffer, SaysWhyItIsEmpty) {
  const vsa::Scene scene =
      sceneOf("mesh m: .p = vec3d[1] {1 2 3}; .c = rgba8[1] {1 2 3 4}; .x = 1;");
  const InputView p = scene["m"]["p"];
  EXPECT_EQ((p.buffer<float, 3>().problem()), BufferProblem::OtherComponentType);
  EXPECT_EQ((p.buffer<float, 3>().message()), "a buffer of Vec3d, not of 3 Float");
  EXPECT_EQ((p.buffer<double, 4>().problem()), BufferProblem::OtherComponentCount);
  EXPECT_EQ(p.buffer<double>().message(), "a buffer of Vec3d, not of Double");
  EXPECT_TRUE(p.buffer<double>().empty());
  EXPECT_EQ(scene["m"]["x"].buffer<float>().problem(), BufferProblem::NotABuffer);
  EXPECT_EQ(scene["m"]["x"].buffer<float>().message(), "not a buffer");
  EXPECT_EQ(scene["m"]["y"].buffer<float>().problem(), BufferProblem::Missing);
  EXPECT_EQ(scene["m"]["y"].buffer<float>().message(), "no such input");
  EXPECT_EQ((scene["m"]["c"].buffer<std::uint8_t, 4>().size()), 1U);
}

TEST(TypedBuffer, TellsAnEmptyBufferFromAnotherType) {
  const vsa::Scene scene = sceneOf("mesh m: .p = float[0] {};");
  const auto p = scene["m"]["p"].buffer<float>();
  EXPECT_TRUE(p.empty());
  EXPECT_EQ(p.begin(), p.end());
  EXPECT_EQ(p.problem(), BufferProblem::None);
  EXPECT_EQ(scene["m"]["p"].buffer<double>().problem(), BufferProblem::OtherComponentType);
}

TEST(BufferView, GivesTypeCountAndBytes) {
  const vsa::Scene scene = sceneOf("mesh m: .p = vec2f[3] {1 2 3 4 5 6}; .x = 1;");
  const vsa::BufferView p = scene["m"]["p"].buffer();
  EXPECT_EQ(p.elementType(), ElementType::Vec2f);
  EXPECT_EQ(p.count(), 3U);
  EXPECT_EQ(p.bytes().size(), 24U);
  EXPECT_EQ(p.problem(), BufferProblem::None);
  EXPECT_EQ(scene["m"]["x"].buffer().problem(), BufferProblem::NotABuffer);
  EXPECT_EQ(scene["m"]["x"].buffer().count(), 0U);
  EXPECT_EQ(scene["m"]["x"].buffer().elementType(), ElementType::Null);
}

// Returns how many of the component counts from 1 to 16 allow the buffer to be read with components
// of type T. The sum over all T must be 1.
template <class T, std::size_t... Counts>
int matches(const vsa::BufferView& view, std::index_sequence<Counts...>) {
  return ((view.as<T, Counts + 1>().problem() == BufferProblem::None ? 1 : 0) + ...);
}

TEST(TypedBuffer, MatchesEachElementTypeOnce) {
  using All = std::make_index_sequence<16>;
  for (int i = 1; i < zn::korvo_sdk::DATA_TYPE_COUNT; ++i) {
    const auto type = static_cast<ElementType>(i);
    if (type == ElementType::Ptr) continue;  // addresses cannot be read as numbers
    const vsa::BufferView view(zn::korvo_sdk::BufferValue{
        .memory = nullptr, .count = 0, .bytes = 0, .type = type, .reserved = 0});
    EXPECT_EQ(matches<signed char>(view, All()) + matches<std::uint8_t>(view, All()) +
                  matches<std::int16_t>(view, All()) + matches<std::uint16_t>(view, All()) +
                  matches<std::int32_t>(view, All()) + matches<std::uint32_t>(view, All()) +
                  matches<std::int64_t>(view, All()) + matches<std::uint64_t>(view, All()) +
                  matches<float>(view, All()) + matches<double>(view, All()) +
                  matches<bool>(view, All()),
              1)
        << vsa::typeName(type);
  }
}

static_assert(vsa::BufferElement<long> && vsa::BufferElement<long long> &&
              vsa::BufferElement<char>);
static_assert(!vsa::BufferElement<void*> && !vsa::BufferElement<float, 0>);
static_assert(!vsa::BufferElement<long double>);

}  // namespace
