// InputImpl: the data of an Input, and its operations. Internal.
//
// A scene may have many millions of inputs, so an input takes 48 bytes. Values of more than 64 bits
// (tuples, strings, buffers, elements, members) are stored outside it.
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
  /// An input of a node.
  InputImpl(NodeImpl* node, const String& name, AttrType type);
  /// A member of `parent`, or its element at `index`.
  InputImpl(InputImpl* parent, const String& name, std::uint32_t index, AttrType type);
  /// Frees the memory of the value that is not from the scene's pool. Accesses no other object.
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
  /// Marks the input as removed and frees its value. The caller removes it from its list.
  void remove() noexcept;
  void clearValue() noexcept;
  /// The number of leading elements whose type `set` leaves unchanged. Takes time only for elements
  /// that got a type after the last call.
  std::uint64_t typedPrefix() noexcept;
  bool hasType(AttrType type) const noexcept { return type == AttrType::Null || type == typeOf(); }

  // The functions of IInput.

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
    std::uint64_t typedPrefix = 0;  // the number of leading elements known to be typed
  };

  // The value, or a pointer to it. The input's type selects the member. A null pointer is the
  // type's zero value.
  union Value {
    bool boolean;
    std::int64_t integer;
    double real;
    double* components;  // in the scene's pool
    char* string;        // stored in the scene's pool, or in memory from malloc if isLongString_
    NodeImpl* node;
    BufferValue* buffer;  // allocated with new
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
    NodeImpl* node;    // used if isNodeInput_
    InputImpl* input;  // used otherwise
  } parent_;
  String name_;  // empty for elements
  OutputImpl* connection_ = nullptr;
  Value value_;
  union {
    std::uint32_t index_;    // the index of an element
    std::uint32_t nameTag_;  // the low bits of the name's hash, compared before the names
  };
  std::uint16_t level_;
  std::uint8_t type_;  // an AttrType
  bool isNodeInput_ : 1;
  bool isElement_ : 1;
  bool isUnused_ : 1;  // an element that counts as empty
  bool isLongString_ : 1;
  bool isRemoved_ : 1;
};

#if defined(__LP64__)
static_assert(sizeof(InputImpl) == 48);
#endif

inline const InputImpl& Input::impl() const noexcept {
  return static_cast<const InputImpl&>(*this);
}

}  // namespace zn::korvo_sdk
