// PathResolver: finds the input of a path. Creates missing inputs and array elements. Internal.
#pragma once

#include <cstdint>
#include <span>

#include <vsa/foundation/string.h>
#include <vsa/scene/scene_interface.h>
#include "diagnostics/emitter.h"
#include "vsa/apply/read_session.h"
#include "vsa/lex/token.h"

namespace zn::korvo_sdk::impl {

/// Resolves the path elements of the left-hand side of an assignment. A path element is an input
/// name, a member name or an index.
class PathResolver {
 public:
  /// `valueType` is the type of the value to assign, or Null for a link. In one case, it is the
  /// type of a literal that does not convert although a link is assigned: if the name of a node
  /// follows the literal. `emitter` has the position of the statement. `session` may be null.
  PathResolver(interfaces::INode& node, std::span<const Token> path, AttrType valueType,
               const Emitter& emitter, ReadSession* session = nullptr)
      : node_(node), path_(path), valueType_(valueType), emitter_(emitter), session_(session) {}

  interfaces::INode& node() const noexcept { return node_; }

  /// Resolves the whole path. Returns null if the path has no path elements, or if the scene
  /// neither finds nor creates the input of a path element. Throws DiagnosticError if the index of
  /// an array element is neither `*` nor an integer from 0 to 2^64 - 1, or if the type of an object
  /// or array does not fit the rest of the path. Does not check the type of a named input at the
  /// end of the path. Throws the exceptions of the scene and of the session. Inputs created before
  /// the error remain in the scene.
  interfaces::IInput* resolve();

  /// After `resolve` returned an input: if the path ends in an index, the input before this index,
  /// normally an array. Otherwise null.
  interfaces::IInput* array() const noexcept { return array_; }

  /// After `resolve` returned an element of `array()`: the size of the array before `resolve`
  /// appended elements to it. Has no meaning otherwise.
  std::uint64_t arrayCountBefore() const noexcept { return arrayCountBefore_; }

 private:
  // The types that the rest of the path requires of an input.
  struct Required {
    AttrType type;
    // The required type of the elements. Used only if `type` is Array.
    AttrType elementType;
  };

  const Token* nextElement();
  Required required() const;
  interfaces::IInput* step(const Token& element);
  interfaces::IInput* step(const String& name, const Token& element);
  interfaces::IInput* find(const String& name);
  interfaces::IInput* createInput(const String& name);
  interfaces::IInput* elementAt(const String& name, const Token& element);
  std::uint64_t indexOf(const String& name, const Token& element) const;
  void checkType(interfaces::IInput& found) const;
  [[noreturn]] void typeError(AttrType type, interfaces::IInput& input) const;

  interfaces::INode& node_;
  std::span<const Token> path_;
  AttrType valueType_;
  Emitter emitter_;
  ReadSession* session_;
  // The index of the next token in `path_`. Starts at 1, because the token at index 0 is the node's
  // name or ".".
  std::uint64_t position_ = 1;
  // The path element after the current one, and the path element after that. Null after the end of
  // the path.
  const Token* next_ = nullptr;
  const Token* afterNext_ = nullptr;
  Required required_{AttrType::Null, AttrType::Null};
  interfaces::IInput* current_ = nullptr;
  interfaces::IInput* array_ = nullptr;
  std::uint64_t arrayCountBefore_ = 0;
};

}  // namespace zn::korvo_sdk::impl
