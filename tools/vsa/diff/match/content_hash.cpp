#include "tools/vsa/diff/match/content_hash.h"

#include <bit>
#include <cstring>
#include <span>
#include <string_view>

#include "tools/vsa/common/scene/input_walk.h"
#include "tools/vsa/common/scene/name_pattern.h"

namespace vsa_tools {

namespace {

/// Hashes eight bytes at a time. Nodes with equal hashes are compared afterwards, so a collision
/// hides no difference: two different nodes are then reported as one renamed node with differences.
std::uint64_t bytesHash(std::span<const std::byte> bytes) {
  std::uint64_t hash = bytes.size();
  for (; !bytes.empty(); bytes = bytes.subspan(std::min<std::size_t>(8, bytes.size()))) {
    std::uint64_t word = 0;
    std::memcpy(&word, bytes.data(), std::min<std::size_t>(8, bytes.size()));
    hash = mixHashes(hash, word);
  }
  return hash;
}

std::uint64_t textHash(std::string_view text) {
  return bytesHash(std::as_bytes(std::span(text)));
}

std::uint64_t valueHash(vsa::InputView input) {
  switch (input.type()) {
    case vsa::ValueType::Bool:
      return input.boolean(false);
    case vsa::ValueType::Int:
    case vsa::ValueType::UInt:
      return static_cast<std::uint64_t>(input.plain()->integer());
    case vsa::ValueType::Real:
      return std::bit_cast<std::uint64_t>(input.real(0));
    case vsa::ValueType::String:
      return textHash(input.string(""));
    case vsa::ValueType::Buffer:
      return mixHashes(static_cast<std::uint64_t>(input.buffer().elementType()),
                       bytesHash(input.buffer().bytes()));
    case vsa::ValueType::Array:
      return mixHashes(static_cast<std::uint64_t>(input.elementType()), input.elements().size());
    default:
      return bytesHash(std::as_bytes(input.components()));
  }
}

/// Returns a hash of the type of an input. A reference counts as an input without a value, so that
/// a null reference has the same hash as such an input: the comparison of scenes treats both as
/// equal.
std::uint64_t typeHash(vsa::InputView input) {
  const auto type = input.type();
  return static_cast<std::uint64_t>(type == vsa::ValueType::Node ? vsa::ValueType::Null : type);
}

/// Calls `visit` with each input that is not ignored.
template <class Visit>
void walkContent(vsa::NodeView node, const std::vector<std::string>& ignored, const Visit& visit) {
  walkInputs(node, [&](const InputPlace& place) {
    if (!ignored.empty() &&
        matchesAny(ignored, std::string(node.name()) + '.' + std::string(place.path))) {
      return false;
    }
    visit(place);
    return true;
  });
}

/// Calls `visit` with the reference and the connection of an input: a hash of the path and the
/// connected output, and the target.
template <class Visit>
void visitLinks(const InputPlace& place, const Visit& visit) {
  const vsa::ConnectionView source = place.input.connection();
  const vsa::NodeView referred = place.input.node(), connected = source.node();
  if (!referred && !connected) return;
  const std::uint64_t path = textHash(place.path);
  if (referred) visit(mixHashes(path, 1), referred);
  if (connected) visit(mixHashes(path, textHash(source.output())), connected);
}

}  // namespace

// Uses the multiplications and shifts of the finaliser of SplitMix64 (Steele, Lea, Flood, 2014).
std::uint64_t mixHashes(std::uint64_t a, std::uint64_t b) {
  std::uint64_t z = a * 0x9E3779B97F4A7C15U + b + 0x632BE59BD9B4E019U;
  z = (z ^ (z >> 30)) * 0xBF58476D1CE4E5B9U;
  z = (z ^ (z >> 27)) * 0x94D049BB133111EBU;
  return z ^ (z >> 31);
}

NodeContent contentOf(vsa::NodeView node, const std::vector<std::string>& ignored,
                      const std::function<bool(vsa::NodeView)>& hasCounterpart) {
  NodeContent content;
  content.hash = textHash(node.type());
  walkContent(node, ignored, [&](const InputPlace& place) {
    // A sum, because it does not depend on the order of the inputs.
    content.hash +=
        mixHashes(textHash(place.path), mixHashes(typeHash(place.input), valueHash(place.input)));
    visitLinks(place, [&](std::uint64_t link, vsa::NodeView target) {
      if (hasCounterpart(target)) {
        content.hash += mixHashes(link, textHash(target.name()));
      } else {
        content.links.emplace_back(link, target);
      }
    });
  });
  return content;
}

NodeLinks linksOf(vsa::NodeView node, const std::vector<std::string>& ignored,
                  const std::function<bool(vsa::NodeView)>& hasCounterpart) {
  NodeLinks links;
  walkContent(node, ignored, [&](const InputPlace& place) {
    visitLinks(place, [&](std::uint64_t link, vsa::NodeView target) {
      if (!hasCounterpart(target)) links.emplace_back(link, target);
    });
  });
  return links;
}

}  // namespace vsa_tools
