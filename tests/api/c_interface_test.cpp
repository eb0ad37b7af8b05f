// The interface for C: options, how a reading ended, and skipped buffers.
#include <vsa/vsa_c.h>

#include <string>
#include <string_view>

#include <gtest/gtest.h>

namespace {

std::string textOf(vsa_text text) {
  return {text.data, text.length};
}

// A reading that is freed at the end of the test.
class Reading {
 public:
  explicit Reading(vsa_reading* reading) : reading_(reading) {}
  Reading(std::string_view text, const vsa_options* options)
      : Reading(vsa_read_text(text.data(), text.size(), options)) {}
  Reading(const Reading&) = delete;
  Reading& operator=(const Reading&) = delete;
  ~Reading() { vsa_free(reading_); }

  operator const vsa_reading*() const { return reading_; }
  vsa_status status() const { return vsa_reading_status(reading_); }

 private:
  vsa_reading* const reading_;
};

vsa_options defaults() {
  vsa_options options;
  vsa_options_init(&options);
  return options;
}

TEST(CInterface, SaysWhichLimitWasExceeded) {
  vsa_options options = defaults();
  options.nodes = 1;
  const Reading nodes("lamp a; lamp b;", &options);
  EXPECT_EQ(nodes.status(), VSA_OVER_LIMIT);
  EXPECT_EQ(vsa_reading_limit(nodes), VSA_LIMIT_NODES);
  EXPECT_STREQ(vsa_limit_name(vsa_reading_limit(nodes)), "nodes");

  options = defaults();
  options.diagnostics = 1;
  const Reading diagnostics("lamp a: .n = 1; .n = 2.5; .n = 2.5; .n = 2.5;", &options);
  EXPECT_EQ(diagnostics.status(), VSA_OVER_LIMIT);
  EXPECT_EQ(vsa_reading_limit(diagnostics), VSA_LIMIT_DIAGNOSTICS);
  EXPECT_STREQ(vsa_limit_name(VSA_LIMIT_DIAGNOSTICS), "diagnostics");

  EXPECT_EQ(vsa_reading_limit(Reading("lamp a;", nullptr)), VSA_NO_LIMIT);
  EXPECT_EQ(vsa_reading_limit(nullptr), VSA_NO_LIMIT);
  EXPECT_STREQ(vsa_limit_name(VSA_NO_LIMIT), "none");
  EXPECT_STREQ(vsa_limit_name(static_cast<vsa_limit>(15)), "unknown");
}

TEST(CInterface, CountsWhatWasRead) {
  constexpr std::string_view TEXT = "lamp a: .n = 1; .n = 2.5; .k[1] = 3; .to = a;";
  const Reading reading(TEXT, nullptr);
  vsa_counts counts;
  ASSERT_EQ(vsa_reading_counts(reading, &counts), 1);
  EXPECT_EQ(counts.bytes_read, TEXT.size());
  EXPECT_EQ(counts.nodes, 1U);
  EXPECT_EQ(counts.elements, 2U);
  EXPECT_EQ(counts.values, 3U);
  EXPECT_EQ(counts.links, 1U);
  EXPECT_EQ(counts.errors, 0U);
  EXPECT_EQ(counts.warnings, 1U);
  EXPECT_GT(counts.statements, 0U);
  EXPECT_EQ(vsa_reading_counts(nullptr, &counts), 0);
}

int record(void* last, const vsa_progress* progress) {
  *static_cast<vsa_progress*>(last) = *progress;
  return 1;
}

TEST(CInterface, ReportsTheLinksInProgress) {
  constexpr std::string_view TEXT = "lamp a: .to = a; .other = a; .c |= a.out;";
  vsa_options options = defaults();
  vsa_progress last = {};
  options.progress = record;
  options.progress_data = &last;
  const Reading reading(TEXT, &options);
  ASSERT_EQ(reading.status(), VSA_COMPLETE);
  EXPECT_EQ(last.bytes_read, TEXT.size());
  EXPECT_EQ(last.bytes_total, TEXT.size());
  EXPECT_EQ(last.links_resolved, 3U);
  EXPECT_EQ(last.links_total, 3U);
}

TEST(CInterface, KeepsTheWantedNodesAndTheHeader) {
  const char* const names[] = {"b", nullptr};
  const char* const types[] = {"mesh"};
  vsa_options options = defaults();
  options.wanted_names = names;
  options.wanted_name_count = 2;
  options.wanted_types = types;
  options.wanted_type_count = 1;
  options.keep_header = 1;
  const Reading reading("lamp a; lamp b; mesh c;", &options);
  EXPECT_EQ(vsa_find_node(reading, "a"), nullptr);
  EXPECT_NE(vsa_find_node(reading, "b"), nullptr);
  EXPECT_NE(vsa_find_node(reading, "c"), nullptr);
  EXPECT_EQ(vsa_file_version(reading), 0U);
  EXPECT_EQ(vsa_file_version(Reading("lamp a;", nullptr)), 1U);
}

TEST(CInterface, ListsAndLoadsSkippedBuffers) {
  constexpr std::string_view TEXT = "mesh m:\n.ids = int32[1]{7};\n.at = vec3f[2]{1 2 3 4 5 6};";
  vsa_options options = defaults();
  options.skips_buffers = 1;
  const Reading reading(TEXT, &options);
  ASSERT_EQ(vsa_skipped_count(reading), 2U);
  vsa_skipped_buffer skipped;
  ASSERT_EQ(vsa_skipped_at(reading, 1, &skipped), 1);
  EXPECT_EQ(textOf(skipped.input_path), "m.at");
  EXPECT_STREQ(skipped.element_type, "Vec3f");
  EXPECT_EQ(skipped.count, 2U);
  EXPECT_EQ(skipped.begin.line, 3U);
  EXPECT_EQ(TEXT.substr(skipped.begin.offset, skipped.end.offset - skipped.begin.offset),
            "vec3f[2]{1 2 3 4 5 6}");

  const Reading loaded(vsa_load_buffer_from_text(TEXT.data(), TEXT.size(), reading, 1, nullptr));
  EXPECT_EQ(loaded.status(), VSA_COMPLETE);
  vsa_buffer buffer;
  ASSERT_EQ(vsa_loaded_buffer(loaded, &buffer), 1);
  EXPECT_EQ(buffer.count, 2U);
  EXPECT_EQ(buffer.components, 3U);
  EXPECT_EQ(static_cast<const float*>(buffer.data)[5], 6.0F);
  EXPECT_EQ(vsa_loaded_buffer(reading, &buffer), 0);
}

TEST(CInterface, RefusesToLoadWhatWasNotSkipped) {
  const Reading reading("lamp a;", nullptr);
  vsa_skipped_buffer skipped;
  vsa_buffer buffer;
  EXPECT_EQ(vsa_skipped_count(nullptr), 0U);
  EXPECT_EQ(vsa_skipped_at(reading, 0, &skipped), 0);
  EXPECT_EQ(vsa_loaded_buffer(nullptr, &buffer), 0);
  const Reading fromFile(vsa_load_buffer("scene.vsa", reading, 0, nullptr));
  EXPECT_EQ(fromFile.status(), VSA_WRONG_USE);
  const Reading fromText(vsa_load_buffer_from_text(nullptr, 0, nullptr, 0, nullptr));
  EXPECT_EQ(fromText.status(), VSA_WRONG_USE);
  EXPECT_STREQ(vsa_status_name(VSA_WRONG_USE), "wrong-use");
  EXPECT_NE(textOf(vsa_reading_message(fromText)), "");
}

TEST(CInterface, RefusesOptionsOfAnotherSize) {
  for (const size_t size : {size_t{0}, sizeof(vsa_options) - 8, sizeof(vsa_options) + 8}) {
    vsa_options options = defaults();
    options.size = size;
    const Reading reading("lamp a;", &options);
    EXPECT_EQ(reading.status(), VSA_WRONG_USE) << size;
    EXPECT_NE(textOf(vsa_reading_message(reading)), "");
    EXPECT_EQ(vsa_first_node(reading), nullptr);
  }
  EXPECT_STREQ(vsa_status_name(static_cast<vsa_status>(15)), "unknown");
}

TEST(CInterface, RoundsIntegersToReals) {
  const Reading reading("lamp a: .n = -1u; .i = 9007199254740993;", nullptr);
  const vsa_node* const a = vsa_find_node(reading, "a");
  double real = 0;
  EXPECT_EQ(vsa_real(vsa_find_input(a, "n"), &real), 1);
  EXPECT_EQ(real, 18446744073709551616.0);
  EXPECT_EQ(vsa_real(vsa_find_input(a, "i"), &real), 1);
  EXPECT_EQ(real, 9007199254740992.0);
  int64_t integer = 5;
  EXPECT_EQ(vsa_int(vsa_find_input(a, "n"), &integer), 0);
  EXPECT_EQ(integer, 5);
}

}  // namespace
