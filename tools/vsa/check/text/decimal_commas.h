// Commas that are probably decimal points, as in "1,5".
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace vsa_tools {

/// Returns whether the comma at `at` is probably a decimal point: the digits before it and after it
/// belong to no other comma and no point. The commas of "1.5,2" and "1,000,000" are none, because
/// "1.5.2" and "1.000.000" are no numbers either.
bool isDecimalComma(std::string_view text, std::size_t at);

/// Returns whether all numbers of a list probably have decimal commas. `numbers` is the number of
/// its numbers if each comma is a blank. A comma that is not between two digits separates numbers.
/// If the list has a point, the result is false.
bool hasDecimalCommas(std::string_view list, std::size_t numbers);

/// Returns the list with points for its decimal commas.
std::string withDecimalPoints(std::string_view list);

}  // namespace vsa_tools
