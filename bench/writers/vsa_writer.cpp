// The scene as VSA text, in the layouts that exporters choose: statements that name their node or
// follow a declaration ending in ":", lists on one line, broken into lines, or with commas.
#include "bench/scenes/scene_writer.h"

namespace bench {
namespace {

class VsaWriter : public SceneWriter {
 public:
  VsaWriter() { out = "# version: 3\n# time: 2024-03-09 14:20:11\n"; }

  void comment(std::string_view text) override { add({"# ", text, "\n"}); }

  void beginNode(std::string_view type, std::string_view name) override {
    node = name;
    opened = nodeCount % 2 == 0;
    add({"\n", type, " ", name, opened ? ":\n" : ";\n"});
  }

  void endNode() override { ++nodeCount; }

  void boolean(std::string_view input, bool value) override {
    assign(input, value ? "true" : "false");
  }

  void integer(std::string_view input, int64_t value) override {
    assign(input, std::to_string(value));
  }

  void real(std::string_view input, std::string_view digits) override { assign(input, digits); }

  void string(std::string_view input, std::string_view text) override {
    target(input);
    out += " = \"";
    for (const char c : text) escape(c);
    out += "\";\n";
  }

  void tuple(std::string_view input, std::string_view keyword, std::string_view digits) override {
    target(input);
    add({" = ", keyword, "(", digits, ");\n"});
  }

  void buffer(std::string_view input, std::string_view keyword, size_t width,
              const NumberList& numbers) override {
    openBuffer(input, keyword, numbers.componentCount / width);
    if (nodeCount % 4 < 2) {
      out += numbers.digits;
    } else {
      list(numbers.digits, width, nodeCount % 4 == 2 ? "" : ",");
    }
    out += "};\n";
  }

  void compressed(std::string_view input, std::string_view keyword, size_t elementCount,
                  std::span<const unsigned char> stream) override {
    openBuffer(input, keyword, elementCount);
    out += '.';
    appendHex(out, stream);
    out += "};\n";
  }

  void reference(std::string_view input, std::string_view to) override { assign(input, to); }

  void connection(std::string_view input, std::string_view to, std::string_view output) override {
    target(input);
    add({" |= ", to, ".", output, ";\n"});
  }

  std::string finish() override { return std::move(out); }

 private:
  void add(std::initializer_list<std::string_view> parts) {
    for (const std::string_view part : parts) out += part;
  }

  void target(std::string_view input) {
    if (opened) {
      add({"  .", input});
    } else {
      add({node, ".", input});
    }
  }

  void assign(std::string_view input, std::string_view value) {
    target(input);
    add({" = ", value, ";\n"});
  }

  void openBuffer(std::string_view input, std::string_view keyword, size_t elementCount) {
    target(input);
    add({" = ", keyword, "[", std::to_string(elementCount), "] {"});
  }

  void escape(char c) {
    if (c == '\n') {
      out += "\\n";
      return;
    }
    if (c == '"' || c == '\\') out += '\\';
    out += c;
  }

  // Elements in lines of about 12 numbers, with `mark` after each element but the last.
  void list(std::string_view digits, size_t width, std::string_view mark) {
    const size_t perLine = 12 / width * width;
    eachNumber(digits, [&](std::string_view number, size_t index) {
      if (index > 0) {
        if (index % width == 0) out += mark;
        out += index % perLine == 0 ? "\n    " : " ";
      }
      out += number;
    });
  }

  std::string out;
  std::string node;
  size_t nodeCount = 0;
  bool opened = false;
};

}  // namespace

std::unique_ptr<SceneWriter> makeVsaWriter() {
  return std::make_unique<VsaWriter>();
}

}  // namespace bench
