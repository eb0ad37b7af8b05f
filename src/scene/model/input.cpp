// Input: the functions that change nothing.
#include <vsa/model/input.h>

#include "scene/model/input_impl.h"
#include "scene/model/node_impl.h"
#include "scene/model/output_impl.h"

namespace zn::korvo_sdk {

const String& Input::name() const noexcept {
  return impl().name();
}

Node* Input::owner() const noexcept {
  return &impl().owner();
}

Input* Input::parent() const noexcept {
  return impl().parentInput();
}

bool Input::isRemoved() const noexcept {
  return impl().isRemoved();
}

unsigned Input::level() const noexcept {
  return impl().level_;
}

bool Input::boolean() const noexcept {
  return impl().typeOf() == AttrType::Bool && impl().value_.boolean;
}

std::int64_t Input::integer() const noexcept {
  const AttrType type = impl().typeOf();
  return type == AttrType::Int || type == AttrType::UInt ? impl().value_.integer : 0;
}

double Input::real() const noexcept {
  return impl().typeOf() == AttrType::Real ? impl().value_.real : 0;
}

const char* Input::string() const noexcept {
  const char* const text = impl().typeOf() == AttrType::String ? impl().value_.string : nullptr;
  return text != nullptr ? text : "";
}

const double* Input::components() const noexcept {
  static constexpr double ZEROS[16] = {};
  if (componentCount(impl().typeOf()) == 0) return nullptr;
  const double* const components = impl().value_.components;
  return components != nullptr ? components : ZEROS;
}

BufferValue Input::buffer() const noexcept {
  if (impl().typeOf() != AttrType::Buffer || impl().value_.buffer == nullptr) return BufferValue{};
  return *impl().value_.buffer;
}

Node* Input::node() const noexcept {
  NodeImpl* const node = impl().typeOf() == AttrType::Node ? impl().value_.node : nullptr;
  return node != nullptr && !node->isRemoved() ? node : nullptr;
}

Output* Input::connection() const noexcept {
  OutputImpl* const output = impl().connection_;
  return output != nullptr && !output->node().isRemoved() ? output : nullptr;
}

std::uint64_t Input::memberCount() const noexcept {
  if (impl().typeOf() != AttrType::Object || impl().value_.members == nullptr) return 0;
  return impl().value_.members->count();
}

Input* Input::member(std::uint64_t index) const noexcept {
  return index < memberCount() ? impl().value_.members->at(index) : nullptr;
}

Input* Input::memberNamed(std::string_view name) const noexcept {
  return memberCount() != 0 ? impl().value_.members->find(name) : nullptr;
}

}  // namespace zn::korvo_sdk
