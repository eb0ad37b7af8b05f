// HeaderText: the comments at the beginning of a text, with the version and the time of the scene.
// HeaderForm decides which of them are written. Internal.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include <vsa/model/scene.h>
#include <vsa/write_options.h>
#include "write/text/text_buffer.h"

namespace vsa::impl {

/// The header of one scene, and its problems.
class HeaderText {
 public:
  HeaderText(const zn::korvo_sdk::Scene& scene, HeaderForm form);

  /// The problems: one text of reasons.h for each comment that no text can represent, one for a
  /// time that no added comment can contain, and with HeaderForm::Comments one for a version or
  /// time for which HeaderForm::Complete would add a comment. There are none for HeaderForm::None.
  const std::vector<const char*>& problems() const { return problems_; }
  void put(TextBuffer& out) const;

 private:
  void checkComments();
  void checkVersion(unsigned long long found, bool isFound);
  void checkTime(std::string_view found);

  const zn::korvo_sdk::Scene& scene_;
  HeaderForm form_;
  std::vector<const char*> problems_;
  // The comments that are added before and after the comments of the scene. If a comment of the
  // scene sets another version or time, the added comment is placed after it, because the last such
  // comment applies.
  std::string first_;
  std::string last_;
};

}  // namespace vsa::impl
