// The scene as JSON at its tightest: types stand only where JSON has none of its own.
//   {"version":3,"nodes":[{"type":"mesh","name":"mesh_000000","inputs":{
//     "points":{"type":"vec3f","count":2,"data":[0.5,...]},"tint":["rgba",1,0,0,1],
//     "material":{"node":"mat1"},"color":{"node":"tex1","output":"out"}}}],"comments":["..."]}
#include "bench/scenes/scene_writer.h"

namespace bench {
namespace {

class CompactJsonWriter : public SceneWriter {
 public:
  CompactJsonWriter() { out = "{\"version\":3,\"time\":\"2024-03-09 14:20:11\",\"nodes\":["; }

  void comment(std::string_view text) override {
    if (!comments.empty()) comments += ',';
    appendJsonString(comments, text);
  }

  void beginNode(std::string_view type, std::string_view name) override {
    if (nodeCount++ > 0) out += ",\n";
    add({"{\"type\":\"", type, "\",\"name\":\"", name, "\",\"inputs\":{"});
    inputCount = 0;
  }

  void endNode() override { out += "}}"; }

  void boolean(std::string_view input, bool value) override {
    key(input);
    out += value ? "true" : "false";
  }

  void integer(std::string_view input, int64_t value) override {
    key(input);
    out += std::to_string(value);
  }

  void real(std::string_view input, std::string_view digits) override {
    key(input);
    out += digits;
  }

  void string(std::string_view input, std::string_view text) override {
    key(input);
    appendJsonString(out, text);
  }

  void tuple(std::string_view input, std::string_view keyword, std::string_view digits) override {
    key(input);
    add({"[\"", keyword, "\","});
    list(digits);
    out += ']';
  }

  void buffer(std::string_view input, std::string_view keyword, size_t width,
              const NumberList& numbers) override {
    openBuffer(input, keyword, numbers.componentCount / width);
    out += '[';
    list(numbers.digits);
    out += "]}";
  }

  void compressed(std::string_view input, std::string_view keyword, size_t elementCount,
                  std::span<const unsigned char> stream) override {
    openBuffer(input, keyword, elementCount);
    out += '"';
    appendHex(out, stream);
    out += "\"}";
  }

  void reference(std::string_view input, std::string_view node) override {
    key(input);
    add({"{\"node\":\"", node, "\"}"});
  }

  void connection(std::string_view input, std::string_view node, std::string_view output) override {
    key(input);
    add({"{\"node\":\"", node, "\",\"output\":\"", output, "\"}"});
  }

  std::string finish() override {
    add({"],\"comments\":[", comments, "]}\n"});
    return std::move(out);
  }

 private:
  void add(std::initializer_list<std::string_view> parts) {
    for (const std::string_view part : parts) out += part;
  }

  void key(std::string_view input) {
    if (inputCount++ > 0) out += ',';
    add({"\"", input, "\":"});
  }

  void openBuffer(std::string_view input, std::string_view keyword, size_t elementCount) {
    key(input);
    add({"{\"type\":\"", keyword, "\",\"count\":", std::to_string(elementCount), ",\"data\":"});
  }

  void list(std::string_view digits) {
    const size_t start = out.size();
    out += digits;
    for (size_t i = start; i < out.size(); ++i) {
      if (out[i] == ' ') out[i] = ',';
    }
  }

  std::string out;
  std::string comments;
  size_t nodeCount = 0;
  size_t inputCount = 0;
};

}  // namespace

std::unique_ptr<SceneWriter> makeCompactJsonWriter() {
  return std::make_unique<CompactJsonWriter>();
}

}  // namespace bench
