// A number with the noun that it counts.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace vsa_tools {

/// Returns "1 link" or "2 links" for the noun "link".
inline std::string counted(std::uint64_t number, std::string_view noun) {
  return std::to_string(number).append(" ").append(noun).append(number == 1 ? "" : "s");
}

}  // namespace vsa_tools
