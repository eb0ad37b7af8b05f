// Tests what vsa fmt prints before the check of the text has ended, and after it.
#include <gtest/gtest.h>

#include <future>
#include <optional>

#include "tools/vsa/common/writing/string_sink.h"
#include "tools/vsa/fmt/held_sink.h"

namespace vsa_tools {

namespace {

using Check = std::promise<std::optional<FormatOutcome>>;

TEST(HeldSinkTest, HoldsTheTextBackUntilTheCheckHasSucceeded) {
  Check check;
  StringSink out;
  HeldSink held(out, check.get_future());
  EXPECT_TRUE(held.write("sphere ball;\n"));
  EXPECT_TRUE(held.write("lamp sun;\n"));
  EXPECT_EQ(out.text, "");
  check.set_value(std::nullopt);
  EXPECT_TRUE(held.write("mesh m;\n"));
  EXPECT_EQ(out.text, "sphere ball;\nlamp sun;\nmesh m;\n");
  EXPECT_TRUE(held.write("mesh n;\n"));
  EXPECT_TRUE(held.release());
  EXPECT_EQ(out.text, "sphere ball;\nlamp sun;\nmesh m;\nmesh n;\n");
}

TEST(HeldSinkTest, ReleasesTheTextAtTheEnd) {
  Check check;
  StringSink out;
  HeldSink held(out, check.get_future());
  EXPECT_TRUE(held.write("sphere ball;\n"));
  check.set_value(std::nullopt);
  EXPECT_TRUE(held.release());
  EXPECT_EQ(out.text, "sphere ball;\n");
}

TEST(HeldSinkTest, WritesNothingIfTheCheckHasFailed) {
  Check check;
  StringSink out;
  HeldSink held(out, check.get_future());
  EXPECT_TRUE(held.write("sphere ball;\n"));
  check.set_value(FormatOutcome{1, {"vsa: a.vsa: not formatted"}, {}});
  EXPECT_FALSE(held.write("lamp sun;\n"));
  EXPECT_FALSE(held.release());
  EXPECT_EQ(out.text, "");
}

TEST(HeldSinkTest, FailsIfTheOutputFails) {
  struct FullSink final : vsa::Sink {
    bool write(std::string_view) override { return false; }
  } out;
  Check check;
  HeldSink held(out, check.get_future());
  EXPECT_TRUE(held.write("sphere ball;\n"));
  check.set_value(std::nullopt);
  EXPECT_FALSE(held.release());
}

}  // namespace

}  // namespace vsa_tools
