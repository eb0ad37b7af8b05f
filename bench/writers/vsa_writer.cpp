// Writes VSA text in the layouts of several exporters. Paths begin with the name of their node, or
// with "." after a declaration that ends in ":". Lists are on one line, on several lines, or
// contain commas.
#include "bench/scenes/scene_writer.h"
#include "tools/scene_text/printable_text.h"

namespace bench {
namespace {

class VsaWriter : public SceneWriter {
 public:
  VsaWriter() { out = "# version: 3\n# time: 2024-03-09 14:20:11\n"; }

  void comment(std::string_view text) override { append(out, {"# ", text, "\n"}); }

  void beginNode(std::string_view type, std::string_view name) override {
    node = name;
    opened = nodeCount % 2 == 0;
    append(out, {"\n", type, " ", name, opened ? ":\n" : ";\n"});
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
    out += " = ";
    appendJsonString(out, text);
    out += ";\n";
  }

  void tuple(std::string_view input, std::string_view keyword, std::string_view digits) override {
    target(input);
    append(out, {" = ", keyword, "(", digits, ");\n"});
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
                  std::string_view stream) override {
    openBuffer(input, keyword, elementCount);
    out += '.';
    vsa_tools::appendHex(out, stream);
    out += "};\n";
  }

  void reference(std::string_view input, std::string_view to) override { assign(input, to); }

  void connection(std::string_view input, std::string_view to, std::string_view output) override {
    target(input);
    append(out, {" |= ", to, ".", output, ";\n"});
  }

  std::string finish() override { return std::move(out); }

 private:
  void target(std::string_view input) {
    if (opened) {
      append(out, {"  .", input});
    } else {
      append(out, {node, ".", input});
    }
  }

  void assign(std::string_view input, std::string_view value) {
    target(input);
    append(out, {" = ", value, ";\n"});
  }

  void openBuffer(std::string_view input, std::string_view keyword, size_t elementCount) {
    target(input);
    append(out, {" = ", keyword, "[", std::to_string(elementCount), "] {"});
  }

  // Appends elements in lines of at most 12 numbers. A line contains only whole elements.
  // `separator` follows each element except the last.
  void list(std::string_view digits, size_t width, std::string_view separator) {
    const size_t perLine = 12 / width * width;
    eachNumber(digits, [&](std::string_view number, size_t index) {
      if (index > 0) {
        if (index % width == 0) out += separator;
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
