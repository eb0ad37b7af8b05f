// Compares the tokens of two texts.
#pragma once

#include <vsa/syntax.h>

namespace vsa_tools {

/// Whether both texts have the same tokens, byte for byte, with lists as in the tokens of the
/// reader: their elements, separated by single blanks. Reads both texts to their ends or to the
/// first difference. Throws what the sources throw.
bool haveSameTokens(vsa::SyntaxReader& a, vsa::SyntaxReader& b);

}  // namespace vsa_tools
