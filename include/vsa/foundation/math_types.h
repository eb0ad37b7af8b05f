// Types for the values of tuples. The order of the components is x, y, z, w for vectors, positions
// and quaternions, and red, green, blue, alpha for colours. Matrices are stored row by row. The
// static constants are defined only for the types at the end of this file.
#pragma once

#include <vsa/foundation/api.h>

namespace zn::math {

/// A vector of N components.
template <unsigned long long N, class Component>
struct VecT {
  Component components[N];
};

/// A position of N coordinates.
template <unsigned long long N, class Component>
struct PosT {
  Component components[N];

  static const PosT zero;  ///< All coordinates are 0.
};

/// A quaternion: x, y, z, w.
template <class Component>
struct QuatT {
  Component components[4];
};

/// A colour: red, green, blue, alpha.
template <class Component>
struct RgbaT {
  Component components[4];
};

/// An N by N matrix, row by row.
template <unsigned long long N, class Component>
struct MatT {
  Component components[N * N];

  static const MatT identity;  ///< The matrix with 1 on the diagonal and 0 elsewhere.
};

/// An axis-aligned box, defined by two corners.
template <class Component>
struct AabbT {
  PosT<3, Component> minimum;
  PosT<3, Component> maximum;

  static const AabbT identity;  ///< Both corners are at the origin.
};

template <>
VSA_API const PosT<3, double> PosT<3, double>::zero;
template <>
VSA_API const MatT<3, double> MatT<3, double>::identity;
template <>
VSA_API const MatT<4, double> MatT<4, double>::identity;
template <>
VSA_API const AabbT<double> AabbT<double>::identity;

}  // namespace zn::math
