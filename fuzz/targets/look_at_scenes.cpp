// Tests the commands that process scenes: vsa diff, tree, graph, stats, extract and merge. A byte
// 0x01 separates two texts. The reader treats this byte as white space. Both texts may contain
// errors. The commands then process the scene that was read before the error. Exception: extract
// and merge process only a first text that was read completely.
#include <nlohmann/json.hpp>

#include <algorithm>
#include <string>
#include <utility>

#include <vsa/read.h>
#include <vsa/write.h>
#include "fuzz/support/check.h"
#include "fuzz/support/fuzz_scene.h"
#include "fuzz/targets.h"
#include "tools/vsa/common/scene/scene_file.h"
#include "tools/vsa/common/writing/string_sink.h"
#include "tools/vsa/diff/difference_output.h"
#include "tools/vsa/extract/scene_part.h"
#include "tools/vsa/graph/dot_text.h"
#include "tools/vsa/graph/scene_graph.h"
#include "tools/vsa/merge/node_renamer.h"
#include "tools/vsa/stats/scene_statistics.h"
#include "tools/vsa/tree/scene_tree.h"

namespace vsa_fuzz {

namespace {

constexpr char SEPARATOR = '\x01';

std::uint64_t differences(const vsa::Scene& a, const vsa::Scene& b,
                          const vsa_tools::DiffOptions& options) {
  vsa_tools::TextOutput lines, json;
  vsa_tools::DifferenceText asText(lines);
  vsa_tools::DifferenceJson asJson("a", "b", json);
  const std::uint64_t count = vsa_tools::compareScenes(a, b, options, asText);
  if (vsa_tools::compareScenes(a, b, options, asJson) != count) fail("diff: two counts");
  asJson.end();
  if (!nlohmann::json::accept(json.text())) fail("diff: invalid JSON: " + json.text());
  return count;
}

void compare(const vsa::Scene& a, const vsa::Scene& b, unsigned settings) {
  vsa_tools::DiffOptions options;
  if ((settings & 1) != 0) options.tolerance.absolute = settings;
  if ((settings & 2) != 0) options.tolerance.relative = 0.5;
  if ((settings & 4) != 0) options.ignored = {"*.power"};
  if (differences(a, a, options) != 0) fail("diff: a scene differs from itself");
  const bool isSame = differences(a, b, options) == 0;
  if (isSame != (differences(b, a, options) == 0)) fail("diff: a and b differ, b and a do not");
}

void look(const vsa_tools::SceneFile& file, unsigned settings) {
  const vsa::Scene& scene = file.result.scene;
  vsa_tools::TextOutput out;
  vsa_tools::TreeOptions options;
  options.inputs = (settings & 1) != 0;
  if ((settings & 2) != 0) options.depth = settings / 4;
  vsa_tools::printTree(scene, options, out);
  const vsa_tools::SceneGraph graph = vsa_tools::graphOf(scene, 1 + settings % 5);
  if (graph.groups.size() > 1 + settings % 5) fail("graph: more groups than the limit");
  vsa_tools::dotText(graph, "title");
  const vsa_tools::SceneStatistics statistics = vsa_tools::statisticsOf(file);
  if (statistics.nodes() != scene.nodes().size()) fail("stats: the count of nodes is wrong");
}

/// Whether there are diagnostics other than BadEnumValue. The extracted text may cause BadEnumValue
/// again, because that diagnostic is about the value of a string, and the extracted text keeps the
/// value.
bool hasMessages(const vsa::ReadResult& read) {
  return std::any_of(read.diagnostics.begin(), read.diagnostics.end(),
                     [](const auto& found) { return found.id != vsa::DiagnosticId::BadEnumValue; });
}

/// Reduces the scene to one node and the nodes that its links lead to, as vsa extract does, in some
/// cases without another node. Writes this part, and checks the written text.
void extract(vsa::Scene& scene, unsigned settings) {
  std::vector<std::string> names;
  for (const vsa::NodeView node : scene.nodes()) names.emplace_back(node.name());
  if (names.empty()) return;
  const std::string& name = names[settings % names.size()];
  const std::string& other = names[settings / 8 % names.size()];
  vsa_tools::keepPart(scene, {name},
                      (settings & 1) != 0 && other != name ? std::vector<std::string>{other}
                                                           : std::vector<std::string>());
  if (!scene[name]) fail("extract: lost " + name);
  vsa_tools::removeEmptyArrays(scene);
  vsa_tools::removeBadComments(scene);
  const vsa::TextResult written = vsa::writeText(scene);
  if (!written.isWritten()) return;
  const vsa::ReadResult read = vsa::readText(written.text);
  if (!read.isComplete() || hasMessages(read)) {
    fail("extract: the text does not read without a message: " + vsa_tests::visible(written.text));
  }
}

/// Renames all nodes as vsa merge does, and checks the renamed text.
void rename(std::string_view text, const vsa::ReadResult& read) {
  vsa_tools::Renames renames;
  for (const vsa::NodeView node : read.scene.nodes()) {
    renames.emplace(node.name(), std::string(node.name()) + "_9");
  }
  vsa_tools::StringSink sink;
  vsa::SyntaxReader reader(text);
  vsa_tools::writeRenamed(reader, renames, sink);
  const vsa::ReadResult renamed = vsa::readText(sink.text);
  if (!renamed.isComplete() || renamed.scene.nodes().size() != read.scene.nodes().size()) {
    fail("merge: the renamed text is another one: " + vsa_tests::visible(sink.text));
  }
  for (const auto& [former, name] : renames) {
    if (!renamed.scene[name]) fail("merge: lost " + name);
  }
}

}  // namespace

void lookAtScenes(std::string_view input) {
  const auto [texts, settings] = splitSettings(input);
  const FuzzScene literals;  // Its destructor frees the memory that the reads leak.
  const std::size_t end = std::min(texts.find(SEPARATOR), texts.size());
  const std::string_view textA = texts.substr(0, end);
  const std::string_view textB = texts.substr(std::min(end + 1, texts.size()));
  vsa_tools::SceneFile a;
  a.result = vsa::readText(textA);
  const vsa::ReadResult b = vsa::readText(textB);
  compare(a.result.scene, b.scene, settings);
  look(a, settings);
  if (!a.result.isComplete()) return;
  rename(textA, a.result);
  extract(a.result.scene, settings);
}

}  // namespace vsa_fuzz
