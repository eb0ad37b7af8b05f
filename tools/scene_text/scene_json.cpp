// The JSON format of scene_dump.h, written while the scene is traversed.
#include <algorithm>

#include "tools/scene_text/buffer_numbers.h"
#include "tools/scene_text/input_tree.h"
#include "tools/scene_text/json_writer.h"
#include "tools/scene_text/scene_dump.h"

namespace vsa_tools {

namespace {

using zn::korvo_sdk::AttrType;
using zn::korvo_sdk::DataType;
using zn::korvo_sdk::Input;
using zn::korvo_sdk::Node;
using zn::korvo_sdk::Output;
using zn::korvo_sdk::Scene;

/// Visitor of walkInput. `open` writes everything up to the elements or members of an input,
/// `close` the rest.
class InputWriter {
 public:
  InputWriter(JsonWriter& json, const DumpOptions& options) : json_(json), options_(options) {}

  /// Writes an input with its elements and members. `name` is written as its name.
  void write(Input& input, std::string_view name) {
    name_ = name;
    walkInput(input, *this);
  }

  void open(Input& input, const InputPosition& position) {
    if (position.index > 0) json_.raw(",");
    json_.raw("{");
    if (!position.isElement) {
      json_.key("name", true);
      json_.text(position.depth == 0 ? name_ : input.name().view());
    }
    json_.key("type", position.isElement);
    json_.text(zn::korvo_sdk::attrTypeName(input.type()));
    value(input);
  }

  void close(Input& input) {
    if (input.type() == AttrType::Array || input.type() == AttrType::Object) json_.raw("]");
    connection(input);
    json_.raw("}");
  }

 private:
  void value(Input& input) {
    switch (input.type()) {
      case AttrType::Array:
        json_.key("elementType");
        json_.text(zn::korvo_sdk::attrTypeName(input.elementType()));
        json_.key("elements");
        return json_.raw("[");
      case AttrType::Object:
        json_.key("members");
        return json_.raw("[");
      case AttrType::Buffer:
        return buffer(input.buffer());
      default:
        json_.key("value");
        return single(input);
    }
  }

  void single(Input& input) {
    switch (input.type()) {
      case AttrType::Null:
        return json_.raw("null");
      case AttrType::Bool:
        return json_.boolean(input.boolean());
      case AttrType::Int:
        return json_.number(input.integer());
      case AttrType::UInt:
        return json_.number(static_cast<std::uint64_t>(input.integer()));
      case AttrType::Real:
        return json_.number(input.real());
      case AttrType::String:
        return json_.text(input.string());
      case AttrType::Node:
        return node(input.node());
      default:
        return components(input);
    }
  }

  void components(Input& input) {
    const unsigned count = zn::korvo_sdk::componentCount(input.type());
    const double* values = input.components();
    json_.raw("[");
    for (unsigned i = 0; i < count; ++i) {
      if (i > 0) json_.raw(",");
      json_.number(values[i]);
    }
    json_.raw("]");
  }

  void buffer(const zn::korvo_sdk::BufferValue& buffer) {
    json_.key("bufferType");
    json_.text(zn::korvo_sdk::dataTypeName(buffer.type));
    json_.key("count");
    json_.number(buffer.count);
    if (!options_.hasBuffers) return;
    zn::korvo_sdk::BufferValue shown = buffer;
    shown.count = std::min(buffer.count, options_.maxElements);
    json_.key("value");
    json_.raw("[");
    bool first = true;
    forEachNumber(shown, [&](auto number) {
      if (!first) json_.raw(",");
      first = false;
      json_.number(number);
    });
    json_.raw("]");
  }

  void node(Node* node) {
    if (node) {
      json_.text(node->name().view());
    } else {
      json_.raw("null");
    }
  }

  void connection(Input& input) {
    const Output* output = input.connection();
    if (!output) return;
    json_.key("connection");
    json_.text((output->node()->name() + "." + output->name()).view());
  }

  JsonWriter& json_;
  const DumpOptions& options_;
  std::string_view name_;
};

void writeStatus(const ReadStatus& status, JsonWriter& json) {
  json.key("result", true);
  json.boolean(status.result);
  json.key("escaped");
  if (status.escaped) {
    json.text(*status.escaped);
  } else {
    json.raw("null");
  }
}

void writeHeader(const Scene& scene, JsonWriter& json) {
  json.key("fileVersion");
  json.number(scene.fileVersion());
  json.key("fileTime");
  json.text(scene.fileTime().view());
  json.key("fileComments");
  json.raw("[");
  for (std::uint64_t i = 0; i < scene.fileCommentCount(); ++i) {
    if (i > 0) json.raw(",");
    json.text(scene.fileComment(i).view());
  }
  json.raw("]");
}

void writeInputs(const Node& node, const ChosenInputs& chosen, JsonWriter& json,
                 const DumpOptions& options) {
  InputWriter writer(json, options);
  if (!chosen) {
    for (std::uint64_t i = 0; i < node.inputCount(); ++i) {
      if (i > 0) json.raw(",");
      Input& input = *node.inputAt(i);
      writer.write(input, input.name().view());
    }
    return;
  }
  bool first = true;
  for (const ChosenInput& input : *chosen) {
    if (!first) json.raw(",");
    first = false;
    writer.write(*input.input, input.name);
  }
}

void writeNode(const Node& node, const ChosenInputs& chosen, JsonWriter& json,
               const DumpOptions& options) {
  json.raw("{");
  json.key("type", true);
  json.text(node.type().view());
  json.key("name");
  json.text(node.name().view());
  json.key("inputs");
  json.raw("[");
  writeInputs(node, chosen, json, options);
  json.raw("]}");
}

}  // namespace

void dumpLogEntry(zn::LogLevel level, std::string_view text, TextOutput& out) {
  JsonWriter json(out);
  json.raw("{");
  json.key("level", true);
  json.text(level == zn::LogLevel::Warning ? "warning" : "error");
  json.key("text");
  json.text(text);
  json.raw("}");
}

void dumpJson(const ReadOutcome& outcome, const Scene& scene, TextOutput& out) {
  const auto writeLog = [&outcome](TextOutput& to) {
    bool first = true;
    for (const LogEntry& entry : outcome.log) {
      if (!first) to.put(',');
      first = false;
      dumpLogEntry(entry.level, entry.text, to);
    }
  };
  dumpJson(outcome, writeLog, scene, out);
}

void dumpJson(const ReadStatus& status, const LogWriter& writeLog, const Scene& scene,
              TextOutput& out, const DumpOptions& options) {
  JsonWriter json(out);
  json.raw("{");
  writeStatus(status, json);
  json.key("log");
  json.raw("[");
  writeLog(out);
  json.raw("]");
  writeHeader(scene, json);
  if (options.hasLines) {
    json.raw("}\n");
  } else {
    json.key("nodes");
    json.raw("[");
  }
  bool first = true;
  for (std::uint64_t slot = 0; slot < scene.nodeSlots(); ++slot) {
    const Node* node = scene.nodeAt(slot);
    if (!node) continue;
    const ChosenInputs chosen = options.choose ? options.choose(*node) : ChosenInputs();
    if (chosen && chosen->empty()) continue;
    if (!options.hasLines) json.raw(first ? "\n" : ",\n");
    first = false;
    writeNode(*node, chosen, json, options);
    if (options.hasLines) json.raw("\n");
  }
  if (!options.hasLines) json.raw(first ? "]}\n" : "\n]}\n");
}

}  // namespace vsa_tools
