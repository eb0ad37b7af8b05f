// Tests of the interface for C: limits, options, counts, progress, kept nodes, skipped buffers,
// values, and calls that are refused.
#include <vsa/vsa_c.h>

#include <string>
#include <string_view>

#include <gtest/gtest.h>

namespace {

std::string textOf(vsa_text text) {
  return {text.data, text.length};
}

// A reading that its destructor frees.
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

TEST(CInterface, DeliversEachNodeOnce) {
  const Reading reading("lamp a; lamp b; lamp c; remove b;", nullptr);
  std::string names;
  for (const vsa_node* node = vsa_first_node(reading); node != nullptr && names.size() < 10;
       node = vsa_next_node(node)) {
    names += vsa_node_name(node).data;
  }
  EXPECT_EQ(names, "ac");
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

  const std::string_view other = "mesh m:\n.ids = int16[1]{7};\n";
  const Reading changed(vsa_load_buffer_from_text(other.data(), other.size(), reading, 0, nullptr));
  EXPECT_EQ(changed.status(), VSA_UNREADABLE);
  EXPECT_EQ(vsa_loaded_buffer(changed, &buffer), 0);
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

TEST(CInterface, BoundsTheMemory) {
  vsa_options options = defaults();
  options.memory_bytes = 1000;
  const Reading reading("mesh m: .p = float[100000] {1};", &options);
  EXPECT_EQ(reading.status(), VSA_OVER_LIMIT);
  EXPECT_EQ(vsa_reading_limit(reading), VSA_LIMIT_MEMORY);
}

TEST(CInterface, TakesTheSameOptionsEverywhere) {
  constexpr std::string_view TEXT = "mesh m: .ids = int32[1]{7};";
  vsa_options options = defaults();
  options.skips_buffers = 1;
  const Reading reading(TEXT, &options);
  ASSERT_EQ(vsa_skipped_count(reading), 1U);
  const Reading loaded(vsa_load_buffer_from_text(TEXT.data(), TEXT.size(), reading, 0, &options));
  EXPECT_EQ(loaded.status(), VSA_COMPLETE);
  EXPECT_EQ(Reading(vsa_load_buffer("/no/such/file", reading, 0, &options)).status(),
            VSA_UNREADABLE);
  EXPECT_EQ(Reading(vsa_read_file("/no/such/file", &options)).status(), VSA_UNREADABLE);
  EXPECT_EQ(Reading(vsa_load_buffer("/no/such/file", reading, 0, nullptr)).status(),
            VSA_UNREADABLE);
  EXPECT_EQ(Reading(vsa_load_buffer_from_text(nullptr, 9, reading, 0, nullptr)).status(),
            VSA_UNREADABLE);
  options.size = 0;
  for (vsa_reading* const refused :
       {vsa_read_file("/no/such/file", &options), vsa_load_buffer("/no", reading, 0, &options),
        vsa_load_buffer_from_text(TEXT.data(), TEXT.size(), reading, 0, &options)}) {
    EXPECT_EQ(Reading(refused).status(), VSA_WRONG_USE);
  }
}

// With a null pointer for the result, a function returns the same as with a pointer, and stores
// nothing. A call that finds no value does not change the caller's variable, and vsa_input_path()
// writes nothing if the size is 0.
TEST(CInterface, NeedsNoPlaceForAValue) {
  vsa_options options = defaults();
  options.skips_buffers = 1;
  const Reading skipping("mesh m: .n = 1; .n = 2.5; .ids = int32[1]{7};", &options);
  EXPECT_EQ(vsa_reading_counts(skipping, nullptr), 1);
  EXPECT_EQ(vsa_diagnostic_at(skipping, 0, nullptr), 1);
  EXPECT_EQ(vsa_diagnostics_found(nullptr), 0U);
  EXPECT_EQ(vsa_skipped_at(skipping, 0, nullptr), 1);
  const Reading reading(
      "a n: .b = true; .i = 1; .r = 1.5; .s = \"s\"; .v = vec2(1 2); .p = byte[1] {1};", nullptr);
  const vsa_node* const n = vsa_find_node(reading, "n");
  EXPECT_EQ(vsa_bool(vsa_find_input(n, "b"), nullptr), 1);
  EXPECT_EQ(vsa_int(vsa_find_input(n, "i"), nullptr), 1);
  EXPECT_EQ(vsa_uint(vsa_find_input(n, "i"), nullptr), 1);
  EXPECT_EQ(vsa_real(vsa_find_input(n, "r"), nullptr), 1);
  EXPECT_EQ(vsa_string(vsa_find_input(n, "s"), nullptr), 1);
  EXPECT_EQ(vsa_components(vsa_find_input(n, "v"), nullptr), 2U);
  EXPECT_EQ(vsa_buffer_of(vsa_find_input(n, "p"), nullptr), 1);
  int boolean = 5;
  EXPECT_EQ(vsa_bool(vsa_find_input(n, "i"), &boolean), 0);
  EXPECT_EQ(vsa_uint(vsa_find_input(n, "b"), nullptr), 0);
  EXPECT_EQ(boolean, 5);
  char path[] = "before";
  EXPECT_EQ(vsa_input_path(vsa_find_input(n, "b"), path, 0), 3U);
  EXPECT_STREQ(path, "before");
}

TEST(CInterface, CutsOffAPathThatIsTooLong) {
  const Reading reading("a n: .b = true;", nullptr);
  const vsa_input* const b = vsa_find_input(vsa_find_node(reading, "n"), "b");
  constexpr std::string_view WRITTEN[] = {"", "n", "n.", "n.b", "n.b"};
  for (std::size_t capacity = 1; capacity <= std::size(WRITTEN); ++capacity) {
    char path[] = "before";
    EXPECT_EQ(vsa_input_path(b, path, capacity), 3U);
    EXPECT_EQ(std::string_view(path), WRITTEN[capacity - 1]);
    EXPECT_EQ(std::string_view(path + capacity), std::string_view("before").substr(capacity));
  }
}

}  // namespace
