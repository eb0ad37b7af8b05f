// Compares the numbers in the middle of two long lists.
#pragma once

#include <string_view>

namespace vsa_tools {

/// Removes numbers, each with the separators after it, from the beginnings of two results of
/// plainNumbers(). Returns false at the first number that differs, and true when one of the results
/// is empty. The separators are not compared.
bool takeSameNumbers(std::string_view& a, std::string_view& b);

}  // namespace vsa_tools
