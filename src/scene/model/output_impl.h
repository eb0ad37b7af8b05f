// OutputImpl: the data of an Output. Internal.
#pragma once

#include <cstdint>
#include <limits>

#include <vsa/model/output.h>

namespace zn::korvo_sdk {

class NodeImpl;
struct SceneStorage;

/// The data of an Output, in 8 bytes. An output is stored in a slab, directly or as a member of its
/// node. Its scene can therefore be computed from its address.
class OutputImpl final : public Output {
 public:
  /// `nodePosition` is the index of the output's node among the scene's nodes. A scene has fewer
  /// than 2^32 nodes.
  explicit OutputImpl(std::uint64_t nodePosition) noexcept
      : nodePosition_(static_cast<std::uint32_t>(nodePosition)) {}

  /// Names the output if it has no name yet. `number` is the number of the name in OutputNames.
  /// Returns false if the output has another name.
  bool takeName(std::uint32_t number) noexcept {
    if (nameNumber_ == UNNAMED) nameNumber_ = number;
    return nameNumber_ == number;
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
