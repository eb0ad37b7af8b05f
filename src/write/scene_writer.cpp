#include "write/scene_writer.h"

#include "foundation/base/byte_order_mark.h"
#include "foundation/text/letter_case.h"
#include "write/text/value_text.h"

namespace vsa::impl {

using zn::korvo_sdk::AttrType;
using zn::korvo_sdk::Input;
using zn::korvo_sdk::Node;
using zn::korvo_sdk::Output;

namespace {

void putReference(TextBuffer& out, const Node* node) {
  out.put(" = ");
  if (node == nullptr) return out.put("null;\n");
  out.put(node->nameView());
  out.put(";\n");
}

void putConnection(TextBuffer& out, const Output& output) {
  out.put(" |= ");
  out.put(output.node()->nameView());
  out.put('.');
  out.put(output.name().view());
  out.put(";\n");
}

// Writes the type of a declaration. The name of a type may begin with the bytes of a byte order
// mark, because these bytes are letters. At the beginning of a file, the reader would skip them. So
// a line end is written before such a type.
void putType(TextBuffer& out, std::string_view type) {
  if (out.size() == 0 && type.starts_with(zn::detail::BYTE_ORDER_MARK)) out.put('\n');
  out.put(type);
}

// Whether "type name;" would be a directive and not a declaration.
bool isStatementWord(std::string_view type) {
  return zn::isWord(type, "remove") || zn::isWord(type, "define");
}

}  // namespace

void NodeWriter::beginNode(const Node& node) {
  const std::string_view type = node.typeView();
  isBlock_ = options_.paths == PathForm::Block && node.inputCount() > 0;
  if (isBlock_ && out_.size() > 0) out_.put('\n');
  putType(out_, type);
  out_.put(' ');
  out_.put(node.nameView());
  out_.put(isBlock_ || isStatementWord(type) ? ":\n" : ";\n");
}

void NodeWriter::endNode(const Node& /*node*/) {
}

void NodeWriter::putTarget(const Node& node, std::string_view path) {
  if (isBlock_) {
    out_.put("  ");
  } else {
    out_.put(node.nameView());
  }
  out_.put(path);
}

void NodeWriter::value(const Node& node, std::string_view path, Input& input, Form form) {
  const bool areLinksLast = options_.links == LinkPlace::Last;
  if (form == Form::Link && input.connection() != nullptr && !areLinksLast) return;
  const std::uint64_t start = out_.size();
  putTarget(node, path);
  switch (form) {
    case Form::Link:
      return out_.put(" |= null;\n");
    case Form::Reference:
      return putReference(out_, areLinksLast ? nullptr : input.node());
    case Form::EmptyObject:
      return out_.put(" = {};\n");
    case Form::EmptyArray:
      return out_.put(" = [];\n");
    default:
      out_.put(" = ");
      putLiteral(out_, input, options_, out_.size() - start);
      out_.put(";\n");
  }
}

void NodeWriter::connection(const Node& node, std::string_view path, const Output& output) {
  if (options_.links == LinkPlace::Last) return;
  putTarget(node, path);
  putConnection(out_, output);
}

void NodeWriter::problem(const Node& node, std::string_view path, const char* reason,
                         bool isReplaced) {
  problems_.add(node.nameView(), path, reason, isReplaced);
}

void LinkWriter::value(const Node& node, std::string_view path, Input& input, Form form) {
  if (form != Form::Reference || input.node() == nullptr) return;
  out_.put(node.nameView());
  out_.put(path);
  putReference(out_, input.node());
}

void LinkWriter::connection(const Node& node, std::string_view path, const Output& output) {
  out_.put(node.nameView());
  out_.put(path);
  putConnection(out_, output);
}

}  // namespace vsa::impl
