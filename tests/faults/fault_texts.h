// Texts for the fault tests. Together they raise every message and make the reader call every
// operation of a scene. The list of the operations comes from the source of the interface, so that
// a test can check each.
#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <vector>

#include <vsa/diagnostics/diagnostic.h>
#include <vsa/model/scene.h>

namespace vsa_tests {

struct Text {
  std::string name;
  std::string text;
};

/// The limits of the scenes that the texts are read into. They are small, so that a short text
/// exceeds them and an assignment to a large index creates few elements.
constexpr std::uint64_t EMPTY_ELEMENTS = 100;
constexpr std::uint64_t LEVELS = 16;

void setSmallLimits(zn::korvo_sdk::Scene& scene);

/// Small cases, one for each different log message, and additional texts for what no small case
/// covers. The first call also initialises what a process initialises once: the node type of the
/// cases and the reader's keyword tables.
const std::vector<Text>& faultTexts();

/// Messages that the fault texts do not raise, with the reason for each.
const std::map<zn::korvo_sdk::DiagnosticId, std::string>& neverRaised();

/// The operations of the scene interface, named as in WatchedScene.
std::vector<std::string> operationsOfInterface();

}  // namespace vsa_tests
