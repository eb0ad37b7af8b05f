// Compares the tokens of two texts.
#pragma once

#include <vsa/syntax.h>

namespace vsa_tools {

/// Returns whether both texts have the same tokens. The white space in lists is not compared. Reads
/// both texts to their ends or to the first difference. Throws what the sources throw.
bool haveSameTokens(vsa::SyntaxReader& a, vsa::SyntaxReader& b);

}  // namespace vsa_tools
