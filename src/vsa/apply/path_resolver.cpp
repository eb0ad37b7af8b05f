#include "vsa/apply/path_resolver.h"

#include <vsa/scene/name_update.h>
#include "foundation/base/white_space.h"
#include "foundation/numbers/number_text.h"
#include "vsa/apply/type_messages.h"

namespace zn::korvo_sdk::impl {

using interfaces::IInput;

namespace {

bool isIndex(const Token& element) {
  return element.type == Token::Type::Brackets;
}

}  // namespace

IInput* PathResolver::resolve() {
  const Token* element = nextElement();
  next_ = nextElement();
  while (element != nullptr) {
    afterNext_ = nextElement();
    required_ = required();
    array_ = isIndex(*element) ? current_ : nullptr;
    current_ = step(*element);
    if (current_ == nullptr) return nullptr;
    element = next_;
    next_ = afterNext_;
  }
  return current_;
}

// Returns the next name or index of the path. Skips dots. Returns null at the end of the path.
const Token* PathResolver::nextElement() {
  while (position_ < path_.size()) {
    const Token& token = path_[position_++];
    if (token.type == Token::Type::Id || token.type == Token::Type::Brackets) return &token;
  }
  return nullptr;
}

PathResolver::Required PathResolver::required() const {
  if (next_ == nullptr) return {valueType_, AttrType::Null};
  if (!isIndex(*next_)) return {AttrType::Object, AttrType::Null};
  if (afterNext_ == nullptr) return {AttrType::Array, valueType_};
  return {AttrType::Array, isIndex(*afterNext_) ? AttrType::Array : AttrType::Object};
}

// Resolves one element: finds or creates the input that the element names.
IInput* PathResolver::step(const Token& element) {
  const String type = node_.type();
  // If no type is declared, no input has a former name that updateInputName would replace.
  if (!anyNodeTypes()) return step(element.text, element);
  return step(updateInputName(type, element.text), element);
}

IInput* PathResolver::step(const String& name, const Token& element) {
  IInput* const found = find(name);
  if (found == nullptr) {
    const bool isElement = current_ != nullptr && current_->type() == AttrType::Array;
    return isElement ? elementAt(name, element) : createInput(name);
  }
  if (next_ != nullptr) checkType(*found);
  return found;
}

IInput* PathResolver::find(const String& name) {
  if (current_ == nullptr) {
    return node_.hasInput(name, AttrType::Null) ? node_.input(name) : nullptr;
  }
  return current_->hasInput(name, AttrType::Null) ? current_->input(name) : nullptr;
}

IInput* PathResolver::createInput(const String& name) {
  const bool isArray = required_.type == AttrType::Array;
  if (session_ != nullptr) session_->chargeInput(name.len());
  const auto createIn = [&](auto& owner) {
    return isArray ? owner.createArray(name, required_.elementType)
                   : owner.createInput(name, required_.type);
  };
  return current_ == nullptr ? createIn(node_) : createIn(*current_);
}

// Returns the element of the current array at the index in `name`. Appends elements until the
// element exists. Returns null if the scene does not append one.
IInput* PathResolver::elementAt(const String& name, const Token& element) {
  IInput& array = *current_;
  if (array.elementType() == AttrType::Null) {
    array.set({.type = AttrType::Array, .elementType = static_cast<std::int32_t>(required_.type)});
  }
  if (required_.type != AttrType::Null && required_.type != array.elementType()) {
    typeError(required_.type, array);
  }
  const std::uint64_t index = indexOf(name, element);
  arrayCountBefore_ = array.count();
  for (std::uint64_t count = arrayCountBefore_; count <= index;) {
    if (session_ != nullptr) session_->chargeElement();
    array.appendElement();
    const std::uint64_t grown = array.count();
    // The scene appended nothing. Without this check the loop would not end.
    if (grown <= count) return nullptr;
    count = grown;
  }
  return array.element(index);
}

// Converts an index: "[3]" is 3. "[*]" is the size of the array, so that the statement appends an
// element.
std::uint64_t PathResolver::indexOf(const String& name, const Token& element) const {
  const std::string_view text = zn::detail::trimmedChars(name.view(), "[]");
  if (text == "*") return current_->count();
  unsigned long long index = 0;
  if (!integerFromText(text.data(), text.data() + text.size(), index)) {
    emitter_.fatal(DiagnosticId::InvalidArrayIndex, element.text);
  }
  return index;
}

// Checks the type of an existing input against the type that the rest of the path requires. Throws
// DiagnosticError if they differ. For two arrays, also throws if the path requires another element
// type. An input of type Null has every required type. An input that holds a buffer has none.
void PathResolver::checkType(IInput& found) const {
  if (found.type() == AttrType::Null) return;
  if (found.holdsBuffer(false)) typeError(required_.type, found);
  if (found.isArray(false)) {
    if (required_.type != AttrType::Array) typeError(required_.type, found);
    if (required_.elementType != AttrType::Null && required_.elementType != found.elementType()) {
      typeError(required_.elementType, found);
    }
  } else if (required_.type != AttrType::Null && required_.type != found.type()) {
    typeError(required_.type, found);
  }
}

void PathResolver::typeError(AttrType type, IInput& input) const {
  emitTypeError(emitter_, attrTypeName(type), input, false);
}

}  // namespace zn::korvo_sdk::impl
