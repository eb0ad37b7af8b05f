// Functions that test whether a value fits the described type of an input.
#pragma once

#include <string>

#include <vsa/types.h>
#include <vsa/view.h>

namespace vsa_tools {

/// Returns what does not fit, such as "Real, and its type has Int here", or an empty text if the
/// value fits. A value fits if the reader converts it without loss. An input that has only a
/// connection also fits. If the type allows only links, only a Node fits, and if it names no type
/// for the input, every value fits.
std::string misfit(const vsa::InputView& input, const vsa::InputDescription& described);

/// Returns the first number of a scalar or tuple that is outside the described range, such as "5 is
/// above 1". Returns an empty text if there is none.
std::string outOfRange(const vsa::InputView& input, const vsa::InputDescription& described);

}  // namespace vsa_tools
