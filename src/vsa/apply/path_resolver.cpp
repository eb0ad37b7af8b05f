#include "vsa/apply/path_resolver.h"

#include <vsa/scene/name_update.h>
#include "vsa/diagnostics/messages.h"
#include "vsa/parser.h"

namespace zn::korvo_sdk::impl {

using interfaces::IInput;

namespace {

bool isIndex(const Token& element) {
  return element.type == Token::Type::Brackets;
}

}  // namespace

InputWalk::InputWalk(VsaParser& parser, interfaces::INode& node, const AssignInfo& info)
    : parser_(parser), node_(node), info_(info) {
}

IInput* InputWalk::run() {
  const Token* element = nextElement();
  next_ = nextElement();
  if (element == nullptr) return nullptr;
  while (element != nullptr) {
    afterNext_ = nextElement();
    wanted_ = wanted();
    array_ = isIndex(*element) ? current_ : nullptr;
    current_ = step(*element);
    if (current_ == nullptr) return nullptr;
    element = next_;
    next_ = afterNext_;
  }
  return current_;
}

// Names and indices; the dots between them say nothing more.
const Token* InputWalk::nextElement() {
  const ds::Vector<Token>& path = info_.targetPath;
  while (at_ < path.size) {
    const Token& token = path[at_++];
    if (token.type == Token::Type::Id || token.type == Token::Type::Brackets) return &token;
  }
  return nullptr;
}

InputWalk::Wanted InputWalk::wanted() const {
  if (next_ == nullptr) return {info_.data.type, AttrType::Null};
  if (!isIndex(*next_)) return {AttrType::Object, AttrType::Null};
  if (afterNext_ == nullptr) return {AttrType::Array, info_.data.type};
  return {AttrType::Array, isIndex(*afterNext_) ? AttrType::Array : AttrType::Object};
}

// One element: the input of that name, found or made.
IInput* InputWalk::step(const Token& element) {
  if (!anyNodeTypes()) return step(element.text, element);
  return step(updateInputName(node_.type(), element.text), element);
}

IInput* InputWalk::step(const String& name, const Token& element) {
  IInput* const found = find(name);
  isNew_ = found == nullptr && array_ == nullptr;
  if (found == nullptr) return create(name, element);
  if (next_ != nullptr) check(found);
  return found;
}

IInput* InputWalk::find(const String& name) {
  if (current_ == nullptr) {
    return node_.hasInput(name, AttrType::Null) ? node_.input(name) : nullptr;
  }
  return current_->hasInput(name, AttrType::Null) ? current_->input(name) : nullptr;
}

IInput* InputWalk::create(const String& name, const Token& element) {
  const bool isArray = wanted_.type == AttrType::Array;
  if (current_ == nullptr) {
    return isArray ? node_.createArray(name, wanted_.elementType)
                   : node_.createInput(name, wanted_.type);
  }
  if (current_->type() == AttrType::Array) return elementAt(name, element);
  return isArray ? current_->createArray(name, wanted_.elementType)
                 : current_->createInput(name, wanted_.type);
}

// The element of the current array that `name` gives the index of. The array grows up to it.
IInput* InputWalk::elementAt(const String& name, const Token& element) {
  IInput* const array = current_;
  if (array->elementType() == AttrType::Null) {
    AttrData structure;
    structure.type = AttrType::Array;
    structure.elementType = static_cast<std::int32_t>(wanted_.type);
    array->set(structure);
  }
  if (wanted_.type != AttrType::Null && wanted_.type != array->elementType()) {
    parser_.typeError(attrTypeName(wanted_.type), array, false);
  }
  const std::uint64_t index = indexOf(name, element);
  for (std::uint64_t count = array->count(); count <= index;) {
    array->appendElement();
    const std::uint64_t grown = array->count();
    if (grown <= count) return nullptr;  // refused: there is no end to wait for
    count = grown;
    isNew_ = true;
  }
  return array->element(index);
}

// "[3]" is 3, "[*]" the place behind the last element.
std::uint64_t InputWalk::indexOf(const String& name, const Token& element) {
  const String text = name.trimChars("[]", String());
  if (text == "*") return current_->count();
  unsigned long long index = 0;
  if (!String::parse(text, index, String::Radix::Decimal)) {
    parser_.parseError(INVALID_ARRAY_INDEX, element.text.buf());
  }
  return index;
}

// May the walk go on through an input that exists? It wants an array or an object of it.
void InputWalk::check(IInput* found) {
  if (found->type() == AttrType::Null) return;
  if (found->holdsBuffer(false)) parser_.typeError(attrTypeName(wanted_.type), found, false);
  if (found->isArray(false)) {
    if (wanted_.type != AttrType::Array) {
      parser_.typeError(attrTypeName(wanted_.type), found, false);
    }
    if (wanted_.elementType != AttrType::Null && wanted_.elementType != found->elementType()) {
      parser_.typeError(attrTypeName(wanted_.elementType), found, false);
    }
  } else if (wanted_.type != found->type()) {
    parser_.typeError(attrTypeName(wanted_.type), found, false);
  }
}

}  // namespace zn::korvo_sdk::impl
