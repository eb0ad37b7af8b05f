#include "tools/vsa/check/text/path_key.h"

#include <algorithm>
#include <charconv>
#include <cstring>

namespace vsa_tools {

namespace {

// Constants for hashing. They are odd and have irregular bits: the fractional parts of the golden
// ratio and of pi.
constexpr std::uint64_t FACTOR = 0x9E3779B97F4A7C15, MEMBER = 0x243F6A8885A308D3,
                        ELEMENT = 0x13198A2E03707345;

constexpr std::uint64_t mixed(std::uint64_t key, std::uint64_t word) {
  key = (key ^ word) * FACTOR;
  return key ^ key >> 32;
}

template <class Word>
std::uint64_t wordAt(const char* at) {
  Word word;
  std::memcpy(&word, at, sizeof word);
  return word;
}

// Returns a text of at most eight bytes as a number. Different texts of the same size give
// different numbers.
std::uint64_t shortWord(std::string_view text) {
  const char* const at = text.data();
  const std::size_t size = text.size();
  if (size >= 4) return wordAt<std::uint32_t>(at) << 32 | wordAt<std::uint32_t>(at + size - 4);
  std::uint64_t word = 0;
  for (const char c : text) word = word << 8 | static_cast<unsigned char>(c);
  return word;
}

// Hashes eight bytes at a time. The last step hashes the last eight bytes, even if some of them
// were hashed before. The size is a part of the hash. Copying a constant number of bytes requires
// no function call, which halves the time for the key of a name.
PathKey keyOf(std::string_view text, PathKey seed) {
  constexpr std::size_t STEP = sizeof(std::uint64_t);
  const PathKey key = seed + text.size() * FACTOR;
  if (text.size() <= STEP) return mixed(mixed(key, shortWord(text)), seed);
  PathKey mix = key;
  const char* const last = text.data() + text.size() - STEP;
  for (const char* at = text.data(); at < last; at += STEP) {
    mix = mixed(mix, wordAt<std::uint64_t>(at));
  }
  return mixed(mixed(mix, wordAt<std::uint64_t>(last)), seed);
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

PathKey keyOfPath(std::string_view path, NodeGenerations& nodes) {
  std::size_t end = std::min(path.find('.'), path.size());
  PathKey key = nodes.keyOf(keyOfNode(path.substr(0, end)));
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
