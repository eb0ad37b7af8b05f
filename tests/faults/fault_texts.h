// The texts for the fault tests. Together they raise every message except those of neverRaised(),
// and make the reader call every operation of a scene except clearComments(). To check that none is
// missing, a test reads the list of operations from the source of the interface.
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

/// The limits of the scenes into which the texts are read. They are small, so that a short text
/// exceeds them and an assignment to a large index creates few elements.
constexpr std::uint64_t EMPTY_ELEMENTS = 100;
constexpr std::uint64_t LEVELS = 16;

void setSmallLimits(zn::korvo_sdk::Scene& scene);

/// Returns the texts. They are small cases, and further texts for what no small case tests. If
/// several small cases in a folder raise the same set of messages, only the first is returned. The
/// first call also registers the node type of the cases and initialises the reader's keyword
/// tables.
const std::vector<Text>& faultTexts();

/// Returns the messages that no fault text raises, with the reason for each.
const std::map<zn::korvo_sdk::DiagnosticId, std::string>& neverRaised();

/// Returns the operations of the scene interface, with the same names as in WatchedScene.
std::vector<std::string> operationsOfInterface();

}  // namespace vsa_tests
