// Conversions between attribute types: which are allowed, and their results. Internal.
#pragma once

#include <vsa/scene/attr_data.h>

namespace zn::korvo_sdk::impl {

enum class Conversion {
  Silent,     ///< Converts without a message. Equal types convert silently, too.
  Narrowing,  ///< Converts and loses information.
  Refused,    ///< Does not convert.
};

/// Returns how a value of type `from` converts to an input of type `to`.
Conversion conversionBetween(AttrType from, AttrType to) noexcept;

/// Converts `value` to type `to`. conversionBetween must not return Refused for the two types. All
/// components of the payload that the type of `value` does not use must be zero, as in a new
/// record: a tuple with more components gets these zeros.
void convert(AttrData& value, AttrType to) noexcept;

}  // namespace zn::korvo_sdk::impl
