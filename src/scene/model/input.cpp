// Input: structure, values and links. The dump of a scene and the reader both come here.
#include <vsa/model/input.h>

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <limits>
#include <memory>
#include <stdexcept>
#include <string>
#include <utility>

#include <vsa/model/node.h>
#include <vsa/model/output.h>
#include <vsa/model/scene.h>
#include "diagnostics/emitter.h"
#include "scene/node_type_table.h"

namespace zn::korvo_sdk {

Input::Input(Node* node, String name, AttrType type)
    : name_(std::move(name)),
      value_{.integer = 0},
      level_(1),
      type_(static_cast<std::uint8_t>(type)),
      isNodeInput_(true),
      isElement_(false),
      isUnused_(false),
      isLongString_(false) {
  parent_.node = node;
}

Input::Input(Input* parent, String name, std::uint32_t index, AttrType type)
    : name_(std::move(name)),
      value_{.integer = 0},
      index_(index),
      level_(static_cast<std::uint16_t>(parent->level_ + 1)),
      type_(static_cast<std::uint8_t>(type)),
      isNodeInput_(false),
      isElement_(parent->typeOf() == AttrType::Array),
      isUnused_(isElement_),
      isLongString_(false) {
  parent_.input = parent;
}

Input::~Input() {
  freeValue();
}

// --- where it is ---

Node* Input::owner() const noexcept {
  const Input* input = this;
  while (!input->isNodeInput_) input = input->parent_.input;
  return input->parent_.node;
}

Scene* Input::scene() const noexcept {
  return Slabs<Input, Scene>::ownerOf(this);
}

// Put together from the parents, outermost first.
String Input::path() const {
  std::string text(owner()->name().view());
  ds::Vector<const Input*> chain;
  for (const Input* input = this; input != nullptr; input = input->parentInput()) {
    chain.push_back(input);
  }
  for (std::uint64_t i = chain.size; i > 0; --i) {
    const Input& input = *chain[i - 1];
    if (input.isElement_) {
      (text += '[').append(std::to_string(input.index_)) += ']';
    } else {
      (text += '.') += input.name_.view();
    }
  }
  return String::copyOf(text);
}

// Inputs of a declared node type carry its enumeration and its refusal.
const DeclaredInput* Input::declared() const noexcept {
  if (!isNodeInput_ || parent_.node->declaration() == nullptr) return nullptr;
  return parent_.node->declaration()->input(name_.view());
}

// --- what it holds ---

bool Input::boolean() const noexcept {
  return typeOf() == AttrType::Bool && value_.boolean;
}

std::int64_t Input::integer() const noexcept {
  return typeOf() == AttrType::Int || typeOf() == AttrType::UInt ? value_.integer : 0;
}

double Input::real() const noexcept {
  return typeOf() == AttrType::Real ? value_.real : 0;
}

const char* Input::string() const noexcept {
  return typeOf() == AttrType::String && value_.string != nullptr ? value_.string : "";
}

const double* Input::components() const noexcept {
  static constexpr double ZEROS[16] = {};
  if (componentCount(typeOf()) == 0) return nullptr;
  return value_.components != nullptr ? value_.components : ZEROS;
}

BufferValue Input::buffer() const noexcept {
  if (typeOf() != AttrType::Buffer || value_.buffer == nullptr) return BufferValue{};
  return *value_.buffer;
}

Node* Input::node() const noexcept {
  Node* const node = typeOf() == AttrType::Node ? value_.node : nullptr;
  return node != nullptr && !node->isRemoved() ? node : nullptr;
}

Output* Input::connection() const noexcept {
  return connection_ != nullptr && !connection_->node()->isRemoved() ? connection_ : nullptr;
}

std::uint64_t Input::memberCount() const noexcept {
  return typeOf() == AttrType::Object && value_.members != nullptr ? value_.members->count() : 0;
}

Input* Input::member(std::uint64_t index) const noexcept {
  return index < memberCount() ? value_.members->at(index) : nullptr;
}

bool Input::holdsBuffer(bool /*flag*/) const {
  return typeOf() == AttrType::Buffer;
}

const interfaces::IEnumeration* Input::enumValues() const {
  const DeclaredInput* const made = declared();
  return made == nullptr ? nullptr : &made->enumeration;
}

AttrType Input::elementType() const {
  if (typeOf() != AttrType::Array || value_.elements == nullptr) return AttrType::Null;
  return value_.elements->type;
}

DataType Input::bufferType() const {
  return buffer().type;
}

bool Input::isArray(bool /*flag*/) const {
  return typeOf() == AttrType::Array;
}

bool Input::refusesValues() const {
  const DeclaredInput* const made = declared();
  return made != nullptr && made->declaration.refusesValues;
}

// --- elements ---

Input::ElementList& Input::elements() {
  if (value_.elements == nullptr) value_.elements = new ElementList;
  return *value_.elements;
}

std::uint64_t Input::count() const {
  return typeOf() == AttrType::Array && value_.elements != nullptr ? value_.elements->inputs.size
                                                                   : 0;
}

Input* Input::element(std::uint64_t index) {
  return index < count() ? value_.elements->inputs[index] : nullptr;
}

void Input::appendElement() {
  if (typeOf() != AttrType::Array) return;
  const std::uint64_t index = count();
  if (level_ >= scene()->depthLimit()) {
    scene()->refuseDepth(path() + String("[") + String(static_cast<unsigned long long>(index)) +
                         "]");
  }
  if (index > std::numeric_limits<std::uint32_t>::max()) {
    throw std::length_error("an array holds at most 2^32 elements");
  }
  scene()->checkEmptyElements(*this);
  ElementList& list = elements();
  list.inputs.push_back(nullptr);  // room first: what is made must be in the list
  try {
    list.inputs[index] =
        &scene()->inputs().make(this, String(), static_cast<std::uint32_t>(index), list.type);
  } catch (...) {
    --list.inputs.size;
    throw;
  }
  scene()->countEmptyElement();
  markUsed();
}

// --- members ---

bool Input::hasInput(const String& name, AttrType type) {
  const Input* const found = input(name);
  return found != nullptr && (type == AttrType::Null || found->typeOf() == type);
}

Input* Input::input(const String& name) {
  if (typeOf() != AttrType::Object || value_.members == nullptr) return nullptr;
  return value_.members->find(name);
}

Input* Input::createInput(const String& name, AttrType type) {
  return makeMember(name, type, AttrType::Null);
}

Input* Input::createArray(const String& name, AttrType elementType) {
  return makeMember(name, AttrType::Array, elementType);
}

Input* Input::makeMember(const String& name, AttrType type, AttrType elementType) {
  if (typeOf() != AttrType::Object && typeOf() != AttrType::Null) return nullptr;
  if (name.startsWith("[", false)) return nullptr;
  if (Input* const existing = input(name); existing != nullptr) {
    return existing->typeOf() == type ? existing : nullptr;
  }
  if (level_ >= scene()->depthLimit()) scene()->refuseDepth(path() + "." + name);
  std::unique_ptr<NamedList<Input>> made;
  if (typeOf() == AttrType::Null || value_.members == nullptr) {
    made = std::make_unique<NamedList<Input>>();
  }
  NamedList<Input>& members = made != nullptr ? *made : *value_.members;
  Input* const member = &scene()->inputs().make(this, name, 0U, type);
  if (type == AttrType::Array) member->setElementType(elementType);
  members.append(member, scene()->blocks());
  become(AttrType::Object);
  if (made != nullptr) value_.members = made.release();
  markUsed();
  return member;
}

void Input::markUsed() noexcept {
  if (!isUnused_) return;
  isUnused_ = false;
  scene()->uncountEmptyElement();
}

// --- values ---

// Turns a Null input into one of another type, at its zero value.
void Input::become(AttrType type) noexcept {
  if (typeOf() != AttrType::Null) return;
  type_ = static_cast<std::uint8_t>(type);
  value_.integer = 0;
}

void Input::setElementType(AttrType type) {
  if (typeOf() == AttrType::Array && (type != AttrType::Null || value_.elements != nullptr)) {
    elements().type = type;
  }
}

void Input::set(const AttrData& structure) {
  if (structure.type == AttrType::Array) {
    become(AttrType::Array);
    setElementType(static_cast<AttrType>(structure.elementType));
  } else if (structure.type == AttrType::Buffer) {
    BufferValue empty{};
    empty.type = static_cast<DataType>(structure.elementType);
    become(AttrType::Buffer);
    if (typeOf() == AttrType::Buffer) setBuffer(empty);
  }
}

// Takes over the buffer's memory.
void Input::setBuffer(const BufferValue& buffer) {
  if (value_.buffer == nullptr) {
    value_.buffer = new BufferValue(buffer);
  } else {
    std::free(value_.buffer->memory);
    *value_.buffer = buffer;
  }
}

// Whatever happens, the value's memory has an owner from here on.
void Input::assign(const AttrData& value) {
  markUsed();
  if (value.type != AttrType::Object) become(value.type);
  const bool fits = value.type == typeOf();
  if (value.type == AttrType::String) {
    assignString(value.payload.string, fits);
  } else if (value.type == AttrType::Buffer) {
    assignBuffer(value.payload.buffer, fits);
  } else if (fits) {
    assignPlain(value);
  }
}

// A short text moves into a block, and its memory serves the next one.
void Input::assignString(char* text, bool fits) {
  std::unique_ptr<char, decltype(&std::free)> memory(text, &std::free);
  if (!fits) return;
  const std::size_t bytes = text == nullptr ? 0 : std::strlen(text) + 1;
  const bool isShort = bytes <= Blocks::MOST_BYTES;
  char* kept = nullptr;
  if (!isShort) {
    kept = memory.release();
  } else if (bytes > 1) {
    kept = static_cast<char*>(scene()->blocks().take(bytes));
    std::memcpy(kept, text, bytes);
  }
  freeString();
  value_.string = kept;
  isLongString_ = !isShort;
}

void Input::freeString() noexcept {
  if (isLongString_) {
    std::free(value_.string);
  } else if (value_.string != nullptr) {
    scene()->blocks().giveBack(value_.string, std::strlen(value_.string) + 1);
  }
}

void Input::assignBuffer(const BufferValue& buffer, bool fits) {
  std::unique_ptr<unsigned char, decltype(&std::free)> memory(buffer.memory, &std::free);
  if (!fits) return;
  setBuffer(buffer);
  static_cast<void>(memory.release());  // the input holds it now
}

void Input::assignPlain(const AttrData& value) {
  switch (value.type) {
    case AttrType::Bool:
      value_.boolean = value.payload.boolean;
      break;
    case AttrType::Int:
    case AttrType::UInt:
      value_.integer = value.payload.integer;
      break;
    case AttrType::Real:
      value_.real = value.payload.real;
      break;
    default:
      assignComponents(value.payload.components);
      break;
  }
}

void Input::assignComponents(const double* components) {
  const unsigned count = componentCount(typeOf());
  if (count == 0) return;
  if (value_.components == nullptr) {
    value_.components = static_cast<double*>(scene()->blocks().take(count * sizeof(double)));
  }
  std::copy_n(components, count, value_.components);
}

// The blocks of the scene go all at once, when it goes.
void Input::freeValue() noexcept {
  switch (typeOf()) {
    case AttrType::String:
      if (isLongString_) std::free(value_.string);
      break;
    case AttrType::Buffer:
      if (value_.buffer != nullptr) std::free(value_.buffer->memory);
      delete value_.buffer;
      break;
    case AttrType::Array:
      delete value_.elements;
      break;
    case AttrType::Object:
      delete value_.members;
      break;
    default:
      break;
  }
}

// --- links ---

void Input::connect(interfaces::IOutput* output) {
  markUsed();
  connection_ = static_cast<Output*>(output);
}

void Input::disconnect() {
  markUsed();
  connection_ = nullptr;
}

void Input::setNode(interfaces::INode* node) {
  markUsed();
  become(AttrType::Node);
  if (typeOf() == AttrType::Node) {
    value_.node = static_cast<Node*>(node);
    return;
  }
  const String name = node == nullptr ? String("null") : node->name();
  Emitter().log(DiagnosticId::CannotAssignNode, name, path(), typeName());
}

}  // namespace zn::korvo_sdk
