// Links, once every node that they may name exists: connections first, then references. The order
// is that of the tables; a link that fails is logged and the next one taken.
#include "foundation/log.h"
#include "foundation/string_vector.h"
#include "scene/name_update.h"
#include "vsa/messages.h"
#include "vsa/parser.h"

namespace zn::korvo_sdk::impl {

namespace {

using Inputs = ds::Vector<interfaces::IInput*>;

template <class Table>
Inputs keysOf(const Table& table) {
  Inputs keys;
  for (const auto& bucket : table.buckets) {
    for (const auto& node : bucket) keys.push_back(node.key);
  }
  return keys;
}

void releaseAll(const Inputs& inputs) {
  for (interfaces::IInput* const input : inputs) input->release();
}

}  // namespace

void VsaParser::resolveConnections() {
  const Inputs inputs = keysOf(connections);
  for (IInput* const input : inputs) resolveConnection(input, connections[input]);
  releaseAll(inputs);
}

void VsaParser::resolveReferences() {
  const Inputs inputs = keysOf(references);
  for (IInput* const input : inputs) resolveReference(input, references[input]);
  releaseAll(inputs);
}

// source = "null" | node "." output
void VsaParser::resolveConnection(IInput* input, const AssignInfo& info) {
  const String source = collapse(info.sourcePath);
  if (source.toLower(true).trim(true, true) == "null") return input->disconnect();
  const StringVector parts = source.split('.', true, false);
  if (parts.size() != 2) return logWarning(INVALID_OUTPUT, source.buf());
  INode* const node = target().findNode(parts[0]);
  if (node == nullptr) {
    return logWarning(NO_NODE_TO_CONNECT, parts[0].buf(), input->path().buf());
  }
  interfaces::IOutput* const output = node->output(updateOutputName(node->type(), parts[1]));
  if (output == nullptr) {
    return logWarning(NO_OUTPUT_TO_CONNECT, source.buf(), input->path().buf());
  }
  input->connect(output);
}

// reference = "null" | node
void VsaParser::resolveReference(IInput* input, const AssignInfo& info) {
  const Token& reference = info.referenceToken;
  if (reference.type == Token::Type::Null) return input->setNode(nullptr);
  INode* const node = target().findNode(reference.text);
  if (node == nullptr) {
    return logWarning(NO_NODE_TO_ASSIGN, reference.text.buf(), input->path().buf());
  }
  input->setNode(node);
}

}  // namespace zn::korvo_sdk::impl
