// The functions of vsa_c.h for the contents of a scene. Most of them call a function of a view.
#include <new>
#include <optional>
#include <span>
#include <string>

#include "api/c/handles.h"

namespace {

using namespace vsa::c;

static_assert(VSA_OBJECT == static_cast<int>(vsa::ValueType::Object));
static_assert(VSA_STRING == static_cast<int>(vsa::ValueType::String));

vsa::SceneView sceneOf(const vsa_reading* reading) {
  return reading != nullptr ? reading->scene.view() : vsa::SceneView();
}

// Stores the value in `out`, if `out` is not null, and returns 1. If there is no value, returns 0.
template <class Value, class Out>
int store(const Value& value, Out* out) {
  if (!value) return 0;
  if (out != nullptr) *out = static_cast<Out>(*value);
  return 1;
}

}  // namespace

uint64_t vsa_file_version(const vsa_reading* reading) {
  return sceneOf(reading).fileVersion();
}

vsa_text vsa_file_time(const vsa_reading* reading) {
  return textOf(sceneOf(reading).fileTime());
}

size_t vsa_comment_count(const vsa_reading* reading) {
  return sceneOf(reading).comments().size();
}

vsa_text vsa_comment_at(const vsa_reading* reading, size_t index) {
  return textOf(sceneOf(reading).comments()[index]);
}

const vsa_node* vsa_first_node(const vsa_reading* reading) {
  const vsa::NodeRange nodes = sceneOf(reading).nodes();
  return nodes.empty() ? nullptr : handleOf(*nodes.begin());
}

const vsa_node* vsa_next_node(const vsa_node* node) {
  const vsa::NodeView view = viewOf(node);
  if (!view) return nullptr;
  const zn::korvo_sdk::Scene* const scene = view.plain()->scene();
  const vsa::NodeRange::Iterator next(scene, view.plain()->slot() + 1);
  return next == std::default_sentinel ? nullptr : handleOf(*next);
}

const vsa_node* vsa_find_node(const vsa_reading* reading, const char* name) {
  return handleOf(sceneOf(reading)[name]);
}

vsa_text vsa_node_name(const vsa_node* node) {
  return textOf(viewOf(node).name());
}

vsa_text vsa_node_type(const vsa_node* node) {
  return textOf(viewOf(node).type());
}

size_t vsa_input_count(const vsa_node* node) {
  return viewOf(node).inputs().size();
}

const vsa_input* vsa_input_at(const vsa_node* node, size_t index) {
  return handleOf(viewOf(node).inputs()[index]);
}

const vsa_input* vsa_find_input(const vsa_node* node, const char* name) {
  return handleOf(viewOf(node)[name]);
}

size_t vsa_element_count(const vsa_input* array) {
  return viewOf(array).elements().size();
}

const vsa_input* vsa_element_at(const vsa_input* array, size_t index) {
  return handleOf(viewOf(array)[index]);
}

size_t vsa_member_count(const vsa_input* object) {
  return viewOf(object).members().size();
}

const vsa_input* vsa_member_at(const vsa_input* object, size_t index) {
  return handleOf(viewOf(object).members()[index]);
}

const vsa_input* vsa_find_member(const vsa_input* object, const char* name) {
  return handleOf(viewOf(object)[name]);
}

vsa_text vsa_input_name(const vsa_input* input) {
  return textOf(viewOf(input).name());
}

size_t vsa_input_path(const vsa_input* input, char* out, size_t capacity) {
  std::string path;
  try {
    path = viewOf(input).path();
  } catch (const std::bad_alloc&) {  // the path stays empty
  }
  if (out != nullptr && capacity != 0) out[path.copy(out, capacity - 1)] = '\0';
  return path.size();
}

vsa_type vsa_input_type(const vsa_input* input) {
  return static_cast<vsa_type>(viewOf(input).type());
}

const char* vsa_type_name(vsa_type type) {
  return zn::korvo_sdk::attrTypeName(static_cast<vsa::ValueType>(type));
}

int vsa_bool(const vsa_input* input, int* out) {
  return store(viewOf(input).boolean(), out);
}

int vsa_int(const vsa_input* input, int64_t* out) {
  return store(viewOf(input).integer(), out);
}

int vsa_uint(const vsa_input* input, uint64_t* out) {
  return store(viewOf(input).unsignedInteger(), out);
}

int vsa_real(const vsa_input* input, double* out) {
  return store(viewOf(input).real(), out);
}

int vsa_string(const vsa_input* input, vsa_text* out) {
  const std::optional<std::string_view> text = viewOf(input).string();
  if (!text) return 0;
  if (out != nullptr) *out = textOf(*text);
  return 1;
}

size_t vsa_components(const vsa_input* input, const double** out) {
  const std::span<const double> components = viewOf(input).components();
  if (!components.empty() && out != nullptr) *out = components.data();
  return components.size();
}

const vsa_node* vsa_reference(const vsa_input* input) {
  return handleOf(viewOf(input).node());
}

const vsa_node* vsa_connection(const vsa_input* input, vsa_text* output) {
  const vsa::ConnectionView connection = viewOf(input).connection();
  if (connection && output != nullptr) *output = textOf(connection.output());
  return handleOf(connection.node());
}

int vsa_buffer_of(const vsa_input* input, vsa_buffer* out) {
  return storeBuffer(viewOf(input).buffer(), out);
}

int vsa::c::storeBuffer(const vsa::BufferView& buffer, vsa_buffer* out) noexcept {
  if (buffer.problem() != vsa::BufferProblem::None) return 0;
  if (out == nullptr) return 1;
  const vsa::ElementType type = buffer.elementType();
  out->data = buffer.bytes().data();
  out->count = buffer.count();
  out->bytes = buffer.bytes().size();
  out->element_type = zn::korvo_sdk::dataTypeName(type);
  out->component_type = zn::korvo_sdk::dataTypeName(zn::korvo_sdk::componentType(type));
  out->components = zn::korvo_sdk::componentCount(type);
  out->component_bytes = zn::korvo_sdk::componentBytes(type);
  return 1;
}
