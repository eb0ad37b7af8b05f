// Functions that return counts, sizes and shares as text for people.
#pragma once

#include <cstdint>
#include <string>

namespace vsa_tools {

/// Returns the count with commas: "12,345".
std::string countText(std::uint64_t count);

/// Returns a size such as "512 B", "12.3 KB" or "1.5 GB". The units are powers of 1000.
std::string sizeText(std::uint64_t bytes);

/// Returns the share of `part` in `whole`, such as "12.5 %", or "-" if `whole` is 0.
std::string shareText(std::uint64_t part, std::uint64_t whole);

}  // namespace vsa_tools
