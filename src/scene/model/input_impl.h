// InputImpl: the data and the operations of an Input. Internal.
//
// A scene may have millions of inputs, so the size of an input is only 48 bytes. Tuples, strings,
// buffers, and lists of elements or members are stored outside the input.
#pragma once

#include <cstdint>

#include <vsa/foundation/string.h>
#include <vsa/foundation/vector.h>
#include <vsa/model/input.h>
#include "scene/model/storage/named_list.h"

namespace zn::korvo_sdk {

class NodeImpl;
class OutputImpl;
struct DeclaredInput;
struct SceneStorage;

class InputImpl final : public Input {
 public:
  /// Creates an input of a node.
  InputImpl(NodeImpl* node, const String& name, AttrType type);
  /// Creates a member of `parent`, or the element of `parent` at `index`.
  InputImpl(InputImpl* parent, const String& name, std::uint32_t index, AttrType type);
  /// Frees the memory of the value, except memory from the scene's pool. Accesses no other object
  /// in a slab, because the scene may have destroyed it already.
  ~InputImpl();

  const String& name() const noexcept { return name_; }
  bool isNamed(const String& name, std::uint64_t hash) const noexcept {
    return nameTag_ == static_cast<std::uint32_t>(hash) && name_ == name;
  }
  NodeImpl& owner() const noexcept;
  bool isInputOf(const NodeImpl& node) const noexcept {
    return isNodeInput_ && parent_.node == &node;
  }
  bool isRemoved() const noexcept { return isRemoved_; }
  /// Marks the input as removed, disconnects it and clears its value. The caller removes the input
  /// from its list.
  void remove() noexcept;
  void clearValue() noexcept;
  /// Returns the number of typed elements at the start of the array (see isTypedElement). Returns 0
  /// for an input of another type. Checks only elements that have not been counted yet, so repeated
  /// calls are fast.
  std::uint64_t typedPrefix() noexcept;
  bool hasType(AttrType type) const noexcept { return type == AttrType::Null || type == typeOf(); }

  // Implementations of the functions of IInput.

  AttrType type() const override { return typeOf(); }
  String typeName() const override { return String(attrTypeName(typeOf())); }
  String path() const override;
  bool holdsBuffer(bool flag) const override;
  const interfaces::IEnumeration* enumValues() const override;
  AttrType elementType() const override;
  DataType bufferType() const override;
  void appendElement() override;
  bool isArray(bool flag) const override;
  bool refusesValues() const override;
  InputImpl* createInput(const String& name, AttrType type) override;
  InputImpl* createArray(const String& name, AttrType elementType) override;
  bool hasInput(const String& name, AttrType type) override;
  std::uint64_t count() const override;
  InputImpl* element(std::uint64_t index) override;
  InputImpl* input(const String& name) override;
  void set(const AttrData& structure) override;
  void assign(const AttrData& value) override;
  void connect(interfaces::IOutput* output) override;
  void disconnect() override;
  void setNode(interfaces::INode* node) override;
  void retain() override { markUsed(); }
  void release() override {}

 private:
  friend class Input;

  struct ElementList {
    ds::Vector<InputImpl*> inputs;
    AttrType type = AttrType::Null;
    // The number of leading elements that are known to be typed.
    std::uint64_t typedPrefix = 0;
  };

  // The value or a pointer to it. The type of the input selects the member. A null pointer
  // represents the zero value of the type.
  union Value {
    bool boolean;
    std::int64_t integer;
    double real;
    // Points to memory from the scene's pool.
    double* components;
    // Points to memory from malloc if isLongString_ is true, otherwise to memory from the scene's
    // pool.
    char* string;
    NodeImpl* node;
    // The next three point to objects from `new`.
    BufferValue* buffer;
    ElementList* elements;
    NamedList<InputImpl>* members;
  };

  AttrType typeOf() const noexcept { return static_cast<AttrType>(type_); }
  InputImpl* parentInput() const noexcept { return isNodeInput_ ? nullptr : parent_.input; }
  SceneStorage& storage() const noexcept;
  const DeclaredInput* declared() const noexcept;
  ElementList& elements();
  InputImpl* createMember(const String& name, AttrType type, AttrType elementType);
  void markUsed() noexcept;
  void warnOfNode(interfaces::INode* node) const;
  void become(AttrType type) noexcept;
  void setElementType(AttrType type);
  bool isTypedElement(AttrType listType) const noexcept;
  void becomeUntyped() noexcept;
  void setBuffer(const BufferValue& buffer);
  void assignString(char* text, bool fits);
  void freeString() noexcept;
  void assignBuffer(const BufferValue& buffer, bool fits);
  void assignPlain(const AttrData& value);
  void assignComponents(const double* components);
  void freeValue() noexcept;
  InputImpl* takeLastChild() noexcept;
  void clearOwnValue() noexcept;

  union {
    // The parent if isNodeInput_ is true.
    NodeImpl* node;
    // The parent if isNodeInput_ is false.
    InputImpl* input;
  } parent_;
  // The name of the input. An element has no name.
  String name_;
  OutputImpl* connection_ = nullptr;
  Value value_{.integer = 0};
  union {
    // The index of an element.
    std::uint32_t index_;
    // The low bits of the name's hash. They are compared before the names, which saves 2 % of the
    // instructions of the benchmark nodes.
    std::uint32_t nameTag_;
  };
  std::uint16_t level_;
  // The type of the input, an AttrType.
  std::uint8_t type_;
  bool isNodeInput_ : 1;
  bool isElement_ : 1 = false;
  // The input is an element that counts as empty.
  bool isUnused_ : 1 = false;
  bool isLongString_ : 1 = false;
  bool isRemoved_ : 1 = false;
};

#if defined(__LP64__)
static_assert(sizeof(InputImpl) == 48);
#endif

inline const InputImpl& Input::impl() const noexcept {
  return static_cast<const InputImpl&>(*this);
}

}  // namespace zn::korvo_sdk
