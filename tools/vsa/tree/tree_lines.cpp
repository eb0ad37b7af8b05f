#include "tools/vsa/tree/tree_lines.h"

#include <fmt/format.h>

#include "tools/vsa/common/scene/input_walk.h"
#include "tools/vsa/common/scene/short_value.h"

namespace vsa_tools {

namespace {

constexpr std::uint64_t SHOWN_ELEMENTS = 10;
constexpr std::size_t LINE_PATH_CHARACTERS = 80;

vsa::InputView parentOf(vsa::InputView input) {
  return vsa::InputView(input.plain()->parent());
}

/// Returns whether the elements of the array have their own lines. Other elements are in the line
/// of their array.
bool hasElementLines(vsa::InputView array) {
  const vsa::ValueType type = array.elementType();
  return type == vsa::ValueType::Object || type == vsa::ValueType::Array ||
         type == vsa::ValueType::Buffer;
}

/// Returns the path of the input without its node, shortened. The path begins with a period.
std::string pathInNode(vsa::InputView input) {
  return shortText(std::string_view(input.path()).substr(input.owner().name().size()),
                   LINE_PATH_CHARACTERS);
}

class LineCollector {
 public:
  explicit LineCollector(bool inputs) : inputs_(inputs) {}

  bool operator()(const InputPlace& place) {
    if (inputs_) addValue(place);
    if (place.input.node()) lines.push_back({TreeLine::Kind::Reference, place.input});
    if (place.input.connection()) lines.push_back({TreeLine::Kind::Connection, place.input});
    return true;
  }

  std::vector<TreeLine> lines;

 private:
  void addValue(const InputPlace& place) {
    if (place.depth <= hiddenDepth_) isHidden_ = false;
    if (isHidden_) return;
    const vsa::InputView input = place.input;
    if (place.isElement) {
      const vsa::InputView array = parentOf(input);
      if (!hasElementLines(array)) return;
      if (place.index >= SHOWN_ELEMENTS) {
        hide(place, array);
        return;
      }
    }
    // A line for the value is not necessary: the line of the link shows it, or the lines of the
    // members show the object.
    if (input.node() || (input.type() == vsa::ValueType::Null && input.connection())) return;
    if (input.type() == vsa::ValueType::Object && childCount(input) > 0) return;
    lines.push_back({TreeLine::Kind::Value, input});
  }

  void hide(const InputPlace& place, vsa::InputView array) {
    isHidden_ = true;
    hiddenDepth_ = place.depth;
    if (place.index > SHOWN_ELEMENTS) return;
    lines.push_back({TreeLine::Kind::MoreElements, array, childCount(array) - SHOWN_ELEMENTS});
  }

  bool inputs_;
  bool isHidden_ = false;        // whether the input is in an element that is not shown
  std::size_t hiddenDepth_ = 0;  // the depth of that element
};

}  // namespace

vsa::NodeView TreeLine::target() const {
  if (kind == Kind::Reference) return input.node();
  return kind == Kind::Connection ? input.connection().node() : vsa::NodeView();
}

std::string TreeLine::text() const {
  const std::string path = pathInNode(input);
  switch (kind) {
    case Kind::Reference:
      return fmt::format("{} = {}", path, nodeTitle(input.node()));
    case Kind::Connection:
      return fmt::format("{} |= {} ({})", path, shortConnection(input), shortText(target().type()));
    case Kind::MoreElements:
      return fmt::format("{}: {} more elements", path, more);
    default:
      return fmt::format("{} = {}", path, shortValue(input));
  }
}

std::vector<TreeLine> treeLines(vsa::NodeView node, bool inputs) {
  LineCollector collector(inputs);
  walkInputs(node, [&](const InputPlace& place) { return collector(place); });
  return std::move(collector.lines);
}

bool hasTreeLines(vsa::NodeView node, bool inputs) {
  return inputs ? !node.inputs().empty() : !treeLines(node, false).empty();
}

std::string nodeTitle(vsa::NodeView node) {
  return fmt::format("{} ({})", shortText(node.name()), shortText(node.type()));
}

}  // namespace vsa_tools
