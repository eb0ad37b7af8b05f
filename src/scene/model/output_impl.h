// OutputImpl: the data of an Output. Internal.
#pragma once

#include <cstdint>
#include <limits>

#include <vsa/model/output.h>

namespace zn::korvo_sdk {

class NodeImpl;
struct SceneStorage;

/// An output takes 8 bytes. It is stored in a slab, directly or as a member of its node, so that
/// its scene can be computed from its address.
class OutputImpl final : public Output {
 public:
  /// `nodePosition`: the index of the output's node among the scene's nodes. There are fewer than
  /// 2^32.
  explicit OutputImpl(std::uint64_t nodePosition) noexcept
      : nodePosition_(static_cast<std::uint32_t>(nodePosition)) {}

  /// Names the output if it has no name yet. `number` is the number of the name in OutputNames.
  /// Returns false if the output has another name.
  bool takeName(std::uint32_t number) noexcept {
    // `||` is not used: it is unpredictable whether an output has a name yet, and a mispredicted
    // branch would wait for the node's cache line (benchmark links 100k, connections alone: 3.2 ms
    // with `||`, 2.7 ms without).
    const bool fits = (nameNumber_ == UNNAMED) | (nameNumber_ == number);
    if (fits) nameNumber_ = number;
    return fits;
  }
  const String& name() const noexcept;
  bool isNamed(const String& name, std::uint64_t /*hash*/) const noexcept {
    return this->name() == name;
  }
  NodeImpl& node() const noexcept;
  std::uint32_t nodePosition() const noexcept { return nodePosition_; }

 private:
  static constexpr std::uint32_t UNNAMED = std::numeric_limits<std::uint32_t>::max();

  SceneStorage& storage() const noexcept;

  std::uint32_t nodePosition_;
  std::uint32_t nameNumber_ = UNNAMED;
};

}  // namespace zn::korvo_sdk
