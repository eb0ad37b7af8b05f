// Runs Graphviz's program dot.
#pragma once

#include <string>

namespace vsa_tools {

/// A picture, or the reason why there is none.
struct Picture {
  std::string bytes;
  std::string problem;
};

/// The picture of a graph in `format`, "svg" or "png". Waits for the program `dot`, which is
/// searched in PATH.
Picture renderDot(const std::string& dotText, const std::string& format);

}  // namespace vsa_tools
