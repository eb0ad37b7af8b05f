// Writes the differences between two scenes as text or as JSON, each when it is found.
#pragma once

#include <cstdint>
#include <string>

#include "tools/scene_text/text_output.h"
#include "tools/vsa/diff/scene_difference.h"

namespace vsa_tools {

/// Writes each difference as one line, for example:
///   - sky dusk                    a removed node
///   + sky dawn                    an added node
///   ~ material clay -> mud        a renamed node
///   ~ ball: type sphere -> box
///   ball.radius: 1.0 -> 2.0
///   ball.tint: removed red.out
class DifferenceText final : public DifferenceSink {
 public:
  explicit DifferenceText(TextOutput& out) : out_(out) {}
  void add(const Difference& difference) override;

 private:
  TextOutput& out_;
};

/// Writes the differences as one JSON object, with one difference a line: {"a": name, "b": name,
/// "differences": [{"kind", "nodeA", "nodeB", "input", "a", "b", "list"}], "same": bool}. "a" and
/// "b" of a difference are the short texts of sidesOf(), or the types of the nodes. A key that does
/// not apply is left out. Bytes that are not valid UTF-8 become U+FFFD.
class DifferenceJson final : public DifferenceSink {
 public:
  DifferenceJson(const std::string& nameA, const std::string& nameB, TextOutput& out);
  void add(const Difference& difference) override;
  /// Ends the JSON. Must be called once, after the last add().
  void end();

 private:
  TextOutput& out_;
  std::uint64_t count_ = 0;
};

}  // namespace vsa_tools
