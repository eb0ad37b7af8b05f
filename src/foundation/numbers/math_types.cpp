// The constants of the math types. All are constants of the image: there is no order of
// initialisation to get wrong.
#include <vsa/foundation/math_types.h>

namespace zn::math {

template <>
constinit const PosT<3, double> PosT<3, double>::zero = {{0.0, 0.0, 0.0}};

template <>
constinit const MatT<3, double> MatT<3, double>::identity = {{1, 0, 0, 0, 1, 0, 0, 0, 1}};

template <>
constinit const MatT<4, double> MatT<4, double>::identity = {
    {1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1}};

// The zero position in both corners: the box at the origin that holds nothing but its corner.
template <>
constinit const AabbT<double> AabbT<double>::identity = {{{0.0, 0.0, 0.0}}, {{0.0, 0.0, 0.0}}};

}  // namespace zn::math
