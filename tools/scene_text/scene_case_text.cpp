// The format of test expectations: the result, the log and the scene. Each input of the scene has
// one line, and below it are the indented lines of its elements and members.
#include "tools/scene_text/buffer_numbers.h"
#include "tools/scene_text/input_tree.h"
#include "tools/scene_text/printable_text.h"
#include "tools/scene_text/scene_dump.h"

namespace vsa_tools {

namespace {

using zn::korvo_sdk::AttrType;
using zn::korvo_sdk::Input;
using zn::korvo_sdk::Node;
using zn::korvo_sdk::Output;
using zn::korvo_sdk::Scene;

/// Writes an ASCII character or a byte that is not valid UTF-8. With `quoted`, quotation marks are
/// escaped too.
void putByte(char c, bool quoted, TextOutput& out) {
  if (c == '\\' || (quoted && c == '"')) out.put('\\');
  if (c >= 0x20 && c < 0x7F) return out.put(c);
  out.put(escapedByte(c));
}

void putCharacters(std::string_view text, bool quoted, TextOutput& out) {
  forEachCharacter(
      text,
      [&](char32_t, std::string_view bytes) {
        if (bytes.size() == 1) return putByte(bytes[0], quoted, out);
        out.put(bytes);
      },
      [&](char byte) { putByte(byte, quoted, out); });
}

void putQuoted(std::string_view text, TextOutput& out) {
  out.put('"');
  putCharacters(text, true, out);
  out.put('"');
}

/// Writes text and a line end. "$" marks the end of a text that ends in a blank or in "$".
void putLine(std::string_view text, TextOutput& out) {
  putCharacters(text, false, out);
  if (text.ends_with(' ') || text.ends_with('$')) out.put('$');
  out.put('\n');
}

class InputLines {
 public:
  explicit InputLines(TextOutput& out) : out_(out) {}

  void open(Input& input, const InputPosition& position) {
    indent(position.depth + 2);
    if (position.isElement) {
      out_.put('[');
      out_.put(position.index);
      out_.put(']');
    } else {
      putCharacters(input.name().view(), false, out_);
    }
    out_.put(' ');
    out_.put(zn::korvo_sdk::attrTypeName(input.type()));
    value(input);
    connection(input);
    out_.put('\n');
  }

  void close(Input&) {}

 private:
  void indent(size_t levels) {
    for (size_t i = 0; i < levels; ++i) out_.put("  ");
  }

  void value(Input& input) {
    if (input.type() == AttrType::Null || input.type() == AttrType::Object) return;
    out_.put(' ');
    switch (input.type()) {
      case AttrType::Bool:
        return out_.put(input.boolean() ? "true" : "false");
      case AttrType::Int:
        return out_.put(input.integer());
      case AttrType::UInt:
        return out_.put(static_cast<std::uint64_t>(input.integer()));
      case AttrType::Real:
        return out_.putReal(input.real());
      case AttrType::String:
        return putQuoted(input.string(), out_);
      case AttrType::Node:
        return node(input.node());
      case AttrType::Buffer:
        return buffer(input.buffer());
      case AttrType::Array:
        return out_.put(zn::korvo_sdk::attrTypeName(input.elementType()));
      default:
        return components(input);
    }
  }

  void components(Input& input) {
    const unsigned count = zn::korvo_sdk::componentCount(input.type());
    const double* values = input.components();
    out_.put('[');
    for (unsigned i = 0; i < count; ++i) {
      if (i > 0) out_.put(", ");
      out_.putReal(values[i]);
    }
    out_.put(']');
  }

  void buffer(const zn::korvo_sdk::BufferValue& buffer) {
    out_.put(zn::korvo_sdk::dataTypeName(buffer.type));
    out_.put(' ');
    out_.put(buffer.count);
    out_.put(" [");
    bool first = true;
    forEachNumber(buffer, [&](auto number) {
      if (!first) out_.put(", ");
      first = false;
      this->number(number);
    });
    out_.put(']');
  }

  void number(std::integral auto value) { out_.put(value); }
  void number(std::floating_point auto value) { out_.putReal(value); }

  void node(Node* node) {
    if (node) {
      putCharacters(node->name().view(), false, out_);
    } else {
      out_.put("null");
    }
  }

  void connection(Input& input) {
    const Output* output = input.connection();
    if (!output) return;
    out_.put(" <- ");
    putCharacters((output->node()->name() + "." + output->name()).view(), false, out_);
  }

  TextOutput& out_;
};

void writeResult(const ReadOutcome& outcome, TextOutput& out) {
  out.put("result ");
  if (outcome.escaped) {
    out.put("throws ");
    putLine(*outcome.escaped, out);
  } else {
    out.put(outcome.result ? "true\n" : "false\n");
  }
}

void writeLog(const std::vector<LogEntry>& log, TextOutput& out) {
  if (log.empty()) return;
  out.put("log\n");
  for (const LogEntry& entry : log) {
    out.put(entry.level == zn::LogLevel::Warning ? "  warning " : "  error ");
    putLine(entry.text, out);
  }
}

void writeHeader(const Scene& scene, TextOutput& out) {
  if (scene.fileVersion() != 0) {
    out.put("  fileVersion ");
    out.put(scene.fileVersion());
    out.put('\n');
  }
  if (!scene.fileTime().isEmpty()) {
    out.put("  fileTime ");
    putQuoted(scene.fileTime().view(), out);
    out.put('\n');
  }
  for (std::uint64_t i = 0; i < scene.fileCommentCount(); ++i) {
    out.put("  comment ");
    putQuoted(scene.fileComment(i).view(), out);
    out.put('\n');
  }
}

void writeNode(const Node& node, TextOutput& out) {
  out.put("  node ");
  putCharacters(node.type().view(), false, out);
  out.put(' ');
  putCharacters(node.name().view(), false, out);
  out.put('\n');
  InputLines lines(out);
  for (std::uint64_t i = 0; i < node.inputCount(); ++i) walkInput(*node.inputAt(i), lines);
}

bool isEmpty(const Scene& scene) {
  return scene.nodeCount() == 0 && scene.fileVersion() == 0 && scene.fileTime().isEmpty() &&
         scene.fileCommentCount() == 0;
}

}  // namespace

void dumpCase(const ReadOutcome& outcome, const Scene& scene, TextOutput& out) {
  writeResult(outcome, out);
  writeLog(outcome.log, out);
  if (isEmpty(scene)) return;
  out.put("scene\n");
  writeHeader(scene, out);
  for (std::uint64_t slot = 0; slot < scene.nodeSlots(); ++slot) {
    if (const Node* node = scene.nodeAt(slot)) writeNode(*node, out);
  }
}

}  // namespace vsa_tools
