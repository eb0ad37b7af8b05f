// OutputImpl: the data of an Output. Internal.
#pragma once

#include <cstdint>
#include <limits>

#include <vsa/model/output.h>

namespace zn::korvo_sdk {

class NodeImpl;
struct SceneStorage;

/// An output in 8 bytes: it lies in a slab, inside its node or by itself, and finds its scene from
/// its address.
class OutputImpl final : public Output {
 public:
  /// `nodePosition`: of the output's node among the scene's nodes, of which there are fewer than
  /// 2^32.
  explicit OutputImpl(std::uint64_t nodePosition) noexcept
      : nodePosition_(static_cast<std::uint32_t>(nodePosition)) {}

  /// Gives the output a name, by its number, if it has none. False if it has another name.
  bool takeName(std::uint32_t number) noexcept {
    // No `||`: whether an output has its name yet is random from link to link, and a mispredicted
    // branch would wait for the node's cache line (links 100k, connections alone: 3.2 to 2.7 ms).
    const bool fits = (nameNumber_ == UNNAMED) | (nameNumber_ == number);
    if (fits) nameNumber_ = number;
    return fits;
  }
  const String& name() const noexcept;
  NodeImpl& node() const noexcept;
  std::uint32_t nodePosition() const noexcept { return nodePosition_; }

 private:
  static constexpr std::uint32_t UNNAMED = std::numeric_limits<std::uint32_t>::max();

  SceneStorage& storage() const noexcept;

  std::uint32_t nodePosition_;
  std::uint32_t nameNumber_ = UNNAMED;
};

}  // namespace zn::korvo_sdk
