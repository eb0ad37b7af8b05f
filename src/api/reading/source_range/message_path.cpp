#include "api/reading/source_range/message_path.h"

#include <cstddef>

namespace vsa {

namespace {

using zn::korvo_sdk::DiagnosticId;

// A path begins after the last `before` and ends at the next `after`.
struct PathPlace {
  DiagnosticId id;
  std::string_view before;
  std::string_view after;
};

constexpr PathPlace PLACES[] = {
    {DiagnosticId::CannotAssignType, " @ ", ""},
    {DiagnosticId::Narrowing, " @ ", ""},
    {DiagnosticId::WrongType, " @ ", " but found "},
    {DiagnosticId::BadEnumValue, "' @ ", ""},
    {DiagnosticId::NoNodeToConnect, " to ", "."},
    {DiagnosticId::NoOutputToConnect, " to ", "."},
    {DiagnosticId::NoNodeToAssign, " to ", "."},
    {DiagnosticId::CannotAssignNode, " to ", " of type "},
    {DiagnosticId::TooManyEmptyElements, "array ", " cannot grow"},
    {DiagnosticId::NestedTooDeeply, "input ", " is nested"},
};

std::string_view pathAt(const PathPlace& place, std::string_view message) {
  // A text quoted in front of the path may hold the same words, one after it too.
  const bool isQuotedAfter = place.id == DiagnosticId::WrongType;
  const std::size_t before =
      isQuotedAfter ? message.find(place.before) : message.rfind(place.before);
  if (before == std::string_view::npos) return {};
  message.remove_prefix(before + place.before.size());
  if (place.after.empty()) return message;
  // A path has periods of its own: the last one ends the message.
  const std::size_t after = place.after == "." ? message.rfind('.') : message.find(place.after);
  return message.substr(0, after);
}

}  // namespace

std::string_view pathInMessage(DiagnosticId id, std::string_view message) {
  for (const PathPlace& place : PLACES) {
    if (place.id == id) return pathAt(place, message);
  }
  return {};
}

}  // namespace vsa
