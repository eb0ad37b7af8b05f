// Compares the numbers in the middle of two long lists.
#pragma once

#include <string_view>

namespace vsa_tools {

/// Removes from two results of plainNumbers() the numbers that they have in common, with the
/// separators after each number. At the end, at least one of them is empty. Returns false if a
/// number differs. The separators are not compared.
bool takeSameNumbers(std::string_view& a, std::string_view& b);

}  // namespace vsa_tools
