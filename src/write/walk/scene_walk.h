// The walk over a scene that decides which statements a text of it has, in their order. Internal.
//
// The same walk serves the check before a writing, which is interested in the problems, and the
// writing. It does not recurse: a scene may be nested 65535 levels deep.
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

/// Whom the walk tells what it finds. `path` is that of the input below its node, such as
/// ".keys[2].time", and valid during the call.
class SceneVisitor {
 public:
  virtual ~SceneVisitor() = default;

  virtual void beginNode(const zn::korvo_sdk::Node& node) = 0;
  /// A value; never Form::Inside. If it is Form::Link, a connection of the input follows or there
  /// is none.
  virtual void value(const zn::korvo_sdk::Node& node, std::string_view path,
                     zn::korvo_sdk::Input& input, Form form) = 0;
  /// A connection, after the value of its input.
  virtual void connection(const zn::korvo_sdk::Node& node, std::string_view path,
                          const zn::korvo_sdk::Output& output) = 0;
  virtual void endNode(const zn::korvo_sdk::Node& node) = 0;
  /// Something that a text cannot carry. The path is empty for the node itself. No other call is
  /// about it then, nor about what is inside it, unless `isReplaced`.
  virtual void problem(const zn::korvo_sdk::Node& node, std::string_view path, const char* reason,
                       bool isReplaced) = 0;
};

class SceneWalk {
 public:
  /// Both must outlive the walk.
  SceneWalk(const zn::korvo_sdk::Scene& scene, SceneVisitor& visitor)
      : scene_(scene), visitor_(visitor) {}

  void walk(const zn::korvo_sdk::Node& node);

 private:
  /// An array or object whose elements or members are being walked.
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
  std::shared_ptr<const zn::korvo_sdk::DeclaredType> type_;  // of the node; null if it is open
  std::vector<Frame> open_;
  std::string path_;
};

/// Why a text cannot carry the name or type of a node, one of reasons.h; null if it can.
const char* nodeProblem(const zn::korvo_sdk::Node& node);

}  // namespace vsa::impl
