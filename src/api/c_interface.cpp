// The functions of vsa_c.h: each is a view of the C++ interface. Handles of nodes and inputs are
// the addresses of the scene's own objects.
#include <vsa/vsa_c.h>

#include <cstring>
#include <new>

#include <vsa/read.h>
#include <vsa/view.h>

struct vsa_reading {
  vsa::ReadResult result;
};

namespace {

using vsa::InputView;
using vsa::NodeView;

static_assert(VSA_OBJECT == static_cast<int>(vsa::ValueType::Object));
static_assert(VSA_STRING == static_cast<int>(vsa::ValueType::String));
static_assert(VSA_HOST_EXCEPTION == static_cast<int>(vsa::ReadStatus::HostException));
static_assert(VSA_UNREADABLE == static_cast<int>(vsa::ReadStatus::Unreadable));
static_assert(VSA_UNLIMITED == vsa::UNLIMITED);

NodeView viewOf(const vsa_node* node) {
  return NodeView(reinterpret_cast<zn::korvo_sdk::Node*>(const_cast<vsa_node*>(node)));
}

InputView viewOf(const vsa_input* input) {
  return InputView(reinterpret_cast<zn::korvo_sdk::Input*>(const_cast<vsa_input*>(input)));
}

vsa::SceneView sceneOf(const vsa_reading* reading) {
  return reading != nullptr ? reading->result.scene.view() : vsa::SceneView();
}

const vsa_node* handleOf(NodeView node) {
  return reinterpret_cast<const vsa_node*>(node.plain());
}

const vsa_input* handleOf(InputView input) {
  return reinterpret_cast<const vsa_input*>(input.plain());
}

vsa_text textOf(std::string_view text) {
  return {text.data() != nullptr ? text.data() : "", text.size()};
}

std::string_view nameOf(const char* name) {
  return name != nullptr ? std::string_view(name) : std::string_view();
}

vsa_position positionOf(const vsa::TextPosition& position) {
  return {position.offset, position.line, position.column};
}

// Stores what there is; 1, or 0 if there is nothing.
template <class Value, class Out>
int store(const Value& value, Out* out) {
  if (!value) return 0;
  if (out != nullptr) *out = static_cast<Out>(*value);
  return 1;
}

vsa::ReadOptions optionsOf(const vsa_options& from) {
  vsa::ReadOptions options;
  options.limits.textBytes = from.text_bytes;
  if (from.memory_bytes != VSA_UNLIMITED) options.limits.memory = from.memory_bytes;
  options.limits.bufferBytes = from.buffer_bytes;
  options.limits.nodes = from.nodes;
  options.limits.elements = from.elements;
  options.limits.depth = from.depth;
  options.keptDiagnostics = from.kept_diagnostics;
  if (from.skips_buffers != 0) options.buffers = vsa::BufferMode::Skip;
  if (from.progress != nullptr) {
    options.onProgress = [call = from.progress,
                          data = from.progress_data](const vsa::ReadProgress& progress) {
      return call(data, progress.bytesRead, progress.bytesTotal.value_or(VSA_UNLIMITED)) != 0;
    };
  }
  return options;
}

// Null options are the defaults; options of another size were not initialised.
template <class Read>
vsa_reading* readBy(const vsa_options* options, const Read& read) noexcept {
  if (options != nullptr && options->size != sizeof(vsa_options)) return nullptr;
  try {
    const vsa::ReadOptions readOptions =
        options != nullptr ? optionsOf(*options) : vsa::ReadOptions();
    return new vsa_reading{read(readOptions)};
  } catch (const std::bad_alloc&) {
    return nullptr;
  }
}

}  // namespace

// --- reading ---

void vsa_options_init(vsa_options* options) {
  if (options == nullptr) return;
  std::memset(options, 0, sizeof *options);
  options->size = sizeof *options;
  options->text_bytes = options->memory_bytes = options->buffer_bytes = VSA_UNLIMITED;
  options->nodes = options->elements = options->depth = VSA_UNLIMITED;
  options->kept_diagnostics = vsa::ReadOptions().keptDiagnostics;
}

vsa_reading* vsa_read_file(const char* path, const vsa_options* options) {
  return readBy(options, [&](const vsa::ReadOptions& o) { return vsa::readFile(path, o); });
}

vsa_reading* vsa_read_text(const char* text, size_t length, const vsa_options* options) {
  return readBy(options, [&](const vsa::ReadOptions& o) {
    return text != nullptr ? vsa::readText(std::string_view(text, length), o)
                           : vsa::readText(static_cast<const char*>(nullptr), o);
  });
}

void vsa_free(vsa_reading* reading) {
  delete reading;
}

vsa_status vsa_reading_status(const vsa_reading* reading) {
  return reading != nullptr ? static_cast<vsa_status>(reading->result.status) : VSA_OUT_OF_MEMORY;
}

const char* vsa_status_name(vsa_status status) {
  return vsa::name(static_cast<vsa::ReadStatus>(status));
}

vsa_text vsa_reading_message(const vsa_reading* reading) {
  return textOf(reading != nullptr ? std::string_view(reading->result.message) : "out of memory");
}

size_t vsa_diagnostic_count(const vsa_reading* reading) {
  return reading != nullptr ? reading->result.diagnostics.size() : 0;
}

uint64_t vsa_diagnostics_found(const vsa_reading* reading) {
  return vsa_diagnostic_count(reading) +
         (reading != nullptr ? reading->result.droppedDiagnostics : 0);
}

int vsa_diagnostic_at(const vsa_reading* reading, size_t index, vsa_diagnostic* out) {
  if (index >= vsa_diagnostic_count(reading) || out == nullptr) return 0;
  const vsa::Diagnostic& found = reading->result.diagnostics[index];
  out->id = vsa::name(found.id);
  out->is_error = found.severity == vsa::Severity::Error ? 1 : 0;
  out->ended_reading = found.endedReading ? 1 : 0;
  out->message = textOf(found.message);
  out->input_path = textOf(found.inputPath);
  out->begin = positionOf(found.range.begin);
  out->end = positionOf(found.range.end);
  return 1;
}

// --- the scene ---

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
  const vsa::SceneView::CommentRange comments = sceneOf(reading).comments();
  return textOf(index < comments.size() ? comments[index] : std::string_view());
}

const vsa_node* vsa_first_node(const vsa_reading* reading) {
  const vsa::NodeRange nodes = sceneOf(reading).nodes();
  return nodes.empty() ? nullptr : handleOf(*nodes.begin());
}

const vsa_node* vsa_next_node(const vsa_node* node) {
  const NodeView view = viewOf(node);
  if (!view) return nullptr;
  const zn::korvo_sdk::Scene* const scene = view.plain()->scene();
  const vsa::NodeRange::Iterator next(scene, view.plain()->slot() + 1);
  return next == std::default_sentinel ? nullptr : handleOf(*next);
}

const vsa_node* vsa_find_node(const vsa_reading* reading, const char* name) {
  return handleOf(sceneOf(reading)[nameOf(name)]);
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
  const NodeView::InputRange inputs = viewOf(node).inputs();
  return index < inputs.size() ? handleOf(inputs[index]) : nullptr;
}

const vsa_input* vsa_find_input(const vsa_node* node, const char* name) {
  return handleOf(viewOf(node)[nameOf(name)]);
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
  const InputView::MemberRange members = viewOf(object).members();
  return index < members.size() ? handleOf(members[index]) : nullptr;
}

const vsa_input* vsa_find_member(const vsa_input* object, const char* name) {
  return handleOf(viewOf(object)[nameOf(name)]);
}

vsa_text vsa_input_name(const vsa_input* input) {
  return textOf(viewOf(input).name());
}

size_t vsa_input_path(const vsa_input* input, char* out, size_t capacity) {
  std::string path;
  try {
    path = viewOf(input).path();
  } catch (const std::bad_alloc&) {  // an empty path
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
  const vsa::BufferView buffer = viewOf(input).buffer();
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
