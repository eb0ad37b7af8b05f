// The scene as the reader sees it: four interfaces that a host may stand its own scene behind. The
// library's own scene is in scene/model/.
//
// Ownership: everything returned belongs to the scene and stays valid until the scene goes, removed
// nodes and their inputs included; the reader deletes nothing. Any operation may throw: a
// std::runtime_error ends the reading with its text as the logged error, other exceptions leave the
// entry point. Any operation that makes something may refuse by returning null.
//
// What the reader relies on: one place has one address, the same each time it is asked for; a type
// stays, but that Null may become Object or Node; names are passed as the text has them, inputs and
// outputs after the translation of former names. Only the scene bounds how far an array grows and
// how deep inputs nest. All calls come from the thread that called the entry point.
#pragma once

#include <cstdint>

#include <vsa/foundation/api.h>
#include <vsa/foundation/string.h>
#include <vsa/scene/attr_data.h>

namespace zn::korvo_sdk::interfaces {

class INode;

/// An output of a node: what inputs are connected to. The reader passes it from INode::output to
/// IInput::connect and asks it nothing.
class VSA_API IOutput {
 protected:
  IOutput() = default;
  ~IOutput() = default;
};

/// The named values that an input's string should be one of.
class VSA_API IEnumeration {
 public:
  /// Whether it names no value, and so takes any.
  virtual bool isEmpty() const = 0;
  /// The entry of that name, or null. Only whether it is null matters to the reader.
  virtual const void* find(const String& name) const = 0;

 protected:
  ~IEnumeration() = default;
};

/// A place for a value: an input of a node, an element of an array or a member of an object.
class VSA_API IInput {
 public:
  /// What it holds; Null until a value, a member or a node has said so.
  virtual AttrType type() const = 0;
  /// The type as messages print it.
  virtual String typeName() const = 0;
  /// Where the input is, as messages print it: "node.input[2].member".
  virtual String path() const = 0;
  /// Whether the input holds a typed element buffer and nothing else. The reader passes false.
  virtual bool holdsBuffer(bool flag) const = 0;
  /// The input's enumeration, or null. A string that it does not hold is assigned with a warning.
  virtual const IEnumeration* enumValues() const = 0;
  /// Of an array: the type of its elements; Null while unset.
  virtual AttrType elementType() const = 0;
  /// Of a buffer: the type of its elements; Null while unset.
  virtual DataType bufferType() const = 0;
  /// Adds one default element, of the array's element type, at the end. One that adds nothing
  /// refuses. A text may ask for any number: this is where a scene with a limit throws.
  virtual void appendElement() = 0;
  /// Whether the input is an array. The reader passes false.
  virtual bool isArray(bool flag) const = 0;
  /// Whether plain values are not to be applied to the input: one is then refused with a message.
  virtual bool refusesValues() const = 0;

  // Members (of objects) and elements (of arrays).

  /// A new member of the type, or null, which is an error of the text. Called only after `hasInput`
  /// has denied the name, on an object or on an input of type Null, which becomes one.
  virtual IInput* createInput(const String& name, AttrType type) = 0;
  /// A new member that is an array of `elementType`, or null.
  virtual IInput* createArray(const String& name, AttrType elementType) = 0;
  /// Whether there is a member of that name and type (Null: any; the reader passes no other). Asked
  /// of arrays too, with the index as the text has it, "[2]": they answer false.
  virtual bool hasInput(const String& name, AttrType type) = 0;
  /// Elements in the array.
  virtual std::uint64_t count() const = 0;
  /// The element at an index below `count`, or null, which is an error of the text.
  virtual IInput* element(std::uint64_t index) = 0;
  /// The member of that name, asked for once `hasInput` has said that there is one.
  virtual IInput* input(const String& name) = 0;

  // Values and links.

  /// Sets structure: an Array record gives the element type (an AttrType in `elementType`), a
  /// Buffer record makes an empty buffer of a DataType (in `elementType`). No memory comes with it.
  virtual void set(const AttrData& structure) = 0;
  /// Applies a value of the input's own type. Memory behind a string or a buffer passes to the
  /// input, even when it throws; it came from malloc or calloc, and may be null. A scene that has
  /// no use for the value frees it here.
  virtual void assign(const AttrData& value) = 0;
  /// Drives the input by an output of a node of the same scene; never null. An earlier connection
  /// ends.
  virtual void connect(IOutput* output) = 0;
  /// Ends the input's connection, when it has one.
  virtual void disconnect() = 0;
  /// Makes the input refer to a node of the same scene, or with null to none. Called for an input
  /// of any type: one that cannot refer is the scene's concern.
  virtual void setNode(INode* node) = 0;

  // The reader holds on to inputs whose links are resolved later. An input that lives as long as
  // its scene need not count.

  /// An input's first connection, or reference, of a text was filed. Both: called twice.
  virtual void retain() {}
  /// All connections, or references, were resolved. Not called when an error ended the reading.
  virtual void release() {}

 protected:
  ~IInput() = default;
};

/// A node: named, of a named type, with inputs and outputs.
class VSA_API INode {
 public:
  /// The name by which the scene finds it.
  virtual String name() const = 0;
  /// The name of its type.
  virtual String type() const = 0;
  /// Whether there is an input of that name and type (Null: any; the reader passes no other).
  virtual bool hasInput(const String& name, AttrType type) = 0;
  /// The input of that name, asked for once `hasInput` has said that there is one.
  virtual IInput* input(const String& name) = 0;
  /// A new input of the type, or null, which is an error of the text. Called only after `hasInput`
  /// has denied the name. Null is the type of an input that only a link has named.
  virtual IInput* createInput(const String& name, AttrType type) = 0;
  /// A new input that is an array of `elementType` (Null: not yet set), or null.
  virtual IInput* createArray(const String& name, AttrType elementType) = 0;
  /// The output of that name, or null, which is a warning.
  virtual IOutput* output(const String& name) = 0;

 protected:
  ~INode() = default;
};

/// A scene. The reader calls it from the thread that called the entry point.
class VSA_API IScene {
 public:
  /// The node of that name, or null. Never creates.
  virtual INode* findNode(const String& name) = 0;
  /// A new node, or null. Called only for a name that `findNode` did not know. `reserved` is always
  /// empty.
  virtual INode* createNode(const String& type, const String& name, const String& reserved) = 0;
  /// A node for a name that a text builds on, or null. Called only for a name that `findNode` did
  /// not know.
  virtual INode* defineNode(const String& name) = 0;
  /// Takes the node of that name out of look-ups. Its memory stays: the reader may hold on to it
  /// and to its inputs. A name that no node has is the scene's concern.
  virtual void removeNode(const String& name) = 0;

  // The header of the file.

  /// The version that a comment names, or VSX_FILE_VERSION_1 before a file is read.
  virtual void setFileVersion(unsigned long long version) = 0;
  /// The file's time, as written; empty before a file is read.
  virtual void setFileTime(const String& time) = 0;
  /// Appends one comment, with its "#", in file order.
  virtual void pushFileComment(const String& comment) = 0;
  /// Forgets all comments.
  virtual void clearComments() = 0;

 protected:
  ~IScene() = default;
};

}  // namespace zn::korvo_sdk::interfaces
