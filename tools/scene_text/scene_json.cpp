// A scene as JSON, written as it is walked.
#include <cmath>
#include <cstring>

#include "tools/scene_text/buffer_numbers.h"
#include "tools/scene_text/input_tree.h"
#include "tools/scene_text/printable_text.h"
#include "tools/scene_text/scene_dump.h"

namespace vsa_tools {

namespace {

using zn::korvo_sdk::AttrType;
using zn::korvo_sdk::DataType;
using zn::korvo_sdk::Input;
using zn::korvo_sdk::Node;
using zn::korvo_sdk::Output;
using zn::korvo_sdk::Scene;

constexpr std::string_view REPLACEMENT = "\xEF\xBF\xBD";  // U+FFFD

class JsonWriter {
 public:
  explicit JsonWriter(TextOutput& out) : out_(out) {}

  /// Puts what JSON itself writes.
  void raw(std::string_view text) { out_.put(text); }

  /// `"name":`, with a comma before it unless it is the first of its object.
  void key(std::string_view name, bool first = false) {
    if (!first) out_.put(',');
    out_.put('"');
    out_.put(name);
    out_.put("\":");
  }

  void text(std::string_view text);

  void boolean(bool value) { out_.put(value ? "true" : "false"); }

  void number(std::integral auto value) { out_.put(value); }

  void number(std::floating_point auto value) {
    const bool isNumber = std::isfinite(value);
    if (!isNumber) out_.put('"');
    out_.putReal(value);
    if (!isNumber) out_.put('"');
  }

 private:
  void escaped(char32_t character);

  TextOutput& out_;
};

/// Whether a byte stands for itself in a JSON text, whatever is around it.
bool isPlain(char c) {
  return c >= 0x20 && c < 0x7F && c != '"' && c != '\\';
}

void JsonWriter::text(std::string_view text) {
  out_.put('"');
  while (!text.empty()) {
    size_t plain = 0;
    while (plain < text.size() && isPlain(text[plain])) ++plain;
    out_.put(text.substr(0, plain));
    text.remove_prefix(plain);
    if (text.empty()) break;
    const size_t length = utf8SequenceLength(text);
    const std::string_view sequence = text.substr(0, length == 0 ? 1 : length);
    const char32_t character = length == 0 ? 0xFFFD : utf8Character(sequence);
    if (length < 2 || actsOnTerminal(character)) {
      escaped(character);
    } else {
      out_.put(sequence);
    }
    text.remove_prefix(sequence.size());
  }
  out_.put('"');
}

/// A character that does not stand as it is: JSON's own two, what acts on a terminal, and the
/// replacement character.
void JsonWriter::escaped(char32_t character) {
  constexpr char HEX[] = "0123456789abcdef";
  switch (character) {
    case '"':
      return out_.put("\\\"");
    case '\\':
      return out_.put("\\\\");
    case '\n':
      return out_.put("\\n");
    case '\r':
      return out_.put("\\r");
    case '\t':
      return out_.put("\\t");
    case 0xFFFD:
      return out_.put(REPLACEMENT);
    default:
      break;
  }
  const char code[] = {'\\',
                       'u',
                       HEX[character >> 12 & 15],
                       HEX[character >> 8 & 15],
                       HEX[character >> 4 & 15],
                       HEX[character & 15]};
  out_.put(std::string_view(code, sizeof code));
}

/// Writes an INPUT as it is walked: what stands before its elements or members on opening, the rest
/// on closing.
class InputWriter {
 public:
  explicit InputWriter(JsonWriter& json) : json_(json) {}

  void open(Input& input, const InputPlace& place) {
    if (place.index > 0) json_.raw(",");
    json_.raw("{");
    if (!place.isElement) {
      json_.key("name", true);
      json_.text(input.name().view());
    }
    json_.key("type", place.isElement);
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
    json_.key("value");
    json_.raw("[");
    bool first = true;
    forEachNumber(buffer, [&](auto number) {
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
};

void writeEnd(const ReadEnd& end, JsonWriter& json) {
  json.key("result", true);
  json.boolean(end.result);
  json.key("escaped");
  if (end.escaped) {
    json.text(*end.escaped);
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

void writeNode(const Node& node, JsonWriter& json) {
  json.raw("{");
  json.key("type", true);
  json.text(node.type().view());
  json.key("name");
  json.text(node.name().view());
  json.key("inputs");
  json.raw("[");
  InputWriter writer(json);
  for (std::uint64_t i = 0; i < node.inputCount(); ++i) {
    if (i > 0) json.raw(",");
    walkInput(*node.inputAt(i), writer);
  }
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
  const auto putLog = [&outcome](TextOutput& to) {
    bool first = true;
    for (const LogEntry& entry : outcome.log) {
      if (!first) to.put(',');
      first = false;
      dumpLogEntry(entry.level, entry.text, to);
    }
  };
  dumpJson({outcome.result, outcome.escaped}, putLog, scene, out);
}

void dumpJson(const ReadEnd& end, const LogWriter& putLog, const Scene& scene, TextOutput& out) {
  JsonWriter json(out);
  json.raw("{");
  writeEnd(end, json);
  json.key("log");
  json.raw("[");
  putLog(out);
  json.raw("]");
  writeHeader(scene, json);
  json.key("nodes");
  json.raw("[");
  bool first = true;
  for (std::uint64_t slot = 0; slot < scene.nodeSlots(); ++slot) {
    const Node* node = scene.nodeAt(slot);
    if (!node) continue;
    json.raw(first ? "\n" : ",\n");
    first = false;
    writeNode(*node, json);
  }
  json.raw(first ? "]}\n" : "\n]}\n");
}

}  // namespace vsa_tools
