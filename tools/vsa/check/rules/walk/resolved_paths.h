// ResolvedPaths: the paths of the statements of a text, with an index instead of each "[*]".
#pragma once

#include <cstdint>
#include <unordered_map>

#include "tools/vsa/check/rules/walk/path_steps.h"
#include "tools/vsa/check/rules/walk/statement_rule.h"

namespace vsa_tools {

class ResolvedPaths {
 public:
  /// The key of the path of an assignment or a connection. Call it for each of them, in the order
  /// of the text.
  PathKey keyOf(const StatementView& view) {
    return keyOf(view, [](PathKey) {});
  }
  /// Like keyOf() above. Also passes the keys of the inputs and elements before the last step to
  /// `onParent`.
  template <class OnParent>
  PathKey keyOf(const StatementView& view, const OnParent& onParent) {
    PathKey key = view.nodeKey;
    PathSteps steps(view.statement.path);
    bool isFirst = true;
    for (std::string_view step; steps.next(step); isFirst = false) {
      if (!isFirst) onParent(key);
      key = isIndex(step) ? keyOfElement(key, index(key, step)) : keyOfMember(key, step);
    }
    return key;
  }

 private:
  std::uint64_t index(PathKey array, std::string_view brackets);

  std::unordered_map<PathKey, std::uint64_t> sizes_;  // the size of each array so far
};

}  // namespace vsa_tools
