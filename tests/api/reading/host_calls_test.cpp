// Functions of the host that read, parse or log during a reading.
#include <gtest/gtest.h>

#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include <vsa/model/scene.h>
#include <vsa/parse.h>
#include <vsa/read.h>
#include "tests/support/host_scene.h"
#include "tests/support/parser_fixture.h"
#include "vsa/apply/no_scene.h"

namespace vsa_tests {

namespace {

using vsa::ReadStatus;

// --- a reading within a reading ---

TEST(HostCalls, AReadingIntoTheSceneThatIsReadIntoIsUnreadable) {
  vsa::Scene scene;
  std::vector<vsa::ReadOutcome> nested;
  vsa::ReadOptions options;
  options.onProgress = [&](const vsa::ReadProgress&) {
    nested.push_back(vsa::readTextInto(scene, "lamp moon;"));
    return true;
  };
  options.onDiagnostic = [&](const vsa::Diagnostic&) {
    vsa::Scene other;  // and within a reading into another scene
    vsa::ReadOptions inner;
    inner.onProgress = options.onProgress;
    EXPECT_TRUE(vsa::readTextInto(other, "lamp star;", inner).isComplete());
  };
  EXPECT_TRUE(vsa::readTextInto(scene, "# version: x\nlamp sun;", options).isComplete());
  ASSERT_GE(nested.size(), 4U);
  for (const vsa::ReadOutcome& outcome : nested) {
    EXPECT_EQ(outcome.status, ReadStatus::Unreadable);
    EXPECT_EQ(outcome.message, "the scene is being read into already");
  }
  EXPECT_EQ(scene.nodes().size(), 1U);
  EXPECT_TRUE(vsa::readTextInto(scene, "lamp moon;").isComplete());
}

TEST(HostCalls, AHostsSceneMayNotBeReadIntoWhileItIsReadInto) {
  HostScene scene;
  std::vector<ReadStatus> nested;
  scene.options.onCall = [&](const std::string&) {
    nested.push_back(vsa::readTextInto(scene, "lamp moon;").status);
  };
  EXPECT_TRUE(vsa::readTextInto(scene, "lamp sun;").isComplete());
  ASSERT_FALSE(nested.empty());
  for (const ReadStatus status : nested) EXPECT_EQ(status, ReadStatus::Unreadable);
}

// --- host functions that log or parse ---

TEST(HostCalls, WhatASourceLogsIsNotOfTheReading) {
  struct LoggingSource : vsa::Source {
    std::optional<std::uint64_t> size() const override {
      zn::logWarning("the size is not known");
      return std::nullopt;
    }
    std::size_t read(std::span<char> to) override {
      zn::korvo_sdk::Scene other;
      EXPECT_FALSE(zn::korvo_sdk::impl::parseString(&other, "lamp a; .x = 1;"));
      return std::exchange(text, {}).copy(to.data(), to.size());
    }
    std::string_view text = "lamp sun: .power = 1; .power = 2.5;";
  };
  const vsa_tests::LoggedLines log;
  LoggingSource source;
  const vsa::ReadResult result = vsa::readSource(source);
  EXPECT_TRUE(result.isComplete()) << result.message;
  EXPECT_EQ(result.diagnostics.size(), 1U);
  EXPECT_EQ(log.lines().front(), "warning: the size is not known");
  EXPECT_GE(log.lines().size(), 2U);
}

TEST(HostCalls, WhatACallbackLogsIsNotOfTheReading) {
  const vsa_tests::LoggedLines log;
  vsa::ReadOptions options;
  options.onDiagnostic = [](const vsa::Diagnostic&) { zn::logWarning("seen"); };
  const vsa::ReadResult result = vsa::readText("lamp a: .p = 1; .p = 2.5;", options);
  EXPECT_EQ(result.diagnostics.size(), 1U);
  EXPECT_EQ(log.lines(), std::vector<std::string>{"warning: seen"});
}

TEST(HostCalls, AHostsSceneMayParseAnotherTextFirst) {
  struct ParsingScene : zn::korvo_sdk::impl::NoScene {
    void clearComments() override {
      zn::korvo_sdk::Scene other;
      EXPECT_FALSE(zn::korvo_sdk::impl::parseString(&other, "lamp a; .x = 1;"));
    }
  };
  ParsingScene scene;
  const vsa::ReadOutcome outcome = vsa::readTextInto(scene, "lamp sun;");
  EXPECT_TRUE(outcome.isComplete()) << outcome.message;
  ASSERT_EQ(outcome.diagnostics.size(), 1U);
  EXPECT_EQ(outcome.diagnostics[0].id, vsa::DiagnosticId::HostMessage);
}

}  // namespace

}  // namespace vsa_tests
