// The comments at the beginning of a text, which carry the version and the time of its scene, too.
// Internal.
#pragma once

#include <string>
#include <vector>

#include <vsa/model/scene.h>
#include <vsa/write_options.h>
#include "write/text/text_buffer.h"

namespace vsa::impl {

/// What a header has, and what it cannot have.
class HeaderText {
 public:
  HeaderText(const zn::korvo_sdk::Scene& scene, HeaderForm form);

  /// Reasons of reasons.h, one for each thing that a text cannot carry.
  const std::vector<const char*>& problems() const { return problems_; }
  void put(TextBuffer& out) const;

 private:
  void checkComments();
  void checkVersion(unsigned long long said, bool isSaid);
  void checkTime(const zn::String& said);

  const zn::korvo_sdk::Scene& scene_;
  HeaderForm form_;
  std::vector<const char*> problems_;
  // Comments before and after those of the scene: the last one counts.
  std::string first_;
  std::string last_;
};

}  // namespace vsa::impl
