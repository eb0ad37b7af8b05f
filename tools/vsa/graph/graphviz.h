// Runs dot, the program of Graphviz.
#pragma once

#include <string>

namespace vsa_tools {

/// A picture, or the reason why there is none.
struct Picture {
  std::string bytes;
  std::string problem;
};

/// Returns the picture of a graph. `format` is "svg" or "png". Runs the program `dot`, which must
/// be in PATH, and waits until it ends.
Picture renderDot(const std::string& dotText, const std::string& format);

}  // namespace vsa_tools
