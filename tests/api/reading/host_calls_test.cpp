// Tests of host functions that read, parse or log during a reading.
#include <gtest/gtest.h>

#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include <vsa/diagnostics/diagnostic.h>
#include <vsa/model/scene.h>
#include <vsa/parse.h>
#include <vsa/read.h>
#include "tests/support/host_scene.h"
#include "tests/support/parser_fixture.h"
#include "vsa/apply/no_scene.h"

namespace vsa_tests {

namespace {

using vsa::ReadStatus;

// --- a reading during another reading ---

TEST(HostCalls, AReadingIntoTheSceneThatIsReadIntoIsUnreadable) {
  vsa::Scene scene;
  std::vector<vsa::ReadOutcome> nested;
  vsa::ReadOptions options;
  options.onProgress = [&](const vsa::ReadProgress&) {
    nested.push_back(vsa::readTextInto(scene, "lamp moon;"));
    return true;
  };
  options.onDiagnostic = [&](const vsa::Diagnostic&) {
    vsa::Scene other;  // while `other` is read into, `scene` is still locked
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

// --- a host's scene that parses another text ---

// A text with a narrowed value and an error that ends the parse.
constexpr const char* FAULTY_TEXT = "lamp a: .p = 1; .p = 2.5; .q = ;";

/// A scene that parses FAULTY_TEXT when the reader creates a node, and when it asks the scene to
/// reset the header.
class ParsingScene : public zn::korvo_sdk::impl::NoScene {
 public:
  zn::korvo_sdk::interfaces::INode* createNode(const zn::String& type, const zn::String& name,
                                               const zn::String& reserved) override {
    parseOther();
    zn::logWarning("made %s", name.buf());
    return nodes_.createNode(type, name, reserved);
  }
  void clearComments() override { parseOther(); }

 private:
  static void parseOther() {
    zn::korvo_sdk::Scene other;
    EXPECT_FALSE(zn::korvo_sdk::impl::parseString(&other, FAULTY_TEXT));
    EXPECT_NE(other.findNode("a"), nullptr);
  }

  zn::korvo_sdk::Scene nodes_;
};

TEST(HostCalls, ATextThatAHostsSceneParsesIsNotOfTheReading) {
  const vsa_tests::LoggedLines log;
  ParsingScene scene;
  vsa::ReadOptions options;
  options.limits.nodes = 1;
  options.limits.diagnostics = 1;
  const vsa::ReadOutcome outcome = vsa::readTextInto(scene, "lamp sun;", options);
  EXPECT_TRUE(outcome.isComplete()) << outcome.message;
  ASSERT_EQ(outcome.diagnostics.size(), 1U);
  EXPECT_EQ(outcome.diagnostics[0].id, vsa::DiagnosticId::HostMessage);
  EXPECT_EQ(outcome.diagnostics[0].message, "made sun");
  EXPECT_EQ(outcome.applied.nodes, 1U);
  EXPECT_EQ(log.lines().size(), 4U);
}

TEST(HostCalls, ATextThatAHostsSceneParsesIsReportedToTheSinksOfTheHost) {
  struct RecordList : zn::korvo_sdk::DiagnosticSink {
    void report(const zn::korvo_sdk::Diagnostic& found) override { ids.push_back(found.id); }
    std::vector<zn::korvo_sdk::DiagnosticId> ids;
  };
  const vsa_tests::LoggedLines log;
  RecordList records;
  const zn::korvo_sdk::ScopedDiagnosticSink scope(&records);
  ParsingScene scene;
  const vsa::ReadOutcome outcome = vsa::readTextInto(scene, "lamp sun: .p = ;");
  EXPECT_EQ(outcome.status, ReadStatus::StoppedByError);
  using zn::korvo_sdk::DiagnosticId;
  const std::vector<DiagnosticId> once = {DiagnosticId::Narrowing, DiagnosticId::BadToken};
  EXPECT_EQ(records.ids, (std::vector<DiagnosticId>{once[0], once[1], once[0], once[1]}));
  EXPECT_EQ(log.lines().size(), 4U);
}

TEST(HostCalls, ATextThatAHostsSceneParsesMayBeReportedToASinkOfItsOwn) {
  struct SceneWithALog : ParsingScene {
    void clearComments() override {
      const vsa_tests::LoggedLines own;
      ParsingScene::clearComments();
      EXPECT_EQ(own.lines().size(), 2U);
    }
  };
  const vsa_tests::LoggedLines log;
  SceneWithALog scene;
  EXPECT_TRUE(vsa::readTextInto(scene, "").isComplete());
  EXPECT_TRUE(log.lines().empty());
}

/// A sink of a host that keeps the ids of the records it gets.
struct RecordedIds final : zn::korvo_sdk::DiagnosticSink {
  void report(const zn::korvo_sdk::Diagnostic& found) override { ids.push_back(found.id); }
  std::vector<zn::korvo_sdk::DiagnosticId> ids;
};

// The host's sink gets the record of a message that another scene of the host writes in a call. The
// reading gets the line, as it gets all lines that a host logs in a call.
TEST(HostCalls, AMessageOfAnotherSceneIsReportedToTheSinkThatTheHostHasSet) {
  RecordedIds sink;
  zn::korvo_sdk::Scene other;
  zn::korvo_sdk::impl::parseString(&other, zn::String("a b; b.i = 1;"));
  HostScene scene;
  scene.options.onCall = [&](const std::string& call) {
    if (!call.starts_with("createNode")) return;
    const zn::korvo_sdk::ScopedDiagnosticSink own(&sink);
    other.nodeAt(0)->input("i")->setNode(other.nodeAt(0));
  };
  const vsa::ReadOutcome outcome = vsa::readTextInto(scene, "lamp sun;");
  using zn::korvo_sdk::DiagnosticId;
  EXPECT_EQ(sink.ids, std::vector<DiagnosticId>{DiagnosticId::CannotAssignNode});
  ASSERT_EQ(outcome.diagnostics.size(), 1U);
  EXPECT_EQ(outcome.diagnostics[0].id, vsa::DiagnosticId::HostMessage);
}

// The sinks of the reading are not active while the host parses a text. The sink that the host has
// set before that stays.
TEST(HostCalls, ATextThatAHostsSceneParsesIsReportedToTheSinkThatTheHostHasSet) {
  RecordedIds sink;
  zn::korvo_sdk::Scene other;
  HostScene scene;
  scene.options.onCall = [&](const std::string& call) {
    if (!call.starts_with("createNode")) return;
    const zn::korvo_sdk::ScopedDiagnosticSink own(&sink);
    zn::korvo_sdk::impl::parseString(&other, zn::String("a b; b.i = 1; b.i = 2.5;"));
  };
  const vsa_tests::LoggedLines log;
  const vsa::ReadOutcome outcome = vsa::readTextInto(scene, "lamp sun;");
  using zn::korvo_sdk::DiagnosticId;
  EXPECT_EQ(sink.ids, std::vector<DiagnosticId>{DiagnosticId::Narrowing});
  EXPECT_TRUE(outcome.diagnostics.empty());
}

TEST(HostCalls, AParserWithinAReadingWithinAReadingIsOfNeither) {
  struct ReadingScene : ParsingScene {
    void clearComments() override {
      ParsingScene inner;
      const vsa::ReadOutcome outcome = vsa::readTextInto(inner, "lamp a; lamp b;");
      EXPECT_TRUE(outcome.isComplete()) << outcome.message;
      EXPECT_EQ(outcome.diagnostics.size(), 2U);  // the messages "made a" and "made b"
    }
  };
  const vsa_tests::LoggedLines log;
  ReadingScene scene;
  const vsa::ReadOutcome outcome = vsa::readTextInto(scene, "");
  EXPECT_TRUE(outcome.isComplete()) << outcome.message;
  EXPECT_TRUE(outcome.diagnostics.empty());
  EXPECT_EQ(log.lines().size(), 6U);
}

TEST(HostCalls, AReadingThatAHostsSceneBeginsHasLimitsAndProgressOfItsOwn) {
  struct ReadingScene : ParsingScene {
    void clearComments() override {
      vsa::ReadOptions options;
      options.limits.nodes = 1;
      options.onProgress = [&](const vsa::ReadProgress&) { return false; };
      EXPECT_EQ(vsa::readText("lamp a; lamp b;", options).status, ReadStatus::Cancelled);
      options.onProgress = nullptr;
      const vsa::ReadResult inner = vsa::readText("lamp a; lamp b;", options);
      EXPECT_EQ(inner.status, ReadStatus::OverLimit);
      EXPECT_EQ(inner.diagnostics.size(), 1U);
    }
  };
  ReadingScene scene;
  vsa::ReadOptions options;
  std::vector<std::uint64_t> bytes;
  options.onProgress = [&](const vsa::ReadProgress& progress) {
    bytes.push_back(progress.bytesTotal.value_or(0));
    return true;
  };
  const vsa::ReadOutcome outcome = vsa::readTextInto(scene, "# a", options);
  EXPECT_TRUE(outcome.isComplete()) << outcome.message;
  EXPECT_TRUE(outcome.diagnostics.empty());
  EXPECT_EQ(outcome.applied.nodes, 0U);
  EXPECT_EQ(bytes, (std::vector<std::uint64_t>{3, 3}));
}

}  // namespace

}  // namespace vsa_tests
