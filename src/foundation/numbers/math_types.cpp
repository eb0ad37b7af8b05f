// The constants of the math types. They are constant-initialised, so that no code can read them
// before their initialisation.
#include <vsa/foundation/math_types.h>

namespace zn::math {

template <>
constinit const PosT<3, double> PosT<3, double>::zero = {{0.0, 0.0, 0.0}};

template <>
constinit const MatT<3, double> MatT<3, double>::identity = {{1, 0, 0, 0, 1, 0, 0, 0, 1}};

template <>
constinit const MatT<4, double> MatT<4, double>::identity = {
    {1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1}};

// A box without volume at the origin: both corners are the zero position.
template <>
constinit const AabbT<double> AabbT<double>::identity = {{{0.0, 0.0, 0.0}}, {{0.0, 0.0, 0.0}}};

}  // namespace zn::math
