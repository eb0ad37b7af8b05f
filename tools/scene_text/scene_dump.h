// Scene and read outcome as text, in two formats: JSON, and the format of the expectations under
// tests/cases. Both contain the header, the nodes, and their inputs with values and connections.
// Finite reals are written so that they read back to the same value.
#pragma once

#include <cstdint>
#include <functional>
#include <limits>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include <vsa/model/scene.h>
#include "tools/scene_text/read_outcome.h"
#include "tools/scene_text/text_output.h"

namespace vsa_tools {

/// Writes one JSON object, with each node on a line of its own:
///   {"result": bool, "escaped": null or text, "log": [{"level", "text"}], "fileVersion": n,
///    "fileTime": text, "fileComments": [text], "nodes": [{"type", "name", "inputs": [INPUT]}]}
/// "escaped" is the text of the exception that the entry point threw. Nodes and inputs are in
/// creation order. INPUT is {"name", "type"}, then the keys of its type, then "connection":
/// "node.output" if the input is connected:
///   Array          "elementType", "elements": [INPUT without name]
///   Object         "members": [INPUT]
///   Buffer         "bufferType", "count", "value": [number]
///   Node           "value": the node's name or null
///   tuple, matrix  "value": [number]
///   other types    "value"
/// NaN and infinities are the strings "nan", "inf" and "-inf". Each byte that is not valid UTF-8
/// becomes U+FFFD. The memory that it needs, apart from that of `out`, depends only on the nesting
/// depth and the longest text. It does not recurse.
void dumpJson(const ReadOutcome& outcome, const zn::korvo_sdk::Scene& scene, TextOutput& out);

/// A function that writes the elements of the array "log". It calls dumpLogEntry() for each entry,
/// and writes a comma between two entries.
using LogWriter = std::function<void(TextOutput&)>;

/// An input to dump, and the name that is written for it.
struct ChosenInput {
  std::string name;
  zn::korvo_sdk::Input* input;
};
/// The inputs of a node to dump. If there is no list, all inputs are dumped. If the list is empty,
/// the node is left out.
using ChosenInputs = std::optional<std::vector<ChosenInput>>;

/// The content and the form of a dump.
struct DumpOptions {
  /// Whether buffers have the key "value".
  bool hasBuffers = true;
  /// The maximum number of elements of a buffer in "value". "count" is always the number of all
  /// elements.
  std::uint64_t maxElements = std::numeric_limits<std::uint64_t>::max();
  /// Whether each line is one JSON object: the first has all keys but "nodes", each following line
  /// has one node.
  bool hasLines = false;
  /// Chooses the inputs of each node. If the function is empty, all inputs are dumped.
  std::function<ChosenInputs(const zn::korvo_sdk::Node&)> choose = nullptr;
};

/// Writes the JSON of the dumpJson() above, changed as the options say. Calls `writeLog` once,
/// which writes the log, so that no list of its entries is needed.
void dumpJson(const ReadStatus& status, const LogWriter& writeLog,
              const zn::korvo_sdk::Scene& scene, TextOutput& out, const DumpOptions& options = {});

/// Writes one element of the array "log".
void dumpLogEntry(zn::LogLevel level, std::string_view text, TextOutput& out);

/// Writes the blocks `result`, `log` and `scene` of an expectation. Leaves out `log` and `scene` if
/// they are empty. CONTRIBUTING.md shows the format.
void dumpCase(const ReadOutcome& outcome, const zn::korvo_sdk::Scene& scene, TextOutput& out);

}  // namespace vsa_tools
