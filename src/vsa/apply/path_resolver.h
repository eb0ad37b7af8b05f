// InputWalk: from a path to its target input, finding, creating and growing on the way. Internal;
// the door is vsa.h.
#pragma once

#include <cstdint>

#include <vsa/foundation/string.h>
#include <vsa/foundation/vector.h>
#include <vsa/scene/scene_interface.h>
#include "vsa/apply/assign_info.h"

namespace zn::korvo_sdk::impl {

class VsaParser;

/// One walk along the elements of a target path: input names, member names and indices.
class InputWalk {
 public:
  InputWalk(VsaParser& parser, interfaces::INode& node, const AssignInfo& info);

  /// Walks the whole path. Null when a step reached no input, or when there is none to take. What
  /// was created on the way stays.
  interfaces::IInput* run();

  /// After `run`: what it returned.
  interfaces::IInput* target() const noexcept { return current_; }

  /// After `run`: whether the target is an input or an element that the walk has made.
  bool isNew() const noexcept { return isNew_; }

  /// After `run`: the array that the target is an element of, or null.
  interfaces::IInput* array() const noexcept { return array_; }

 private:
  // What the elements after a step ask of its input.
  struct Wanted {
    AttrType type;
    AttrType elementType;  // of an array
  };

  const Token* nextElement();
  Wanted wanted() const;
  interfaces::IInput* step(const Token& element);
  interfaces::IInput* step(const String& name, const Token& element);
  interfaces::IInput* find(const String& name);
  interfaces::IInput* create(const String& name, const Token& element);
  interfaces::IInput* elementAt(const String& name, const Token& element);
  std::uint64_t indexOf(const String& name, const Token& element);
  void check(interfaces::IInput* found);

  VsaParser& parser_;
  interfaces::INode& node_;
  const AssignInfo& info_;
  std::uint64_t at_ = 1;         // in the path; its first token is the node's name or "."
  const Token* next_ = nullptr;  // the element after the current one
  const Token* afterNext_ = nullptr;
  Wanted wanted_{AttrType::Null, AttrType::Null};
  interfaces::IInput* current_ = nullptr;
  interfaces::IInput* array_ = nullptr;
  bool isNew_ = false;
};

}  // namespace zn::korvo_sdk::impl
