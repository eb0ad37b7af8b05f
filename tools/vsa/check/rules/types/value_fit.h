// Whether a value fits the described type of an input.
#pragma once

#include <string>

#include <vsa/types.h>
#include <vsa/view.h>

namespace vsa_tools {

/// What does not fit, such as "a Real, and the type has an Int"; empty if the value fits. A value
/// that the reader converts without loss fits.
std::string misfit(const vsa::InputView& input, const vsa::InputDescription& described);

/// The first number of a scalar or tuple that is out of the described range, such as "5 is above
/// 1"; empty if there is none.
std::string outOfRange(const vsa::InputView& input, const vsa::InputDescription& described);

}  // namespace vsa_tools
