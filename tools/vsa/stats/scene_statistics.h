// SceneStatistics: what `vsa stats` counts in one scene, or in several scenes.
#pragma once

#include <array>
#include <cstdint>
#include <map>
#include <string>
#include <vector>

#include <vsa/scene/attr_type.h>
#include <vsa/scene/data_type.h>
#include "tools/vsa/common/scene/scene_file.h"

namespace vsa_tools {

/// The number of inputs of one type, by their kind.
struct InputCounts {
  std::uint64_t inputs = 0;    // inputs of nodes
  std::uint64_t members = 0;   // members of objects
  std::uint64_t elements = 0;  // elements of arrays
};

/// The number and the size of the buffers of one element type.
struct BufferCounts {
  std::uint64_t buffers = 0, elements = 0, bytes = 0;
};

/// An input of a node, with everything inside it.
struct LargeInput {
  std::string file;
  std::string path;
  /// The value as shortValue() returns it.
  std::string value;
  std::uint64_t bytes = 0;
};

/// The maximum number of inputs in `largestInputs`.
inline constexpr std::size_t MAX_LARGEST_INPUTS = 10;

struct SceneStatistics {
  std::map<std::string, std::uint64_t> nodesByType;
  std::array<InputCounts, zn::korvo_sdk::ATTR_TYPE_COUNT> inputsByType{};
  std::array<BufferCounts, zn::korvo_sdk::DATA_TYPE_COUNT> buffersByType{};
  /// At most MAX_LARGEST_INPUTS inputs, the largest first. Inputs without bytes are left out.
  std::vector<LargeInput> largestInputs;
  std::uint64_t references = 0, connections = 0, brokenLinks = 0;
  std::uint64_t comments = 0, commentBytes = 0;
  /// The path with the most bytes, including the name of its node.
  std::string longestPath;
  /// The maximum number of names and indices that a path has after its node.
  std::uint64_t deepestPath = 0;
  std::uint64_t textBytes = 0;
  /// The bytes of all values: a buffer or string counts its own bytes, each number (also each
  /// component of a tuple) and each link 8 bytes, and each Bool 1 byte.
  std::uint64_t dataBytes = 0;
  /// The time of the reading in seconds, without the time of counting.
  double seconds = 0;

  std::uint64_t nodes() const;
  InputCounts inputs() const;
  BufferCounts buffers() const;
};

/// Counts the part of the scene that was read. All counts are 0 if the file cannot be opened.
SceneStatistics statisticsOf(const SceneFile& file);

void addCounts(SceneStatistics& total, const SceneStatistics& other);

/// Returns the peak memory of this process in bytes, or 0 if the system does not report it.
std::uint64_t peakMemoryBytes();

}  // namespace vsa_tools
