#include "fuzz/support/written_scene.h"

#include "fuzz/support/check.h"
#include "fuzz/support/scene_bytes.h"

namespace vsa_fuzz {

namespace {

using zn::korvo_sdk::Scene;

/// Reads `text` into `scene`. Fails if the text is not read completely.
void readAgain(FuzzScene& scene, const std::string& text) {
  scene->setEmptyElementLimit(Scene::DEFAULT_EMPTY_ELEMENT_LIMIT);
  scene->setDepthLimit(Scene::DEFAULT_DEPTH_LIMIT);
  scene->setFileVersion(0);
  const FuzzRead read = readFromString(*scene, text);
  if (read.outcome.result && read.report.cutOff.isEmpty() && !read.report.endedAtMark) return;
  fail("a written text is not read: " + vsa_tests::visible(text));
}

}  // namespace

vsa::WriteOptions writeOptions(unsigned settings) {
  vsa::WriteOptions options;
  // The header of the text gets only the comments that the scene has. If the writer added comments
  // with the version and the time, the scene that is read back would have more comments than the
  // first one.
  options.header = vsa::HeaderForm::Comments;
  if ((settings & 1) != 0) options.paths = vsa::PathForm::Full;
  if ((settings & 2) != 0) options.links = vsa::LinkPlace::Last;
  if ((settings & 4) != 0) options.buffers = vsa::BufferForm::Compressed;
  if ((settings & 8) != 0) options.order = vsa::NodeOrder::Name;
  if ((settings & 16) != 0) options.lineWidth = settings >> 5;
  if ((settings & 32) != 0) options.numbersPerLine = settings >> 6;
  return options;
}

vsa::TextResult checkWritten(const Scene& scene, const vsa::WriteOptions& options) {
  vsa::TextResult written = vsa::writeText(scene, options);
  FuzzScene again;
  if (!written.isWritten()) {
    if (written.problemCount == 0 || !written.text.empty()) fail("a failure without a problem");
    vsa::WriteOptions lossy = options;
    lossy.lossy = true;
    const vsa::TextResult rest = vsa::writeText(scene, lossy);
    if (rest.problemCount != written.problemCount) fail("a lossy writing has other problems");
    readAgain(again, rest.text);
    return written;
  }
  readAgain(again, written.text);
  if (options.order == vsa::NodeOrder::Created) {
    checkSameScene({{}, scene}, {{}, *again}, "a scene that was written");
  }
  checkSame(written.text, vsa::writeText(*again, options).text, "a text that was written again");
  return written;
}

}  // namespace vsa_fuzz
