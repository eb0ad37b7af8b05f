// SceneWalk: traverses a scene and determines the statements of its text, in their order. Internal.
//
// The check and the writer use the same traversal: the check collects the problems, the writer
// writes the statements. The traversal is iterative, because inputs may nest 65,535 levels.
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

/// Receives the results of the traversal. `path` is the path of the input without the name of its
/// node, such as ".keys[2].time". The path is valid during the call.
class SceneVisitor {
 public:
  virtual ~SceneVisitor() = default;

  virtual void beginNode(const zn::korvo_sdk::Node& node) = 0;
  /// Called for each value. The form is never Form::Inside. After Form::Link, a call of
  /// `connection` follows if the input is connected.
  virtual void value(const zn::korvo_sdk::Node& node, std::string_view path,
                     zn::korvo_sdk::Input& input, Form form) = 0;
  /// Called for each connection, after the value of its input.
  virtual void connection(const zn::korvo_sdk::Node& node, std::string_view path,
                          const zn::korvo_sdk::Output& output) = 0;
  virtual void endNode(const zn::korvo_sdk::Node& node) = 0;
  /// Called for each part that a text cannot represent. The path is empty for the node itself.
  /// Unless `isReplaced` is set, no other call is about this part or anything inside it.
  virtual void problem(const zn::korvo_sdk::Node& node, std::string_view path, const char* reason,
                       bool isReplaced) = 0;
};

class SceneWalk {
 public:
  /// Both arguments must outlive this object.
  SceneWalk(const zn::korvo_sdk::Scene& scene, SceneVisitor& visitor)
      : scene_(scene), visitor_(visitor) {}

  /// Visits one node and everything inside it.
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
  // The type of the node; null if it is an open type.
  std::shared_ptr<const zn::korvo_sdk::DeclaredType> type_;
  std::vector<Frame> open_;
  std::string path_;
};

/// The reason why a text cannot represent the name or type of a node, from reasons.h; null if a
/// text can represent them.
const char* nodeProblem(const zn::korvo_sdk::Node& node);

}  // namespace vsa::impl
