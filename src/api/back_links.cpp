// BackLinks: a first pass counts the links that lead to each node. A second pass stores these
// links.
#include <vsa/back_links.h>

namespace vsa {

namespace {

// Calls `visit` for an input and for all elements and members inside it. The function is iterative:
// a scene may have 65,535 nesting levels, and a recursion of that depth could overflow the stack.
template <class Visit>
void visitTree(InputView root, std::vector<InputView>& stack, const Visit& visit) {
  stack.push_back(root);
  while (!stack.empty()) {
    const InputView input = stack.back();
    stack.pop_back();
    visit(input);
    const auto push = [&](const auto& range) {
      for (auto i = range.size(); i > 0; --i)
        stack.push_back(range.begin()[static_cast<std::ptrdiff_t>(i - 1)]);
    };
    if (input.type() == ValueType::Array) push(input.elements());
    if (input.type() == ValueType::Object) push(input.members());
  }
}

// Calls `visit(slot, input)` for each link. `input` is the input that has the link. `slot` is the
// index of the node to which the link leads (see Scene::nodeAt).
template <class Visit>
void visitLinks(SceneView scene, const Visit& visit) {
  std::vector<InputView> stack;
  for (const NodeView node : scene.nodes()) {
    for (const InputView input : node.inputs()) {
      visitTree(input, stack, [&](InputView place) {
        if (const NodeView to = place.node()) visit(to.plain()->slot(), place);
        if (const ConnectionView to = place.connection()) visit(to.node().plain()->slot(), place);
      });
    }
  }
}

}  // namespace

BackLinks::BackLinks(SceneView scene) : scene_(scene.plain()) {
  if (scene_ == nullptr) return;
  firsts_.resize(scene_->nodeSlots() + 1);
  visitLinks(scene, [&](std::uint64_t slot, InputView) { ++firsts_[slot + 1]; });
  for (std::size_t i = 1; i < firsts_.size(); ++i) firsts_[i] += firsts_[i - 1];
  links_.resize(firsts_.back());
  std::vector<std::uint64_t> next = firsts_;
  visitLinks(scene, [&](std::uint64_t slot, InputView input) { links_[next[slot]++] = input; });
}

std::span<const InputView> BackLinks::of(NodeView node) const noexcept {
  if (!node || node.isRemoved() || node.plain()->scene() != scene_) return {};
  const std::uint64_t slot = node.plain()->slot();
  if (slot + 1 >= firsts_.size()) return {};
  return std::span(links_).subspan(firsts_[slot], firsts_[slot + 1] - firsts_[slot]);
}

}  // namespace vsa
