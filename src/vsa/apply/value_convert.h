// May a value of this type go into an input of that type, and what becomes of it? Knows no parser.
// Internal.
#pragma once

#include <vsa/scene/attr_data.h>

namespace zn::korvo_sdk::impl {

enum class Conversion {
  Silent,     ///< Converts without a word; also a type into itself.
  Narrowing,  ///< Converts and loses something.
  Refused,    ///< Does not convert.
};

/// The decision for a value of type `from` and an input of type `to`.
Conversion conversionBetween(AttrType from, AttrType to) noexcept;

/// Turns `value` into one of type `to`. `conversionBetween` must not refuse it. The storage behind
/// a value's own components is zero, as it is in a new record.
void convert(AttrData& value, AttrType to) noexcept;

}  // namespace zn::korvo_sdk::impl
