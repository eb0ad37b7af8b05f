// HeaderText: the comments at the beginning of a text. They also contain the version and the time
// of the scene. Internal.
#pragma once

#include <string>
#include <vector>

#include <vsa/model/scene.h>
#include <vsa/write_options.h>
#include "write/text/text_buffer.h"

namespace vsa::impl {

/// The header of one scene, and the parts of it that a text cannot represent.
class HeaderText {
 public:
  HeaderText(const zn::korvo_sdk::Scene& scene, HeaderForm form);

  /// The texts of reasons.h, one for each part that a text cannot represent.
  const std::vector<const char*>& problems() const { return problems_; }
  /// Writes the comments.
  void put(TextBuffer& out) const;

 private:
  void checkComments();
  void checkVersion(unsigned long long said, bool isSaid);
  void checkTime(const zn::String& said);

  const zn::korvo_sdk::Scene& scene_;
  HeaderForm form_;
  std::vector<const char*> problems_;
  // Comments that are added before and after those of the scene. The last one that sets a version
  // or a time applies.
  std::string first_;
  std::string last_;
};

}  // namespace vsa::impl
