// Links, once every node that they may name exists: connections first, then references. The order
// is that of the tables; a link that fails is logged and the next one taken.
#include <vsa/foundation/log.h>
#include <vsa/foundation/string_vector.h>
#include <vsa/scene/name_update.h>
#include "foundation/base/prefetch.h"
#include "vsa/diagnostics/messages.h"
#include "vsa/parser.h"

namespace zn::korvo_sdk::impl {

namespace {

using Table = VsaParser::PendingTable;
using Snapshot = ds::Vector<const Table::Node*>;

// The entries in the order of the table. Nothing is added to it while they are resolved, so they
// stay where they are.
Snapshot snapshotOf(const Table& table) {
  Snapshot entries;
  for (const auto& bucket : table.buckets) {
    for (const Table::Node& node : bucket) entries.push_back(&node);
  }
  return entries;
}

// The order of a table leaps about in memory: what is needed some entries later is asked for early,
// the entry's own things first, then the node that its source names.
constexpr std::uint64_t AHEAD = 32;
constexpr std::uint64_t NODE_AHEAD = 24;

void releaseInputs(const Snapshot& entries) {
  for (std::uint64_t i = 0; i < entries.size; ++i) {
    if (i + AHEAD < entries.size) zn::detail::prefetch(entries[i + AHEAD]->key);
    entries[i]->key->release();
  }
}

template <class Expect, class Resolve>
void forEach(const Snapshot& entries, const Expect& expect, const Resolve& resolve) {
  for (std::uint64_t i = 0; i < entries.size; ++i) {
    if (i + AHEAD < entries.size) {
      // An input mostly takes more than one cache line.
      zn::detail::prefetch(entries[i + AHEAD]->key);
      zn::detail::prefetch(entries[i + AHEAD]->key, 64);
    }
    if (i + NODE_AHEAD < entries.size) expect(entries[i + NODE_AHEAD]->value);
    resolve(entries[i]->key, entries[i]->value);
  }
}

// Most sources are written `node.output`, and are at hand in two tokens. Of a path that begins with
// a name, the third token is one, too.
bool isPlainSource(const ds::Vector<Token>& path) {
  return path.size == 3 && path[0].type == Token::Type::Id;
}

// The source of a connection.
String asWritten(const PendingLink& link) {
  return link.output.isEmpty() ? link.source : link.source + "." + link.output;
}

}  // namespace

PendingLink::PendingLink(const AssignInfo& info) {
  if (info.isConnection) {
    const ds::Vector<Token>& path = info.sourcePath;
    const bool isPlain = isPlainSource(path);
    source = isPlain ? path[0].text : VsaParser::collapse(path);
    if (isPlain) output = path[2].text;
  } else if (info.referenceToken.type != Token::Type::Null) {
    source = info.referenceToken.text;
  }
}

void VsaParser::resolveConnections() {
  const Snapshot entries = snapshotOf(connections);
  const auto expect = [this](const PendingLink& link) {
    if (!link.output.isEmpty()) target().expectNode(link.source);
  };
  forEach(entries, expect,
          [this](IInput* input, const PendingLink& link) { resolveConnection(input, link); });
  releaseInputs(entries);
}

void VsaParser::resolveReferences() {
  const Snapshot entries = snapshotOf(references);
  const auto expect = [this](const PendingLink& link) {
    if (!link.source.isEmpty()) target().expectNode(link.source);
  };
  forEach(entries, expect,
          [this](IInput* input, const PendingLink& link) { resolveReference(input, link); });
  releaseInputs(entries);
}

// source = "null" | node "." output
void VsaParser::resolveConnection(IInput* input, const PendingLink& link) {
  if (!link.output.isEmpty()) return connectTo(input, link.source, link.output, link);
  const String& source = link.source;
  if (source.toLower(true).trim(true, true) == "null") return input->disconnect();
  const StringVector parts = source.split('.', true, false);
  if (parts.size() != 2) return logWarning(INVALID_OUTPUT, source.buf());
  connectTo(input, parts[0], parts[1], link);
}

void VsaParser::connectTo(IInput* input, const String& nodeName, const String& outputName,
                          const PendingLink& link) {
  INode* const node = target().findNode(nodeName);
  if (node == nullptr) {
    return logWarning(NO_NODE_TO_CONNECT, nodeName.buf(), input->path().buf());
  }
  interfaces::IOutput* const output = anyNodeTypes()
                                          ? node->output(updateOutputName(node->type(), outputName))
                                          : node->output(outputName);
  if (output == nullptr) {
    const String source = asWritten(link);
    return logWarning(NO_OUTPUT_TO_CONNECT, source.buf(), input->path().buf());
  }
  input->connect(output);
}

// reference = "null" | node
void VsaParser::resolveReference(IInput* input, const PendingLink& link) {
  if (link.source.isEmpty()) return input->setNode(nullptr);
  INode* const node = target().findNode(link.source);
  if (node == nullptr) {
    return logWarning(NO_NODE_TO_ASSIGN, link.source.buf(), input->path().buf());
  }
  input->setNode(node);
}

}  // namespace zn::korvo_sdk::impl
