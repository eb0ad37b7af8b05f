// Texts to fail at: between them they raise every message and make the reader call every operation
// of a scene. With them, what the sources say these are, so that a test can ask for each.
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

/// The limits of the scenes that the texts are read into: a short text comes up against them, and
/// one that leaps to a far index takes one step an element, of which a few tell as much as many.
constexpr std::uint64_t EMPTY_ELEMENTS = 100;
constexpr std::uint64_t LEVELS = 16;

void setSmallLimits(zn::korvo_sdk::Scene& scene);

/// Small cases, one for each wording of a logged line, and texts of their own for what no small
/// case shows. What is made once in a process is made before the first of them is returned: the
/// node type of the cases is declared, and the reader's keyword tables are there.
const std::vector<Text>& faultTexts();

/// Messages that reading the fault texts does not raise, each with the reason.
const std::map<zn::korvo_sdk::DiagnosticId, std::string>& neverRaised();

/// The operations of the scene's interface under the names that a WatchedScene gives them.
std::vector<std::string> operationsOfInterface();

}  // namespace vsa_tests
