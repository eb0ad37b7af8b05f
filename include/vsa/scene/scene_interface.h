// The scene as the reader calls it: four interfaces that a host can implement for its own scene.
// The library's own scene (include/vsa/model/scene.h) implements them, too.
//
// Ownership: every object that these functions return belongs to the scene and stays valid for the
// lifetime of the scene, including removed nodes and their inputs. The reader deletes nothing.
//
// Errors: every function may throw. A std::runtime_error stops the parse, and its text is logged as
// an error. Any other exception propagates out of the entry point. A function that creates an
// object may return null to refuse.
//
// Requirements: an object always has the same address. A type never changes, except from Null to
// Object or Node. Names are passed as the text spells them, and names of inputs and outputs after
// the translation of former names. The reader has no limit on the size of arrays or on the nesting
// depth of inputs: the scene may set one. All calls come from the thread that called the entry
// point.
#pragma once

#include <cstdint>

#include <vsa/foundation/api.h>
#include <vsa/foundation/string.h>
#include <vsa/scene/attr_data.h>

namespace zn::korvo_sdk::interfaces {

class INode;

/// An output of a node. The reader passes it from INode::output to IInput::connect and calls no
/// function of it.
class VSA_API IOutput {
 protected:
  IOutput() = default;
  ~IOutput() = default;
};

/// The values that a string input should be restricted to.
class VSA_API IEnumeration {
 public:
  /// Whether the enumeration has no values. It then allows every string.
  virtual bool isEmpty() const = 0;
  /// The entry of that name, or null if there is none. The reader only compares the result with
  /// null.
  virtual const void* find(const String& name) const = 0;

 protected:
  ~IEnumeration() = default;
};

/// An input of a node, an element of an array or a member of an object, with its value.
class VSA_API IInput {
 public:
  /// The type of the value; Null until a value, a member or a reference sets the type.
  virtual AttrType type() const = 0;
  /// The name of the type for messages.
  virtual String typeName() const = 0;
  /// The path of the input for messages: "node.input[2].member".
  virtual String path() const = 0;
  /// Whether the value of the input is a buffer of typed elements. `flag` is always false.
  virtual bool holdsBuffer(bool flag) const = 0;
  /// The enumeration of the input, or null if it has none. A string that is not in the enumeration
  /// is assigned, and a warning is logged.
  virtual const IEnumeration* enumValues() const = 0;
  /// The AttrType of an array's elements; Null while not set.
  virtual AttrType elementType() const = 0;
  /// The DataType of a buffer's elements; Null while not set.
  virtual DataType bufferType() const = 0;
  /// Appends one default element of the array's element type. If `count` does not grow, the
  /// statement is an error. A text may contain any index: a scene with a limit throws here.
  virtual void appendElement() = 0;
  /// Whether the input is an array. `flag` is always false.
  virtual bool isArray(bool flag) const = 0;
  /// Whether the input rejects plain values. An assignment of one is then logged as an error and
  /// skipped.
  virtual bool refusesValues() const = 0;

  // Members (of objects) and elements (of arrays).

  /// Creates a member of the given type. If it returns null, the statement is an error. Called on
  /// an object, or on an input of type Null, which becomes an object. Called only if `hasInput`
  /// returned false or `input` returned null.
  virtual IInput* createInput(const String& name, AttrType type) = 0;
  /// Creates a member that is an array of `elementType`. Otherwise the same as `createInput`.
  virtual IInput* createArray(const String& name, AttrType elementType) = 0;
  /// Whether there is a member of that name and type. `type` is always Null: any type. Also called
  /// on arrays, with an index as the text spells it, such as "[2]". An array returns false.
  virtual bool hasInput(const String& name, AttrType type) = 0;
  /// The number of elements of an array.
  virtual std::uint64_t count() const = 0;
  /// The element at `index`, which is less than `count`. If the function returns null, the
  /// statement is an error.
  virtual IInput* element(std::uint64_t index) = 0;
  /// The member of that name. Called only after `hasInput` returned true.
  virtual IInput* input(const String& name) = 0;

  // Values and links.

  /// Sets a structure without a value. For an Array record, sets the type of the elements to the
  /// AttrType in `elementType`. For a Buffer record, makes the input an empty buffer of the
  /// DataType in `elementType`. The record has no memory.
  virtual void set(const AttrData& structure) = 0;
  /// Sets a value of the input's type. The input takes ownership of the memory of a string or a
  /// buffer, even if it throws. The memory is from malloc or calloc, and may be null. A scene that
  /// does not store the value frees the memory.
  virtual void assign(const AttrData& value) = 0;
  /// Connects the input to an output of a node of the same scene and replaces an earlier
  /// connection. `output` is never null.
  virtual void connect(IOutput* output) = 0;
  /// Removes the connection of the input, if it has one.
  virtual void disconnect() = 0;
  /// Makes the input refer to a node of the same scene. Null removes the reference. Called on
  /// inputs of any type. The scene decides what happens on an input that cannot refer to a node.
  virtual void setNode(INode* node) = 0;

  // Reference counting. The reader keeps pointers to inputs until their links are resolved after
  // the last statement. An input that exists as long as its scene needs no count.

  /// Called for the first pending connection of an input in a text, and for its first pending
  /// reference: twice if the input has both.
  virtual void retain() {}
  /// Called once for each `retain` after the links were resolved. Not called if an error stopped
  /// the parse.
  virtual void release() {}

 protected:
  ~IInput() = default;
};

/// A node: an object with a name, a type, inputs and outputs.
class VSA_API INode {
 public:
  /// The name under which `IScene::findNode` finds the node.
  virtual String name() const = 0;
  /// The name of the node's type.
  virtual String type() const = 0;
  /// Whether there is an input of that name and type. `type` is always Null: any type.
  virtual bool hasInput(const String& name, AttrType type) = 0;
  /// The input of that name. Called only after `hasInput` returned true.
  virtual IInput* input(const String& name) = 0;
  /// Creates an input of the given type. If it returns null, the statement is an error. `type` is
  /// Null for the target of a link. Called only if `hasInput` returned false or `input` returned
  /// null.
  virtual IInput* createInput(const String& name, AttrType type) = 0;
  /// Creates an input that is an array of `elementType`, which is Null while the type is not set.
  /// Otherwise the same as `createInput`.
  virtual IInput* createArray(const String& name, AttrType elementType) = 0;
  /// The output of that name. If the function returns null, the connection is not made and a
  /// warning is logged.
  virtual IOutput* output(const String& name) = 0;

 protected:
  ~INode() = default;
};

/// A scene: nodes by name, and the header of the file.
class VSA_API IScene {
 public:
  /// The node of that name, or null. Must not create one.
  virtual INode* findNode(const String& name) = 0;
  /// Creates a node, or returns null to refuse. Called only after `findNode` returned null for
  /// `name`. `reserved` is always empty.
  virtual INode* createNode(const String& type, const String& name, const String& reserved) = 0;
  /// Returns a node for a `define` statement, or null. Called only after `findNode` returned null
  /// for `name`.
  virtual INode* defineNode(const String& name) = 0;
  /// Removes the node of that name from look-ups. The memory of the node and of its inputs must
  /// stay valid, because the reader may have pointers to them. The scene decides what happens for
  /// an unknown name.
  virtual void removeNode(const String& name) = 0;

  // The header of the file.

  /// Sets the version that a comment contains, or VSX_FILE_VERSION_1 before a file is read.
  virtual void setFileVersion(unsigned long long version) = 0;
  /// Sets the time that a comment contains, as the text spells it, or "" before a file is read.
  virtual void setFileTime(const String& time) = 0;
  /// Appends a comment, including its "#", in the order of the text.
  virtual void pushFileComment(const String& comment) = 0;
  /// Removes all comments.
  virtual void clearComments() = 0;

 protected:
  ~IScene() = default;
};

}  // namespace zn::korvo_sdk::interfaces
