// The interfaces through which the reader accesses a scene. A host can implement them for its own
// scene. The library's own scene (include/vsa/model/scene.h) implements them, too.
//
// Ownership: the scene owns every object that these functions return. The objects must stay valid
// as long as the scene, including removed nodes and their inputs. The reader deletes nothing.
//
// Errors: every function may throw. A std::runtime_error stops the parse, and its message is logged
// as an error. Any other exception propagates out of the entry point, and so does a
// std::runtime_error while the header is reset. The reading functions of namespace vsa catch all
// exceptions: see vsa::ReadStatus. A scene can refuse to create an object: the function then
// returns null.
//
// Requirements: the address of an object must not change. The type of an input must not change.
// There is one exception: an input of type Null becomes an Object when it gets a member, a Node
// when it gets a reference, and an Array or Buffer when `set` is called with that type.
//
// Names have the spelling of the text. There is one exception: the reader replaces former names of
// inputs and outputs by the current names before the call. Without vsa::ReadLimits, the reader does
// not limit the size of arrays or the nesting depth of inputs, but a scene may. All calls come from
// the thread that called the entry point.
#pragma once

#include <cstdint>

#include <vsa/foundation/api.h>
#include <vsa/foundation/string.h>
#include <vsa/scene/attr_data.h>

namespace zn::korvo_sdk::interfaces {

class INode;

/// An output of a node. The reader passes the result of INode::output to IInput::connect. It calls
/// no function of the output.
class VSA_API IOutput {
 protected:
  IOutput() = default;
  ~IOutput() = default;
};

/// The strings that are expected as the value of an input of type String. The reader logs a warning
/// for any other string, but assigns it.
class VSA_API IEnumeration {
 public:
  /// Whether the enumeration has no values. Such an enumeration allows every string.
  virtual bool isEmpty() const = 0;
  /// Returns the entry with this name, or null if there is none. The reader only tests whether the
  /// result is null.
  virtual const void* find(const String& name) const = 0;

 protected:
  ~IEnumeration() = default;
};

/// An input of a node, an element of an array or a member of an object, with its value.
class VSA_API IInput {
 public:
  /// The type of the value. It is Null, for example, if the input only has a connection. The
  /// requirements above say how a type of Null changes.
  virtual AttrType type() const = 0;
  /// The name of the type, for messages.
  virtual String typeName() const = 0;
  /// The path of the input, for messages, such as "node.input[2].member".
  virtual String path() const = 0;
  /// Whether the type of the input is Buffer. While `bufferType` is Null, the result may also be
  /// false. `flag` is always false.
  virtual bool holdsBuffer(bool flag) const = 0;
  /// The enumeration of the input, or null if it has none.
  virtual const IEnumeration* enumValues() const = 0;
  /// The AttrType of the elements of an array. It is Null while it is not set.
  virtual AttrType elementType() const = 0;
  /// The DataType of the elements of a buffer. It is Null while it is not set.
  virtual DataType bufferType() const = 0;
  /// Appends one element with the default value of the array's element type. If `count` is not
  /// greater after the call, the statement is an error. A text may contain any index, and the
  /// reader appends elements until the index exists. A scene that limits their number throws an
  /// exception here.
  virtual void appendElement() = 0;
  /// Whether the input is an array. `flag` is always false.
  virtual bool isArray(bool flag) const = 0;
  /// Whether the input accepts links only. The reader logs an assignment of any value, including a
  /// buffer, as an error and skips it.
  virtual bool refusesValues() const = 0;

  // Members (of objects) and elements (of arrays).

  /// Creates a member of this type in an object, or in an input of type Null, which then becomes an
  /// object. For an input of type Null, `name` can also be an index such as "[2]": the function
  /// should then return null. If it returns null, the statement is an error. The reader calls the
  /// function only after `hasInput` returned false or `input` returned null.
  virtual IInput* createInput(const String& name, AttrType type) = 0;
  /// Creates a member that is an array of `elementType`. The rules of `createInput` apply.
  virtual IInput* createArray(const String& name, AttrType elementType) = 0;
  /// Returns whether there is a member with this name. `type` is always Null, which means any type.
  /// The function must return false for an index such as "[2]", which the reader passes as the name
  /// for an array and for an input of type Null.
  virtual bool hasInput(const String& name, AttrType type) = 0;
  /// The number of elements of an array.
  virtual std::uint64_t count() const = 0;
  /// Returns the element at `index`, which is less than `count`. If the result is null for an
  /// element that the text names, the statement is an error.
  virtual IInput* element(std::uint64_t index) = 0;
  /// Returns the member with this name. The reader calls the function only after `hasInput`
  /// returned true.
  virtual IInput* input(const String& name) = 0;

  // Values and links.

  /// Sets the element type of an array or buffer, and no value. If `structure` has the type Array,
  /// the function sets the element type of the array to the AttrType in `structure.elementType`. If
  /// it has the type Buffer, the function makes the input an empty buffer whose elements have the
  /// DataType in `structure.elementType`.
  virtual void set(const AttrData& structure) = 0;
  /// Sets a value of the input's type. A value of type Object (`{}`) has no payload. The input
  /// takes ownership of the memory of a string or a buffer, even if the function throws an
  /// exception. The memory is from malloc, calloc or realloc, and may be null. A scene that does
  /// not store the value must free the memory.
  virtual void assign(const AttrData& value) = 0;
  /// Connects the input to an output of a node of the same scene. The new connection replaces an
  /// existing one. `output` is never null.
  virtual void connect(IOutput* output) = 0;
  /// Removes the connection. Does nothing if the input has none.
  virtual void disconnect() = 0;
  /// Makes the input refer to a node of the same scene. A null `node` removes the reference. The
  /// reader calls the function for inputs of any type. The scene defines what happens for an input
  /// that cannot refer to a node.
  virtual void setNode(INode* node) = 0;

  // Pending links. The reader stores pointers to inputs until it resolves their links after the
  // last statement. The next two functions tell the scene which inputs have a pending link. A scene
  // need not override them, because its inputs exist as long as the scene (see above).

  /// Called for the first pending connection of an input and for its first pending reference. An
  /// input with both gets two calls.
  virtual void retain() {}
  /// Called once for each call of `retain`: for connections after all connections were resolved,
  /// and for references after all references were resolved. There is one exception: if the reading
  /// ends before that, for example by an error, the function is not called.
  virtual void release() {}

 protected:
  ~IInput() = default;
};

/// A node: an object with a name, a type, inputs and outputs.
class VSA_API INode {
 public:
  /// The name of the node. `IScene::findNode` finds the node by this name.
  virtual String name() const = 0;
  /// The name of the node's type.
  virtual String type() const = 0;
  /// Returns whether there is an input with this name. `type` is always Null, which means any type.
  virtual bool hasInput(const String& name, AttrType type) = 0;
  /// Returns the input with this name. The reader calls the function only after `hasInput` returned
  /// true.
  virtual IInput* input(const String& name) = 0;
  /// Creates an input of this type. `type` is Null for an input that gets a link. If the function
  /// returns null, the statement is an error. The reader calls the function only after `hasInput`
  /// returned false or `input` returned null.
  virtual IInput* createInput(const String& name, AttrType type) = 0;
  /// Creates an input that is an array of `elementType`. If `elementType` is Null, the type is not
  /// set yet. The rules of `createInput` apply.
  virtual IInput* createArray(const String& name, AttrType elementType) = 0;
  /// Returns the output with this name. If the result is null, the reader makes no connection and
  /// logs a warning.
  virtual IOutput* output(const String& name) = 0;

 protected:
  ~INode() = default;
};

/// A scene: its nodes, and the header of the file.
class VSA_API IScene {
 public:
  /// Returns the node with this name, or null. The function must not create a node.
  virtual INode* findNode(const String& name) = 0;
  /// Creates a node, or returns null to create none. Null is no error of this statement. A later
  /// statement that sets an input of the node is an error. The reader calls the function only after
  /// `findNode(name)` returned null. `reserved` is always empty.
  virtual INode* createNode(const String& type, const String& name, const String& reserved) = 0;
  /// Creates the node of a `define` statement, or returns null to create none, as `createNode`
  /// does. The statement contains no type. The reader calls the function only after
  /// `findNode(name)` returned null.
  virtual INode* defineNode(const String& name) = 0;
  /// Removes a node, so that `findNode` no longer returns it. The memory of the node and its inputs
  /// must stay valid, because the reader may have pointers to them. The scene defines what happens
  /// if there is no node with this name.
  virtual void removeNode(const String& name) = 0;

  // The header of the file.

  /// Sets the version that a comment contains. An entry point that resets the header also calls the
  /// function with VSX_FILE_VERSION_1, before the first statement.
  virtual void setFileVersion(unsigned long long version) = 0;
  /// Sets the time that a comment contains, with the spelling of the text. An entry point that
  /// resets the header also calls the function with an empty time, before the first statement.
  virtual void setFileTime(const String& time) = 0;
  /// Appends a comment with its "#". The calls have the order of the text.
  virtual void pushFileComment(const String& comment) = 0;
  /// Removes all comments. The reader calls the function only to reset the header, before the first
  /// statement.
  virtual void clearComments() = 0;

 protected:
  ~IScene() = default;
};

}  // namespace zn::korvo_sdk::interfaces
