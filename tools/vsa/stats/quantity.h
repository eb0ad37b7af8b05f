// Counts, sizes and shares as text for people.
#pragma once

#include <cstdint>
#include <string>

namespace vsa_tools {

/// The count with commas: "12,345".
std::string countText(std::uint64_t count);

/// "512 B", "12.3 KB", "1.5 GB": powers of 1000, as file managers show them.
std::string sizeText(std::uint64_t bytes);

/// "12.5 %"; "-" if `whole` is 0.
std::string shareText(std::uint64_t part, std::uint64_t whole);

}  // namespace vsa_tools
