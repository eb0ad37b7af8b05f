// Tests of the math types: their components in storage order, and their constants.
#include <vsa/foundation/math_types.h>

#include <gtest/gtest.h>

#include <type_traits>

namespace zn::math {
namespace {

static_assert(sizeof(VecT<2, double>) == 2 * sizeof(double));
static_assert(sizeof(VecT<3, double>) == 3 * sizeof(double));
static_assert(sizeof(VecT<4, double>) == 4 * sizeof(double));
static_assert(sizeof(PosT<2, double>) == 2 * sizeof(double));
static_assert(sizeof(PosT<3, double>) == 3 * sizeof(double));
static_assert(sizeof(QuatT<double>) == 4 * sizeof(double));
static_assert(sizeof(RgbaT<double>) == 4 * sizeof(double));
static_assert(sizeof(MatT<3, double>) == 9 * sizeof(double));
static_assert(sizeof(MatT<4, double>) == 16 * sizeof(double));
static_assert(std::is_trivially_copyable_v<MatT<4, double>>);

TEST(MathTypes, ZeroPosition) {
  for (const double component : PosT<3, double>::zero.components) EXPECT_EQ(component, 0.0);
}

TEST(MathTypes, IdentityMatrices) {
  for (int i = 0; i < 9; ++i) {
    EXPECT_EQ((MatT<3, double>::identity.components[i]), i % 4 == 0 ? 1.0 : 0.0) << i;
  }
  for (int i = 0; i < 16; ++i) {
    EXPECT_EQ((MatT<4, double>::identity.components[i]), i % 5 == 0 ? 1.0 : 0.0) << i;
  }
}

TEST(MathTypes, TheIdentityBoxIsAPointAtTheOrigin) {
  const AabbT<double>& box = AabbT<double>::identity;
  for (int i = 0; i < 3; ++i) {
    EXPECT_EQ(box.minimum.components[i], 0.0);
    EXPECT_EQ(box.maximum.components[i], 0.0);
  }
}

}  // namespace
}  // namespace zn::math
