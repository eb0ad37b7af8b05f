// Helpers of the round-trip tests: they read a scene from a text, and compare two scenes.
#pragma once

#include <gtest/gtest.h>

#include <string>
#include <string_view>

#include <vsa/model/scene.h>
#include <vsa/parse.h>
#include <vsa/write.h>
#include "tools/scene_text/read_outcome.h"
#include "tools/scene_text/scene_dump.h"

namespace vsa_tests {

/// Reads `text` into `scene` as if the text came from a file: if the version in the header is 0, it
/// is first set to 1.
inline vsa_tools::ReadOutcome readInto(zn::korvo_sdk::Scene& scene, std::string_view text) {
  if (scene.fileVersion() == 0) scene.setFileVersion(1);
  return vsa_tools::captureRead(
      [&] { return zn::korvo_sdk::impl::parseString(&scene, zn::String::copyOf(text)); });
}

/// Returns everything that a text can represent in a scene. Reals are in a form that is read back
/// as the same value.
inline std::string dumpOf(const zn::korvo_sdk::Scene& scene) {
  vsa_tools::ReadOutcome complete;
  complete.result = true;
  vsa_tools::TextOutput out;
  vsa_tools::dumpCase(complete, scene, out);
  return out.text();
}

/// Expects that a text of `scene` is read back as the same scene without a message.
inline void expectCarried(const zn::korvo_sdk::Scene& scene,
                          const vsa::WriteOptions& options = {}) {
  const vsa::TextResult written = vsa::writeText(scene, options);
  ASSERT_TRUE(written.isWritten()) << written.message;
  zn::korvo_sdk::Scene again;
  const vsa_tools::ReadOutcome outcome = readInto(again, written.text);
  EXPECT_TRUE(outcome.result) << written.text;
  EXPECT_TRUE(outcome.log.empty()) << outcome.log.front().text << '\n' << written.text;
  EXPECT_EQ(dumpOf(scene), dumpOf(again)) << written.text;
}

/// Expects that the scene has exactly one problem, which has this node, input and reason, and that
/// no text is written.
inline void expectRefused(const zn::korvo_sdk::Scene& scene, std::string_view node,
                          std::string_view input, std::string_view reason) {
  const vsa::TextResult written = vsa::writeText(scene);
  EXPECT_EQ(written.status, vsa::WriteStatus::NotCarried);
  EXPECT_EQ(written.text, "");
  EXPECT_EQ(written.bytesWritten, 0u);
  ASSERT_EQ(written.problemCount, 1u) << written.message;
  EXPECT_EQ(written.problems[0].node, node);
  EXPECT_EQ(written.problems[0].input, input);
  EXPECT_EQ(written.problems[0].reason, reason);
}

/// Returns the text that is written with the option `lossy`, although the scene has problems.
inline std::string lossyText(const zn::korvo_sdk::Scene& scene) {
  vsa::WriteOptions options;
  options.lossy = true;
  return vsa::writeText(scene, options).text;
}

}  // namespace vsa_tests
