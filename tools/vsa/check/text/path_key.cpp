#include "tools/vsa/check/text/path_key.h"

#include <algorithm>
#include <charconv>
#include <cstring>

namespace vsa_tools {

namespace {

// Odd constants with bits all over, from the fractional part of the golden ratio and of pi.
constexpr std::uint64_t FACTOR = 0x9E3779B97F4A7C15, MEMBER = 0x243F6A8885A308D3,
                        ELEMENT = 0x13198A2E03707345;

constexpr std::uint64_t mixed(std::uint64_t key, std::uint64_t word) {
  key = (key ^ word) * FACTOR;
  return key ^ key >> 32;
}

std::uint64_t wordAt(const char* at, std::size_t count) {
  std::uint64_t word = 0;
  std::memcpy(&word, at, count);
  return word;
}

// Eight bytes per step. The size is part of the key: zeros pad the last step.
PathKey keyOf(std::string_view text, PathKey seed) {
  PathKey key = mixed(seed, text.size());
  const char* at = text.data();
  std::size_t left = text.size();
  for (; left > sizeof(std::uint64_t); left -= sizeof(std::uint64_t)) {
    key = mixed(key, wordAt(at, sizeof(std::uint64_t)));
    at += sizeof(std::uint64_t);
  }
  return mixed(mixed(key, wordAt(at, left)), seed);
}

}  // namespace

PathKey keyOfNode(std::string_view name) {
  return keyOf(name, 0);
}

PathKey keyOfMember(PathKey parent, std::string_view name) {
  return keyOf(name, parent ^ MEMBER);
}

PathKey keyOfElement(PathKey array, std::uint64_t index) {
  return mixed(mixed(array, ELEMENT), index);
}

PathKey keyOfPath(std::string_view path) {
  std::size_t end = std::min(path.find('.'), path.size());
  PathKey key = keyOfNode(path.substr(0, end));
  while (end < path.size()) {
    const char separator = path[end];
    path.remove_prefix(end + 1);
    end = std::min(path.find_first_of(".["), path.size());
    if (separator == '.') {
      key = keyOfMember(key, path.substr(0, end));
    } else {
      std::uint64_t index = 0;
      std::from_chars(path.data(), path.data() + end, index);
      key = keyOfElement(key, index);
    }
  }
  return key;
}

}  // namespace vsa_tools
