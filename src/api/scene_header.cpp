// vsa::Scene: the functions for version, time and comments. A text contains version and time in
// comments only. So the functions change the comments together with the version and the time.
#include <string>
#include <vector>

#include <vsa/scene.h>
#include <vsa/scene/file_version.h>
#include <vsa/text_rules.h>
#include "api/edit_guard.h"
#include "scene/header_comment.h"

namespace vsa {

namespace {

using detail::guarded;
using zn::korvo_sdk::setsTime;
using zn::korvo_sdk::setsVersion;
using PlainScene = zn::korvo_sdk::Scene;

std::vector<zn::String> commentsOf(const PlainScene& scene) {
  std::vector<zn::String> comments;
  for (std::uint64_t i = 0; i < scene.fileCommentCount(); ++i) {
    comments.push_back(scene.fileComment(i));
  }
  return comments;
}

// Returns a copy of `comments` in which `line` replaces the first comment for which `sets` returns
// true. All further comments of this kind are removed. If `line` is empty, the first comment of
// this kind is removed, too. If `line` is not empty and no comment is of this kind, `line` becomes
// the first comment.
std::vector<zn::String> replaced(const std::vector<zn::String>& comments,
                                 bool (*sets)(std::string_view) noexcept, const std::string& line) {
  std::vector<zn::String> result;
  bool isPlaced = line.empty();
  for (const zn::String& comment : comments) {
    if (!sets(comment.view())) {
      result.push_back(comment);
    } else if (!isPlaced) {
      result.push_back(zn::String::copyOf(line));
      isPlaced = true;
    }
  }
  if (!isPlaced) result.insert(result.begin(), zn::String::copyOf(line));
  return result;
}

void setComments(PlainScene& scene, const std::vector<zn::String>& comments) {
  scene.clearComments();
  for (const zn::String& comment : comments) scene.pushFileComment(comment);
}

}  // namespace

Status Scene::setFileVersion(std::uint64_t version) noexcept {
  return guarded([&]() -> Status {
    PlainScene& scene = plain();
    setComments(scene,
                replaced(commentsOf(scene), setsVersion, "# version: " + std::to_string(version)));
    scene.setFileVersion(version);
    return {};
  });
}

Status Scene::setFileTime(TextParameter time) noexcept {
  return guarded([&]() -> Status {
    if (const Status status = checkTime(time); !status) return status;
    PlainScene& scene = plain();
    std::string line;
    if (!time.view().empty()) line = "# time: " + std::string(time);
    setComments(scene, replaced(commentsOf(scene), setsTime, line));
    scene.setFileTime(zn::String::copyOf(time));
    return {};
  });
}

Status Scene::addComment(TextParameter comment) noexcept {
  return guarded([&]() -> Status {
    if (const Status status = checkComment(comment); !status) return status;
    std::string text(comment);
    if (!text.starts_with('#')) text.insert(0, "# ");
    const zn::String line = zn::String::copyOf(text);
    PlainScene& scene = plain();
    const zn::String value = zn::String::copyOf(zn::korvo_sdk::headerValue(line.view()));
    scene.pushFileComment(line);
    if (setsVersion(line.view())) {
      unsigned long long version = 0;  // checkComment has checked the number
      static_cast<void>(zn::String::parse(value, version, zn::String::Radix::Decimal));
      scene.setFileVersion(version);
    } else if (setsTime(line.view()) && !value.isEmpty()) {
      scene.setFileTime(value);
    }
    return {};
  });
}

Status Scene::clearHeader() noexcept {
  return guarded([&]() -> Status {
    PlainScene& scene = plain();
    scene.clearComments();
    scene.setFileVersion(zn::korvo_sdk::VSX_FILE_VERSION_1);
    scene.setFileTime(zn::String());
    return {};
  });
}

}  // namespace vsa
