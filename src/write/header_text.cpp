#include "write/header_text.h"

#include <vsa/scene/file_version.h>
#include "write/walk/reasons.h"

namespace vsa::impl {

namespace {

using zn::String;

bool isCarried(std::string_view comment) {
  constexpr std::string_view FORBIDDEN("\n\r\0\xFF", 4);
  return comment.starts_with('#') && comment.find_first_of(FORBIDDEN) == std::string_view::npos;
}

bool saysVersion(const String& comment) {
  return comment.contains("version:", false);
}

String textAfterColon(const String& comment) {
  return comment.fromFirst(':', false).trim(true, true);
}

/// The version and the time that the reader gets from the comments.
struct HeaderValues {
  unsigned long long version = 0;
  bool hasVersion = false;
  String time;

  void add(const String& comment) {
    if (saysVersion(comment)) {
      const bool isNumber = String::parse(textAfterColon(comment), version, String::Radix::Decimal);
      hasVersion = hasVersion || isNumber;
    } else if (comment.contains("time:", false)) {
      const String text = textAfterColon(comment);
      if (!text.isEmpty()) time = text;
    }
  }
};

}  // namespace

HeaderText::HeaderText(const zn::korvo_sdk::Scene& scene, HeaderForm form)
    : scene_(scene), form_(form) {
  if (form_ != HeaderForm::None) checkComments();
}

void HeaderText::checkComments() {
  HeaderValues said;
  for (std::uint64_t i = 0; i < scene_.fileCommentCount(); ++i) {
    const String comment = scene_.fileComment(i);
    if (isCarried(comment.view())) {
      said.add(comment);
    } else {
      problems_.push_back(reasons::COMMENT);
    }
  }
  checkVersion(said.version, said.hasVersion);
  checkTime(said.time);
}

void HeaderText::checkVersion(unsigned long long said, bool isSaid) {
  const unsigned long long version = scene_.fileVersion();
  if (isSaid ? version == said : version <= zn::korvo_sdk::VSX_FILE_VERSION_1) return;
  if (form_ != HeaderForm::Complete) return problems_.push_back(reasons::VERSION);
  (isSaid ? last_ : first_) += "# version: " + std::to_string(version) + '\n';
}

void HeaderText::checkTime(const String& said) {
  const String time = scene_.fileTime();
  if (time == said) return;
  const String comment = String("# time: ") + time;
  const String again = textAfterColon(comment);
  const bool isSaying =
      isCarried(comment.view()) && !saysVersion(comment) && !time.isEmpty() && again == time;
  if (!isSaying || form_ != HeaderForm::Complete) return problems_.push_back(reasons::TIME);
  std::string& place = said.isEmpty() ? first_ : last_;
  place.append(comment.view()) += '\n';
}

void HeaderText::put(TextBuffer& out) const {
  if (form_ == HeaderForm::None) return;
  out.put(first_);
  for (std::uint64_t i = 0; i < scene_.fileCommentCount(); ++i) {
    const String comment = scene_.fileComment(i);
    if (!isCarried(comment.view())) continue;
    out.put(comment.view());
    out.put('\n');
  }
  out.put(last_);
}

}  // namespace vsa::impl
