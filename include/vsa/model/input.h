// Input: a place for one value of a scene: an input of a node, an element of an array or a member
// of an object. Inputs are made by nodes and by each other, and live as long as the scene.
//
// A scene may hold many millions of them, so an input is small: what is wider than 64 bits (tuples,
// buffers, elements, members) lies outside of it.
#pragma once

#include <cstdint>

#include <vsa/foundation/string.h>
#include <vsa/foundation/vector.h>
#include <vsa/scene/attr_data.h>
#include <vsa/scene/scene_interface.h>
#include "scene/model/storage/named_list.h"

namespace zn::korvo_sdk {

class Node;
class Output;
class Scene;
struct DeclaredInput;
template <class T, class Owner>
class Slabs;

/// An input of a Scene, which owns it. One that only a link has named has type Null. What sets a
/// value, a member or an element throws std::bad_alloc.
class VSA_API Input final : public interfaces::IInput {
 public:
  Input(const Input&) = delete;
  Input& operator=(const Input&) = delete;

  /// The name of an input or member; empty for an element.
  const String& name() const noexcept { return name_; }
  /// The node that the input belongs to, however deep; never null.
  Node* owner() const noexcept;
  /// 1 for an input of a node, one more for each array or object around it.
  unsigned level() const noexcept { return level_; }

  // The value, by type. Each is meant for inputs of its type; asked of another, it gives zero,
  // null, or nothing.

  bool boolean() const noexcept;
  /// Int; UInt as the same 64 bits.
  std::int64_t integer() const noexcept;
  double real() const noexcept;
  /// The string's NUL-terminated text, never null; valid until the next value.
  const char* string() const noexcept;
  /// The components of a vector, position, quaternion, colour or matrix: `componentCount(type())`
  /// of them, valid until the next value. Null for every other type.
  const double* components() const noexcept;
  /// The buffer; its memory is the input's and valid until the next value. A count of 0, a null
  /// memory and type Null while none was set.
  BufferValue buffer() const noexcept;
  /// The node that the input refers to; null for none, and once that node is removed.
  Node* node() const noexcept;
  /// The output that the input is connected to; null for none, and once its node is removed.
  Output* connection() const noexcept;
  /// The members of an object, in creation order: how many, and the i-th, or null past the end.
  std::uint64_t memberCount() const noexcept;
  Input* member(std::uint64_t index) const noexcept;

  // IInput.

  // What is said there holds here too; noted is what this scene makes of it.

  AttrType type() const override { return typeOf(); }
  String typeName() const override { return String(attrTypeName(typeOf())); }
  String path() const override;
  bool holdsBuffer(bool flag) const override;
  const interfaces::IEnumeration* enumValues() const override;
  AttrType elementType() const override;
  DataType bufferType() const override;
  /// Nothing on an input that is no array. Throws std::runtime_error at the scene's limits.
  void appendElement() override;
  bool isArray(bool flag) const override;
  bool refusesValues() const override;

  /// Members can be made in objects, and in Null inputs, which become objects. A name that begins
  /// with "[" is refused, and so is one that exists with another type; one that exists with this
  /// type is returned. Throws std::runtime_error at the scene's depth limit.
  Input* createInput(const String& name, AttrType type) override;
  Input* createArray(const String& name, AttrType elementType) override;
  bool hasInput(const String& name, AttrType type) override;
  std::uint64_t count() const override;
  /// Null past the end, and of an input that is no array.
  Input* element(std::uint64_t index) override;
  /// Null when there is no such member.
  Input* input(const String& name) override;

  /// A Null input takes on the record's type; one of another type than the record's is left alone.
  void set(const AttrData& structure) override;
  /// Takes the value over, with the memory behind it, and frees what it held before. A short string
  /// moves into memory of the scene, and its own is freed. An Object value changes nothing. A value
  /// of another type than the input's is dropped, and its memory freed.
  void assign(const AttrData& value) override;
  /// Connects to an output of a node of the same scene; type and value stay.
  void connect(interfaces::IOutput* output) override;
  void disconnect() override;
  /// Refers to a node of the same scene. A Null input becomes a Node input; one of any other type
  /// refuses with a warning.
  void setNode(interfaces::INode* node) override;
  /// Inputs live as long as the scene: retaining one only says that it is used.
  void retain() override { markUsed(); }
  void release() override {}

 private:
  friend class Slabs<Input, Scene>;
  friend class Node;

  struct ElementList {
    ds::Vector<Input*> inputs;
    AttrType type = AttrType::Null;
  };

  // What an input's type makes of its 64 bits. Pointers may be null: the type's zero value.
  union Value {
    bool boolean;
    std::int64_t integer;
    double real;
    double* components;
    char* string;  // in a block of the scene, a long one in memory of its own
    Node* node;
    BufferValue* buffer;
    ElementList* elements;
    NamedList<Input>* members;
  };

  Input(Node* node, String name, AttrType type);
  Input(Input* parent, String name, std::uint32_t index, AttrType type);
  ~Input();

  // For an input of a node: whether it is one of that node.
  bool isOf(const Node* node) const noexcept { return parent_.node == node; }
  AttrType typeOf() const noexcept { return static_cast<AttrType>(type_); }
  Input* parentInput() const noexcept { return isNodeInput_ ? nullptr : parent_.input; }
  Scene* scene() const noexcept;
  const DeclaredInput* declared() const noexcept;
  ElementList& elements();
  Input* makeMember(const String& name, AttrType type, AttrType elementType);
  void markUsed() noexcept;
  void become(AttrType type) noexcept;
  void setElementType(AttrType type);
  void setBuffer(const BufferValue& buffer);
  void assignString(char* text, bool fits);
  void freeString() noexcept;
  void assignBuffer(const BufferValue& buffer, bool fits);
  void assignPlain(const AttrData& value);
  void assignComponents(const double* components);
  void freeValue() noexcept;

  union {
    Node* node;
    Input* input;
  } parent_;
  String name_;  // of inputs and members
  Output* connection_ = nullptr;
  Value value_;
  std::uint32_t index_ = 0;  // of elements
  std::uint16_t level_;
  std::uint8_t type_;  // an AttrType
  bool isNodeInput_ : 1;
  bool isElement_ : 1;
  bool isUnused_ : 1;      // an element that so far only fills a gap
  bool isLongString_ : 1;  // its text has memory of its own
};

}  // namespace zn::korvo_sdk
