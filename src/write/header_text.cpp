#include "write/header_text.h"

#include <vsa/scene/file_version.h>
#include "scene/header_comment.h"
#include "write/walk/reasons.h"

namespace vsa::impl {

namespace {

using zn::String;
using zn::korvo_sdk::headerValue;
using zn::korvo_sdk::setsTime;
using zn::korvo_sdk::setsVersion;

bool isRepresentable(std::string_view comment) {
  constexpr std::string_view FORBIDDEN("\n\r\0\xFF", 4);
  return comment.starts_with('#') && comment.find_first_of(FORBIDDEN) == std::string_view::npos;
}

/// The version and the time that a text with these comments sets: those of the last comment with
/// one. Copies no comment but one with a version, because comments may be long.
struct HeaderValues {
  unsigned long long version = 0;
  bool hasVersion = false;
  String timeComment;  // the last comment with a time, or an empty one

  std::string_view time() const { return headerValue(timeComment.view()); }

  void add(const String& comment) {
    const std::string_view value = headerValue(comment.view());
    if (setsVersion(comment.view())) {
      const bool isNumber = String::parse(String::copyOf(value), version, String::Radix::Decimal);
      hasVersion = hasVersion || isNumber;
    } else if (setsTime(comment.view()) && !value.empty()) {
      timeComment = comment;
    }
  }
};

}  // namespace

HeaderText::HeaderText(const zn::korvo_sdk::Scene& scene, HeaderForm form)
    : scene_(scene), form_(form) {
  if (form_ != HeaderForm::None) checkComments();
}

void HeaderText::checkComments() {
  HeaderValues found;
  for (std::uint64_t i = 0; i < scene_.fileCommentCount(); ++i) {
    const String comment = scene_.fileComment(i);
    if (isRepresentable(comment.view())) {
      found.add(comment);
    } else {
      problems_.push_back(reasons::COMMENT);
    }
  }
  checkVersion(found.version, found.hasVersion);
  checkTime(found.time());
}

void HeaderText::checkVersion(unsigned long long found, bool isFound) {
  const unsigned long long version = scene_.fileVersion();
  if (isFound ? version == found : version <= zn::korvo_sdk::VSX_FILE_VERSION_1) return;
  if (form_ != HeaderForm::Complete) return problems_.push_back(reasons::VERSION);
  (isFound ? last_ : first_) += "# version: " + std::to_string(version) + '\n';
}

void HeaderText::checkTime(std::string_view found) {
  const String time = scene_.fileTime();
  if (time.view() == found) return;
  const String comment = String("# time: ") + time;
  const bool setsSameTime = isRepresentable(comment.view()) && setsTime(comment.view()) &&
                            !time.isEmpty() && headerValue(comment.view()) == time.view();
  if (!setsSameTime || form_ != HeaderForm::Complete) return problems_.push_back(reasons::TIME);
  std::string& place = found.empty() ? first_ : last_;
  place.append(comment.view()) += '\n';
}

void HeaderText::put(TextBuffer& out) const {
  if (form_ == HeaderForm::None) return;
  out.put(first_);
  for (std::uint64_t i = 0; i < scene_.fileCommentCount(); ++i) {
    const String comment = scene_.fileComment(i);
    if (!isRepresentable(comment.view())) continue;
    out.put(comment.view());
    out.put('\n');
  }
  out.put(last_);
}

}  // namespace vsa::impl
