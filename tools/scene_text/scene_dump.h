// A scene and what reading it gave, as text: as JSON, and in the form of the expectations under
// tests/cases. Both hold everything that a text can put into a scene; reals are written so that
// they read back to the same value.
#pragma once

#include <functional>
#include <string_view>

#include <vsa/model/scene.h>
#include "tools/scene_text/read_outcome.h"
#include "tools/scene_text/text_output.h"

namespace vsa_tools {

/// Writes one JSON object, a node a line:
///   {"result": bool, "escaped": null or text, "log": [{"level", "text"}], "fileVersion": n,
///   "fileTime": text,
///    "fileComments": [text], "nodes": [{"type", "name", "inputs": [INPUT]}]}
/// INPUT is {"name", "type"} and, by type, "value" (a list for tuples and matrices, a node's name
/// or null for a Node); "bufferType", "count" and "value"; "elementType" and "elements" (INPUTs
/// without names); "members"; then "connection": "node.output" when the input is connected. Nodes
/// and inputs stand in creation order. Not-a-number and infinities are the texts "nan", "inf",
/// "-inf". Each byte that is no UTF-8 becomes U+FFFD. Written piece by piece: needs neither stack
/// nor memory in proportion to the scene.
void dumpJson(const ReadOutcome& outcome, const zn::korvo_sdk::Scene& scene, TextOutput& out);

/// Puts the entries of a log, as dumpLogEntry writes them, with commas between them.
using LogWriter = std::function<void(TextOutput&)>;

/// The same for a log that is not in memory: `putLog` is called where it stands.
void dumpJson(const ReadEnd& end, const LogWriter& putLog, const zn::korvo_sdk::Scene& scene,
              TextOutput& out);

/// Writes one object of the list "log".
void dumpLogEntry(zn::LogLevel level, std::string_view text, TextOutput& out);

/// Writes the blocks `result`, `log` and `scene` of an expectation; the latter two only when there
/// is something in them. CONTRIBUTING.md shows the form.
void dumpCase(const ReadOutcome& outcome, const zn::korvo_sdk::Scene& scene, TextOutput& out);

}  // namespace vsa_tools
