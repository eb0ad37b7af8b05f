#include "tools/vsa/diff/difference_output.h"

#include <fmt/format.h>

#include <cmath>
#include <nlohmann/json.hpp>

#include "tools/scene_text/printable_text.h"
#include "tools/vsa/common/scene/short_value.h"
#include "tools/vsa/diff/difference_text.h"

namespace vsa_tools {

namespace {

using Json = nlohmann::ordered_json;

std::string nodeText(vsa::NodeView node) {
  return fmt::format("{} {}", shortText(node.type()), shortText(node.name()));
}

/// Returns the value and the connection of an input that only one scene has.
std::string loneText(vsa::InputView input) {
  std::string connection = shortConnection(input);
  if (connection.empty()) return shortValue(input);
  if (input.type() == vsa::ValueType::Null) return connection;
  return fmt::format("{} |= {}", shortValue(input), connection);
}

std::string lineOf(const Difference& found) {
  switch (found.kind) {
    case DifferenceKind::NodeRemoved:
      return "- " + nodeText(found.nodeA);
    case DifferenceKind::NodeAdded:
      return "+ " + nodeText(found.nodeB);
    case DifferenceKind::NodeRenamed:
      return fmt::format("~ {} -> {}", nodeText(found.nodeA), shortText(found.nodeB.name()));
    case DifferenceKind::NodeType:
      return fmt::format("~ {}: type {} -> {}", shortText(found.nodeB.name()),
                         shortText(found.nodeA.type()), shortText(found.nodeB.type()));
    case DifferenceKind::InputRemoved:
      return fmt::format("{}: removed {}", pathOf(found), loneText(found.a));
    case DifferenceKind::InputAdded:
      return fmt::format("{}: added {}", pathOf(found), loneText(found.b));
    default:
      break;
  }
  const DifferenceSides sides = sidesOf(found);
  const char* const sign = found.kind == DifferenceKind::Connection ? " |=" : ":";
  std::string line = fmt::format("{}{} {} -> {}", pathOf(found), sign, sides.a, sides.b);
  if (const std::string list = listText(found); !list.empty()) line += ": " + list;
  return line;
}

const char* nameOf(DifferenceKind kind) {
  switch (kind) {
    case DifferenceKind::NodeRemoved:
      return "node-removed";
    case DifferenceKind::NodeAdded:
      return "node-added";
    case DifferenceKind::NodeRenamed:
      return "node-renamed";
    case DifferenceKind::NodeType:
      return "node-type";
    case DifferenceKind::InputRemoved:
      return "input-removed";
    case DifferenceKind::InputAdded:
      return "input-added";
    case DifferenceKind::Value:
      return "value";
    default:
      return "connection";
  }
}

Json listJson(const ListDifference& list) {
  Json json = {{"countA", list.countA}, {"countB", list.countB}, {"differing", list.differing}};
  if (list.differing > 0) json["first"] = list.first;
  if (list.largestDeviation) {
    // JSON has no number for infinity. An infinite deviation is therefore a string, as in a dump.
    const bool isInfinite = std::isinf(*list.largestDeviation);
    json["largestDeviation"] = isInfinite ? Json("inf") : Json(*list.largestDeviation);
    json["largestAt"] = list.largestAt;
  }
  return json;
}

std::string jsonText(const Json& json) {
  return printableJson(json.dump(-1, ' ', false, Json::error_handler_t::replace));
}

}  // namespace

void DifferenceText::add(const Difference& difference) {
  out_.put(lineOf(difference));
  out_.put('\n');
}

DifferenceJson::DifferenceJson(const std::string& nameA, const std::string& nameB, TextOutput& out)
    : out_(out) {
  out_.put(fmt::format("{{\"a\":{},\"b\":{},\"differences\":[", jsonText(Json(nameA)),
                       jsonText(Json(nameB))));
}

void DifferenceJson::add(const Difference& found) {
  Json json = {{"kind", nameOf(found.kind)}};
  if (found.nodeA) json["nodeA"] = found.nodeA.name();
  if (found.nodeB) json["nodeB"] = found.nodeB.name();
  if (found.kind == DifferenceKind::NodeType) {
    json["a"] = found.nodeA.type();
    json["b"] = found.nodeB.type();
  }
  if (!found.path.empty()) json["input"] = found.path;
  const DifferenceSides sides = sidesOf(found);
  if (found.a) json["a"] = sides.a;
  if (found.b) json["b"] = sides.b;
  if (found.list) json["list"] = listJson(*found.list);
  out_.put(count_++ == 0 ? "\n" : ",\n");
  out_.put(jsonText(json));
}

void DifferenceJson::end() {
  out_.put(count_ == 0 ? "],\"same\":true}\n" : "\n],\"same\":false}\n");
}

}  // namespace vsa_tools
