/* read_scene FOLDER: tests the interface for C with short texts and FOLDER/vase_mesh.vsa. */
#include <vsa/vsa_c.h>

#include <stdio.h>
#include <string.h>

static int failures = 0;

#define CHECK(condition)                                             \
  do {                                                               \
    if (!(condition)) {                                              \
      printf("%s:%d: not so: %s\n", __FILE__, __LINE__, #condition); \
      ++failures;                                                    \
    }                                                                \
  } while (0)

static int is(vsa_text text, const char* expected) {
  return text.length == strlen(expected) && memcmp(text.data, expected, text.length) == 0;
}

static vsa_reading* read_text(const char* text, const vsa_options* options) {
  return vsa_read_text(text, strlen(text), options);
}

static void check_values(void) {
  vsa_reading* reading = read_text(
      "# version: 7\n# time: noon\n"
      "lamp sun: .on = true; .count = -3; .mask = 12u; .power = 2.5; .name = \"a\\nb\"; .at = "
      "pos3(1 2 3);\n"
      ".to = dusk; .color |= dusk.outColor; .keys[1].time = 1.5; .p = vec2f[2] {1 2 3 4}; sky "
      "dusk;",
      NULL);
  const vsa_node* sun = vsa_find_node(reading, "sun");
  const vsa_node* dusk = vsa_find_node(reading, "dusk");
  int boolean = 0;
  int64_t integer = 0;
  uint64_t natural = 0;
  double real = 0;
  vsa_text text = {"", 0};
  const double* components = NULL;
  vsa_buffer buffer;
  char path[32];

  CHECK(vsa_reading_status(reading) == VSA_COMPLETE);
  CHECK(is(vsa_reading_message(reading), ""));
  CHECK(vsa_file_version(reading) == 7);
  CHECK(is(vsa_file_time(reading), "noon"));
  CHECK(vsa_comment_count(reading) == 2 && is(vsa_comment_at(reading, 1), "# time: noon"));
  CHECK(is(vsa_comment_at(reading, 2), ""));

  CHECK(vsa_first_node(reading) == sun && vsa_next_node(sun) == dusk &&
        vsa_next_node(dusk) == NULL);
  CHECK(is(vsa_node_name(sun), "sun") && is(vsa_node_type(sun), "lamp"));
  CHECK(vsa_input_count(sun) == 10);
  CHECK(vsa_input_at(sun, 3) == vsa_find_input(sun, "power"));
  CHECK(is(vsa_input_name(vsa_input_at(sun, 3)), "power"));
  CHECK(vsa_input_at(sun, 10) == NULL);

  CHECK(vsa_bool(vsa_find_input(sun, "on"), &boolean) && boolean == 1);
  CHECK(vsa_int(vsa_find_input(sun, "count"), &integer) && integer == -3);
  CHECK(vsa_uint(vsa_find_input(sun, "mask"), &natural) && natural == 12);
  CHECK(vsa_real(vsa_find_input(sun, "power"), &real) && real == 2.5);
  CHECK(vsa_string(vsa_find_input(sun, "name"), &text) && is(text, "a\nb") && text.data[3] == '\0');
  CHECK(vsa_components(vsa_find_input(sun, "at"), &components) == 3 && components[2] == 3.0);
  CHECK(vsa_reference(vsa_find_input(sun, "to")) == dusk);
  CHECK(vsa_connection(vsa_find_input(sun, "color"), &text) == dusk && is(text, "outColor"));
  CHECK(vsa_connection(vsa_find_input(sun, "color"), NULL) == dusk);
  CHECK(!vsa_bool(vsa_find_input(sun, "power"), &boolean));
  CHECK(vsa_input_type(vsa_find_input(sun, "at")) == VSA_POS3);
  CHECK(strcmp(vsa_type_name(VSA_POS3), "Pos3") == 0);

  CHECK(vsa_element_count(vsa_find_input(sun, "keys")) == 2);
  CHECK(vsa_member_count(vsa_element_at(vsa_find_input(sun, "keys"), 1)) == 1);
  CHECK(vsa_real(vsa_member_at(vsa_element_at(vsa_find_input(sun, "keys"), 1), 0), &real) &&
        real == 1.5);
  CHECK(vsa_input_path(vsa_find_member(vsa_element_at(vsa_find_input(sun, "keys"), 1), "time"),
                       path, sizeof path) == 16);
  CHECK(strcmp(path, "sun.keys[1].time") == 0);
  CHECK(vsa_input_path(vsa_input_at(sun, 3), path, 5) == 9 && strcmp(path, "sun.") == 0);
  CHECK(vsa_input_path(vsa_input_at(sun, 3), NULL, 0) == 9);

  CHECK(vsa_buffer_of(vsa_find_input(sun, "p"), &buffer));
  CHECK(buffer.count == 2 && buffer.bytes == 16 && buffer.components == 2 &&
        buffer.component_bytes == 4);
  CHECK(strcmp(buffer.element_type, "Vec2f") == 0 && strcmp(buffer.component_type, "Float") == 0);
  CHECK(((const float*)buffer.data)[3] == 4.0F);
  vsa_free(reading);
}

static void check_diagnostics(void) {
  vsa_reading* reading = read_text("lamp a: .n = 1; .n = 2.5;\n.x = ;", NULL);
  vsa_diagnostic found;
  CHECK(vsa_reading_status(reading) == VSA_STOPPED_BY_ERROR);
  CHECK(vsa_reading_message(reading).length != 0);
  CHECK(vsa_diagnostic_count(reading) == 2 && vsa_diagnostics_found(reading) == 2);
  CHECK(vsa_diagnostic_at(reading, 0, &found));
  CHECK(strcmp(found.id, "narrowing") == 0 && !found.is_error && !found.ended_reading);
  CHECK(is(found.input_path, "a.n"));
  CHECK(vsa_diagnostic_argument_count(reading, 0) == 3);
  CHECK(is(vsa_diagnostic_argument(reading, 0, 2), "a.n"));
  CHECK(is(vsa_diagnostic_argument(reading, 0, 3), ""));
  CHECK(vsa_diagnostic_argument_count(reading, 2) == 0);
  CHECK(is(vsa_diagnostic_argument(reading, 2, 0), ""));
  CHECK(found.begin.line == 1 && found.begin.offset < found.end.offset);
  CHECK(vsa_diagnostic_at(reading, 1, &found));
  CHECK(found.is_error && found.ended_reading && found.begin.line == 2);
  CHECK(!vsa_diagnostic_at(reading, 2, &found));
  vsa_free(reading);
}

static int stop(void* calls, const vsa_progress* progress) {
  ++*(int*)calls;
  return progress->bytes_read > progress->bytes_total;
}

static void check_options(void) {
  vsa_options options;
  vsa_reading* reading;
  int calls = 0;
  vsa_options_init(&options);
  options.nodes = 1;
  reading = read_text("lamp a; lamp b;", &options);
  CHECK(vsa_reading_status(reading) == VSA_OVER_LIMIT);
  CHECK(vsa_find_node(reading, "a") != NULL && vsa_find_node(reading, "b") == NULL);
  vsa_free(reading);

  vsa_options_init(&options);
  options.progress = stop;
  options.progress_data = &calls;
  reading = read_text("lamp a;", &options);
  CHECK(vsa_reading_status(reading) == VSA_CANCELLED && calls == 1);
  vsa_free(reading);

  memset(&options, 0, sizeof options); /* instead of vsa_options_init() */
  reading = read_text("lamp a;", &options);
  CHECK(vsa_reading_status(reading) == VSA_WRONG_USE && vsa_first_node(reading) == NULL);
  CHECK(vsa_reading_message(reading).length != 0);
  vsa_free(reading);
}

static void check_skipped_buffers(const char* folder) {
  char path[4096];
  vsa_options options;
  vsa_reading* reading;
  vsa_reading* loaded;
  vsa_skipped_buffer skipped;
  vsa_buffer buffer;
  size_t index = 0;
  vsa_options_init(&options);
  options.skips_buffers = 1;
  snprintf(path, sizeof path, "%s/vase_mesh.vsa", folder);
  reading = vsa_read_file(path, &options);
  CHECK(vsa_skipped_count(reading) != 0);
  while (vsa_skipped_at(reading, index, &skipped) && !is(skipped.input_path, "vaseMesh.points")) {
    ++index;
  }
  CHECK(index < vsa_skipped_count(reading) && skipped.count == 375);
  loaded = vsa_load_buffer(path, reading, index, NULL);
  vsa_free(reading);
  CHECK(vsa_reading_status(loaded) == VSA_COMPLETE);
  CHECK(vsa_loaded_buffer(loaded, &buffer) && buffer.count == 375 && buffer.components == 3);
  vsa_free(loaded);
}

/* Every function accepts a null pointer for a missing reading, node or input. */
static void check_missing(void) {
  double real = 7;
  vsa_text text = {"before", 6};
  vsa_buffer buffer;
  vsa_diagnostic found;
  const double* components = NULL;
  CHECK(vsa_reading_status(NULL) == VSA_OUT_OF_MEMORY);
  CHECK(vsa_reading_message(NULL).length != 0);
  CHECK(vsa_diagnostic_count(NULL) == 0 && !vsa_diagnostic_at(NULL, 0, &found));
  CHECK(vsa_file_version(NULL) == 0 && is(vsa_file_time(NULL), "") && vsa_comment_count(NULL) == 0);
  CHECK(vsa_first_node(NULL) == NULL && vsa_next_node(NULL) == NULL &&
        vsa_find_node(NULL, "a") == NULL);
  CHECK(is(vsa_node_name(NULL), "") && is(vsa_node_type(NULL), "") && vsa_input_count(NULL) == 0);
  CHECK(vsa_input_at(NULL, 0) == NULL && vsa_find_input(NULL, NULL) == NULL);
  CHECK(vsa_element_count(NULL) == 0 && vsa_element_at(NULL, 0) == NULL);
  CHECK(vsa_member_count(NULL) == 0 && vsa_member_at(NULL, 0) == NULL &&
        vsa_find_member(NULL, "a") == NULL);
  CHECK(is(vsa_input_name(NULL), "") && vsa_input_path(NULL, NULL, 0) == 0);
  CHECK(vsa_input_type(NULL) == VSA_NULL);
  CHECK(!vsa_real(NULL, &real) && real == 7 && !vsa_string(NULL, &text) && text.length == 6);
  CHECK(vsa_components(NULL, &components) == 0 && components == NULL);
  CHECK(vsa_reference(NULL) == NULL && vsa_connection(NULL, &text) == NULL);
  CHECK(!vsa_buffer_of(NULL, &buffer));
  vsa_options_init(NULL);
  vsa_free(NULL);
}

static void check_unreadable(void) {
  vsa_reading* reading = vsa_read_file(NULL, NULL);
  CHECK(vsa_reading_status(reading) == VSA_UNREADABLE);
  vsa_free(reading);
  reading = vsa_read_text(NULL, 0, NULL);
  CHECK(vsa_reading_status(reading) == VSA_UNREADABLE);
  vsa_free(reading);
  reading = vsa_read_file("/there/is/no/such/file", NULL);
  CHECK(vsa_reading_status(reading) == VSA_UNREADABLE && vsa_reading_message(reading).length != 0);
  CHECK(strcmp(vsa_status_name(vsa_reading_status(reading)), "unreadable") == 0);
  vsa_free(reading);
}

static void check_file(const char* folder) {
  char path[4096];
  vsa_reading* reading;
  vsa_buffer buffer;
  snprintf(path, sizeof path, "%s/vase_mesh.vsa", folder);
  reading = vsa_read_file(path, NULL);
  CHECK(vsa_reading_status(reading) == VSA_COMPLETE);
  CHECK(vsa_buffer_of(vsa_find_input(vsa_find_node(reading, "vaseMesh"), "points"), &buffer));
  CHECK(buffer.count == 375);
  vsa_free(reading);
}

int main(int count, char** arguments) {
  check_values();
  check_diagnostics();
  check_options();
  check_missing();
  check_unreadable();
  if (count == 2) {
    check_file(arguments[1]);
    check_skipped_buffers(arguments[1]);
  }
  return failures == 0 && count == 2 ? 0 : 1;
}
