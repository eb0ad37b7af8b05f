// Tests of vsa::Scene: what it owns before and after a move.
#include <vsa/scene.h>

#include <memory>
#include <type_traits>
#include <utility>

#include <gtest/gtest.h>

namespace {

static_assert(!std::is_copy_constructible_v<vsa::Scene>);
static_assert(std::is_nothrow_default_constructible_v<vsa::Scene>);
static_assert(std::is_nothrow_move_constructible_v<vsa::Scene>);
static_assert(std::is_nothrow_move_assignable_v<vsa::Scene>);

TEST(Scene, IsEmptyUntilItIsUsed) {
  const vsa::Scene scene;
  EXPECT_EQ(scene.plain().nodeCount(), 0U);
  EXPECT_EQ(&scene.plain(), &std::as_const(*std::make_unique<vsa::Scene>()).plain());
}

TEST(Scene, MovesItsNodes) {
  vsa::Scene from;
  from.plain().createNode("lamp", "sun", "");
  const zn::korvo_sdk::Scene* const plain = &from.plain();
  vsa::Scene to = std::move(from);
  EXPECT_EQ(&to.plain(), plain);
  EXPECT_EQ(from.plain().nodeCount(), 0U);  // the moved-from scene is empty
  EXPECT_EQ(to.plain().nodeCount(), 1U);
}

}  // namespace
