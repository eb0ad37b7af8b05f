// Assign: a fixture with a scene that records its calls, and a node to which texts assign.
#pragma once

#include <gtest/gtest.h>

#include <cstdint>
#include <string>
#include <vector>

#include "tests/support/host_scene.h"
#include "tests/support/parser_fixture.h"

namespace zn::korvo_sdk::impl::assign_tests {

using vsa_tests::HostInput;
using vsa_tests::HostNode;
using vsa_tests::HostScene;
using vsa_tests::LoggedLines;
using vsa_tests::string;
using Lines = std::vector<std::string>;

/// A scene with a node n. Texts are read into the scene.
class Assign : public testing::Test {
 protected:
  Assign() { node_ = scene_.add("lamp", "n"); }

  bool read(const std::string& bytes) {
    scene_.options.calls.clear();
    return VsaParser().parse(&scene_, string(bytes));
  }

  /// Returns the calls of the scene for a text. Expects that the text has no errors.
  Lines calls(const std::string& bytes) {
    EXPECT_TRUE(read(bytes)) << bytes;
    return scene_.options.calls;
  }

  /// Returns the log of a text. Expects that the text has an error.
  Lines errors(const std::string& bytes) {
    const LoggedLines log;
    EXPECT_FALSE(read(bytes)) << bytes;
    return log.lines();
  }

  static HostInput* element(HostInput* array, int index) {
    return static_cast<HostInput*>(array->element(static_cast<std::uint64_t>(index)));
  }

  HostScene scene_;
  HostNode* node_;
};

}  // namespace zn::korvo_sdk::impl::assign_tests
