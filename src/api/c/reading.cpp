// The functions of vsa_c.h that read a text or return the result of a reading.
#include <cstring>
#include <new>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "api/c/handles.h"

namespace {

using namespace vsa::c;

static_assert(VSA_HOST_EXCEPTION == static_cast<int>(vsa::ReadStatus::HostException));
static_assert(VSA_UNREADABLE == static_cast<int>(vsa::ReadStatus::Unreadable));
static_assert(VSA_LIMIT_TEXT_BYTES == static_cast<int>(vsa::Limit::TextBytes) + 1);
static_assert(VSA_LIMIT_DIAGNOSTICS == static_cast<int>(vsa::Limit::Diagnostics) + 1);
static_assert(VSA_UNLIMITED == vsa::UNLIMITED);

vsa_position positionOf(const vsa::TextPosition& position) {
  return {position.offset, position.line, position.column};
}

vsa_progress progressOf(const vsa::ReadProgress& progress) {
  return {progress.bytesRead, progress.bytesTotal.value_or(VSA_UNLIMITED), progress.linksResolved,
          progress.linksTotal};
}

// Returns the names as strings. A null pointer becomes the empty string, which is not the name of
// any node or type. Returns none if `names` is null.
std::vector<std::string> namesOf(const char* const* names, size_t count) {
  std::vector<std::string> result;
  for (size_t i = 0; names != nullptr && i < count; ++i) {
    result.emplace_back(names[i] != nullptr ? names[i] : "");
  }
  return result;
}

vsa::ReadLimits limitsOf(const vsa_options& from) {
  vsa::ReadLimits limits;
  limits.textBytes = from.text_bytes;
  if (from.memory_bytes != VSA_UNLIMITED) limits.memory = from.memory_bytes;
  limits.bufferBytes = from.buffer_bytes;
  limits.nodes = from.nodes;
  limits.elements = from.elements;
  limits.depth = from.depth;
  limits.diagnostics = from.diagnostics;
  return limits;
}

vsa::ReadOptions optionsOf(const vsa_options& from) {
  vsa::ReadOptions options;
  options.limits = limitsOf(from);
  options.keptDiagnostics = from.kept_diagnostics;
  options.keptDiagnosticBytes = from.kept_diagnostic_bytes;
  options.wantedNames = namesOf(from.wanted_names, from.wanted_name_count);
  options.wantedTypes = namesOf(from.wanted_types, from.wanted_type_count);
  options.keepHeader = from.keep_header != 0;
  if (from.skips_buffers != 0) options.buffers = vsa::BufferMode::Skip;
  if (from.progress != nullptr) {
    options.onProgress = [call = from.progress,
                          data = from.progress_data](const vsa::ReadProgress& progress) {
      const vsa_progress state = progressOf(progress);
      return call(data, &state) != 0;
    };
  }
  return options;
}

vsa_reading* wrongUse(const char* message) {
  vsa::ReadOutcome outcome;
  outcome.message = message;
  return new vsa_reading{std::move(outcome), vsa::Scene(), true};
}

// Calls `read` with the options in C++ form. Null options are the defaults. If `options->size` is
// wrong, vsa_options_init of this library did not initialise the options. The result then has the
// status VSA_WRONG_USE. Returns null if there is no memory for the options in C++ form or for the
// result.
template <class Read>
vsa_reading* readBy(const vsa_options* options, const Read& read) noexcept {
  try {
    if (options == nullptr) return read(vsa::ReadOptions());
    if (options->size == sizeof(vsa_options)) return read(optionsOf(*options));
    return wrongUse("vsa_options_init of this header did not initialise the options");
  } catch (const std::bad_alloc&) {
    return nullptr;
  }
}

template <class Result>
vsa_reading* readingOf(Result&& result) {
  const vsa::BufferView loaded = [&] {
    if constexpr (requires { result.buffer(); }) {
      return result.buffer();
    } else {
      return vsa::BufferView();
    }
  }();
  vsa::ReadOutcome& outcome = result;
  return new vsa_reading{std::move(outcome), std::move(result.scene), false, loaded};
}

const vsa::SkippedBuffer* skippedOf(const vsa_reading* reading, size_t index) {
  return index < vsa_skipped_count(reading) ? &reading->outcome.skippedBuffers[index] : nullptr;
}

// Calls `load` with the skipped buffer `index` of `reading`, and with the options in C++ form.
template <class Load>
vsa_reading* loadBy(const vsa_reading* reading, size_t index, const vsa_options* options,
                    const Load& load) noexcept {
  return readBy(options, [&](const vsa::ReadOptions& o) {
    const vsa::SkippedBuffer* const skipped = skippedOf(reading, index);
    if (skipped == nullptr) return wrongUse("no such skipped buffer");
    return readingOf(load(*skipped, o));
  });
}

}  // namespace

void vsa_options_init(vsa_options* options) {
  if (options == nullptr) return;
  const vsa::ReadOptions defaults;
  std::memset(options, 0, sizeof *options);
  options->size = sizeof *options;
  options->text_bytes = options->memory_bytes = options->buffer_bytes = VSA_UNLIMITED;
  options->nodes = options->elements = options->depth = options->diagnostics = VSA_UNLIMITED;
  options->kept_diagnostics = defaults.keptDiagnostics;
  options->kept_diagnostic_bytes = defaults.keptDiagnosticBytes;
}

vsa_reading* vsa_read_file(const char* path, const vsa_options* options) {
  return readBy(options,
                [&](const vsa::ReadOptions& o) { return readingOf(vsa::readFile(path, o)); });
}

vsa_reading* vsa_read_text(const char* text, size_t length, const vsa_options* options) {
  return readBy(options, [&](const vsa::ReadOptions& o) {
    return readingOf(text != nullptr ? vsa::readText(std::string_view(text, length), o)
                                     : vsa::readText(static_cast<const char*>(nullptr), o));
  });
}

void vsa_free(vsa_reading* reading) {
  delete reading;
}

vsa_status vsa_reading_status(const vsa_reading* reading) {
  if (reading == nullptr) return VSA_OUT_OF_MEMORY;
  return reading->isWrongUse ? VSA_WRONG_USE : static_cast<vsa_status>(reading->outcome.status);
}

const char* vsa_status_name(vsa_status status) {
  if (status == VSA_WRONG_USE) return "wrong-use";
  if (static_cast<unsigned>(status) > VSA_WRONG_USE) return "unknown";
  return vsa::name(static_cast<vsa::ReadStatus>(status));
}

vsa_text vsa_reading_message(const vsa_reading* reading) {
  return textOf(reading != nullptr ? std::string_view(reading->outcome.message) : "out of memory");
}

vsa_limit vsa_reading_limit(const vsa_reading* reading) {
  if (reading == nullptr || !reading->outcome.limit) return VSA_NO_LIMIT;
  return static_cast<vsa_limit>(static_cast<int>(*reading->outcome.limit) + 1);
}

const char* vsa_limit_name(vsa_limit limit) {
  if (limit == VSA_NO_LIMIT) return "none";
  if (static_cast<unsigned>(limit) > VSA_LIMIT_DIAGNOSTICS) return "unknown";
  return vsa::name(static_cast<vsa::Limit>(limit - 1));
}

int vsa_reading_counts(const vsa_reading* reading, vsa_counts* out) {
  if (reading == nullptr) return 0;
  if (out == nullptr) return 1;
  const vsa::ReadOutcome& outcome = reading->outcome;
  out->bytes_read = outcome.bytesRead;
  out->statements = outcome.applied.statements;
  out->nodes = outcome.applied.nodes;
  out->elements = outcome.applied.elements;
  out->values = outcome.applied.values;
  out->links = outcome.applied.links;
  out->errors = outcome.errorCount;
  out->warnings = outcome.warningCount;
  return 1;
}

size_t vsa_diagnostic_count(const vsa_reading* reading) {
  return reading != nullptr ? reading->outcome.diagnostics.size() : 0;
}

uint64_t vsa_diagnostics_found(const vsa_reading* reading) {
  return vsa_diagnostic_count(reading) +
         (reading != nullptr ? reading->outcome.droppedDiagnostics : 0);
}

int vsa_diagnostic_at(const vsa_reading* reading, size_t index, vsa_diagnostic* out) {
  if (index >= vsa_diagnostic_count(reading)) return 0;
  if (out == nullptr) return 1;
  const vsa::Diagnostic& found = reading->outcome.diagnostics[index];
  out->id = vsa::name(found.id);
  out->is_error = found.severity == vsa::Severity::Error ? 1 : 0;
  out->ended_reading = found.endedReading ? 1 : 0;
  out->message = textOf(found.message);
  out->input_path = textOf(found.inputPath);
  out->begin = positionOf(found.range.begin);
  out->end = positionOf(found.range.end);
  return 1;
}

size_t vsa_diagnostic_argument_count(const vsa_reading* reading, size_t index) {
  if (index >= vsa_diagnostic_count(reading)) return 0;
  return reading->outcome.diagnostics[index].arguments.size();
}

vsa_text vsa_diagnostic_argument(const vsa_reading* reading, size_t index, size_t argument) {
  if (argument >= vsa_diagnostic_argument_count(reading, index)) return textOf({});
  return textOf(reading->outcome.diagnostics[index].arguments[argument]);
}

// --- skipped buffers ---

size_t vsa_skipped_count(const vsa_reading* reading) {
  return reading != nullptr ? reading->outcome.skippedBuffers.size() : 0;
}

int vsa_skipped_at(const vsa_reading* reading, size_t index, vsa_skipped_buffer* out) {
  const vsa::SkippedBuffer* const skipped = skippedOf(reading, index);
  if (skipped == nullptr) return 0;
  if (out == nullptr) return 1;
  out->input_path = textOf(skipped->inputPath);
  out->element_type = zn::korvo_sdk::dataTypeName(skipped->type);
  out->count = skipped->count;
  out->begin = positionOf(skipped->literal.begin);
  out->end = positionOf(skipped->literal.end);
  return 1;
}

vsa_reading* vsa_load_buffer(const char* path, const vsa_reading* skipped, size_t index,
                             const vsa_options* options) {
  return loadBy(skipped, index, options,
                [&](const vsa::SkippedBuffer& buffer, const vsa::ReadOptions& o) {
                  return vsa::loadBuffer(path, buffer, o);
                });
}

vsa_reading* vsa_load_buffer_from_text(const char* text, size_t length, const vsa_reading* skipped,
                                       size_t index, const vsa_options* options) {
  return loadBy(
      skipped, index, options, [&](const vsa::SkippedBuffer& buffer, const vsa::ReadOptions& o) {
        return vsa::loadBufferFromText(
            text != nullptr ? std::string_view(text, length) : std::string_view(), buffer, o);
      });
}

int vsa_loaded_buffer(const vsa_reading* loaded, vsa_buffer* out) {
  return loaded != nullptr ? storeBuffer(loaded->loaded, out) : 0;
}
