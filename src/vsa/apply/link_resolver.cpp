#include "vsa/apply/link_resolver.h"

#include <vsa/foundation/string_vector.h>
#include <vsa/scene/name_update.h>
#include "diagnostics/emitter.h"
#include "foundation/base/prefetch.h"
#include "foundation/text/string_prefetch.h"

namespace zn::korvo_sdk::impl {

using interfaces::IInput;

namespace {

using Snapshot = ds::Vector<const PendingTable::Node*>;

// The entries in table order. Nothing is added during resolution, so the pointers stay valid.
Snapshot snapshotOf(const PendingTable& table) {
  Snapshot entries;
  for (const auto& bucket : table.buckets) {
    for (const PendingTable::Node& entry : bucket) entries.push_back(&entry);
  }
  return entries;
}

// The inputs are not in table order in memory, so each is prefetched this many entries ahead.
constexpr std::uint64_t AHEAD = 32;

template <class Visit>
void forEach(const Snapshot& entries, const Visit& visit) {
  for (std::uint64_t i = 0; i < entries.size; ++i) {
    if (i + AHEAD < entries.size) {
      // Most inputs span more than one cache line.
      zn::detail::prefetch(entries[i + AHEAD]->key);
      zn::detail::prefetch(entries[i + AHEAD]->key, 64);
      zn::detail::StringPrefetch::prefetch(entries[i + AHEAD]->value.source);
    }
    visit(*entries[i]->key, entries[i]->value);
  }
}

template <class Resolve>
void resolveAll(const PendingTable& table, const Resolve& resolve) {
  const Snapshot entries = snapshotOf(table);
  forEach(entries, resolve);
  forEach(entries, [](IInput& input, const PendingLink&) { input.release(); });
}

// The source of a connection.
String asWritten(const PendingLink& link) {
  return link.output.isEmpty() ? link.source : link.source + "." + link.output;
}

}  // namespace

void LinkResolver::resolveConnections(const PendingTable& connections) const {
  resolveAll(connections,
             [this](IInput& input, const PendingLink& link) { resolveConnection(input, link); });
}

void LinkResolver::resolveReferences(const PendingTable& references) const {
  resolveAll(references,
             [this](IInput& input, const PendingLink& link) { resolveReference(input, link); });
}

// source = "null" | node "." output
void LinkResolver::resolveConnection(IInput& input, const PendingLink& link) const {
  begin(link);
  if (!link.output.isEmpty()) return connect(input, link.source, link.output, link);
  const String& source = link.source;
  if (source.toLower(true).trim(true, true) == "null") return input.disconnect();
  const StringVector parts = source.split('.', true, false);
  if (parts.size() != 2) return Emitter().log(DiagnosticId::InvalidOutput, source);
  connect(input, parts[0], parts[1], link);
}

void LinkResolver::connect(IInput& input, const String& nodeName, const String& outputName,
                           const PendingLink& link) const {
  interfaces::INode* const node = scene_.findNode(nodeName);
  if (node == nullptr) {
    return Emitter().log(DiagnosticId::NoNodeToConnect, nodeName, input.path());
  }
  interfaces::IOutput* const output = node->output(updateOutputName(node->type(), outputName));
  if (output == nullptr) {
    return Emitter().log(DiagnosticId::NoOutputToConnect, asWritten(link), input.path());
  }
  if (session_ != nullptr && !session_->mayLink(input, *node)) return input.disconnect();
  input.connect(output);
}

// reference = "null" | node
void LinkResolver::resolveReference(IInput& input, const PendingLink& link) const {
  begin(link);
  if (link.source.isEmpty()) return input.setNode(nullptr);
  interfaces::INode* const node = scene_.findNode(link.source);
  if (node == nullptr) {
    return Emitter().log(DiagnosticId::NoNodeToAssign, link.source, input.path());
  }
  const bool isKept = session_ == nullptr || session_->mayLink(input, *node);
  input.setNode(isKept ? node : nullptr);
}

}  // namespace zn::korvo_sdk::impl
