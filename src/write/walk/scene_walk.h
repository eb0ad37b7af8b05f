// SceneWalk: traverses a scene and determines the statements of its text in their order. Internal.
//
// The check and the writers use the same traversal. The check collects the problems, and the
// writers write the statements. The traversal is iterative: inputs may have 65,535 nesting levels,
// and a recursion of that depth could overflow the stack.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include <vsa/model/scene.h>
#include "write/walk/array_state.h"
#include "write/walk/input_form.h"

namespace vsa::impl {

/// Receives the results of the traversal. `path` is the path of an input without the name of its
/// node, such as ".keys[2].time". It is valid during the call.
class SceneVisitor {
 public:
  virtual ~SceneVisitor() = default;

  virtual void beginNode(const zn::korvo_sdk::Node& node) = 0;
  /// Called for each input with a statement. The form is never Form::Inside. If the input is
  /// connected, a call of `connection` or `problem` follows, whatever the form is.
  virtual void value(const zn::korvo_sdk::Node& node, std::string_view path,
                     zn::korvo_sdk::Input& input, Form form) = 0;
  /// Called for each connection, after the call of `value` for the same input. For an array or
  /// object that has no such call, it comes after the calls for its elements or members.
  virtual void connection(const zn::korvo_sdk::Node& node, std::string_view path,
                          const zn::korvo_sdk::Output& output) = 0;
  virtual void endNode(const zn::korvo_sdk::Node& node) = 0;
  /// Called for each part of the scene that no text can represent. `path` is empty if this part is
  /// the node itself. If `isReplaced` is false, there are no other calls for this part, and none
  /// for what it contains. A part can also be only the connection of an input: this call then
  /// replaces the call of `connection`, and the other calls for the input are made.
  virtual void problem(const zn::korvo_sdk::Node& node, std::string_view path, const char* reason,
                       bool isReplaced) = 0;
};

class SceneWalk {
 public:
  /// `scene` and `visitor` must exist as long as this object.
  SceneWalk(const zn::korvo_sdk::Scene& scene, SceneVisitor& visitor)
      : scene_(scene), visitor_(visitor) {}

  /// Visits a node with everything that it contains. If no text can represent the name or the type
  /// of the node, only calls `problem`.
  void walk(const zn::korvo_sdk::Node& node);

 private:
  /// An array or object whose elements or members are being visited.
  struct Frame {
    zn::korvo_sdk::Input* input;
    std::uint64_t next;
    std::uint64_t end;
    std::size_t pathLength;
    ArrayState array;
  };

  void enter(zn::korvo_sdk::Input& input, const Start& start, const Plan& plan, bool isNamed);
  void enterNext(Frame& frame);
  void enterElement(Frame& frame, std::uint64_t index);
  void enterNamed(zn::korvo_sdk::Input& input);
  void leave(const Frame& frame);
  void walkOpen();

  const char* nameProblem(std::string_view name) const;
  const char* linkProblem(const zn::korvo_sdk::Node& linked) const;
  const char* connectionProblem(const zn::korvo_sdk::Output& output) const;
  void connect(zn::korvo_sdk::Input& input);
  void problem(const char* reason, bool isReplaced = false) {
    visitor_.problem(*node_, path_, reason, isReplaced);
  }

  const zn::korvo_sdk::Scene& scene_;
  SceneVisitor& visitor_;
  const zn::korvo_sdk::Node* node_ = nullptr;
  // The type of the node, or null if the type is open.
  std::shared_ptr<const zn::korvo_sdk::DeclaredType> type_;
  std::vector<Frame> open_;
  std::string path_;
};

/// Returns the reason why no text can represent the name or the type of a node, from reasons.h.
/// Returns null if a text can represent both.
const char* nodeProblem(const zn::korvo_sdk::Node& node);

}  // namespace vsa::impl
