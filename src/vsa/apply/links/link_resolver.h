// LinkResolver: creates the links of the scene from pending links. It runs after the last
// statement. Internal.
#pragma once

#include <vsa/foundation/string.h>
#include <vsa/scene/scene_interface.h>
#include "vsa/apply/links/pending_link.h"
#include "vsa/apply/read_session.h"

namespace zn::korvo_sdk::impl {

/// Resolves the links of one text. Logs a link that fails and continues with the next one.
class LinkResolver {
 public:
  /// `session` may be null.
  explicit LinkResolver(interfaces::IScene& scene, ReadSession* session = nullptr)
      : scene_(scene), session_(session) {}

  /// Resolves every link of the table in table order: bucket by bucket, and in insertion order
  /// within a bucket. Then releases the inputs in the same order. After an exception, no input is
  /// released, or only the first ones. The entries remain in the table.
  void resolveConnections(const PendingTable& connections);
  void resolveReferences(const PendingTable& references);

 private:
  // The number of elements of `names_`. It is a power of two, so that `% NAMES` takes one
  // instruction.
  static constexpr std::uint64_t NAMES = 32;

  template <class Resolve>
  void resolveAll(const PendingTable& table, const Resolve& resolve);
  void resolveConnection(interfaces::IInput& input, const PendingLink& link, const String& source);
  void resolveReference(interfaces::IInput& input, const String& name);
  void connect(interfaces::IInput& input, const String& nodeName, const String& outputName,
               const PendingLink& link);

  interfaces::IScene& scene_;
  ReadSession* session_;
  // The sources of the link that is resolved and of the next links, as Strings. The elements are
  // used in turn. Most scenes keep no reference to such a String, so its memory is reused. This
  // saves 7 % of the instructions of the benchmark links.
  String names_[NAMES];
};

}  // namespace zn::korvo_sdk::impl
