// Writes compact JSON, without the types that JSON itself distinguishes:
//   {"version":3,"time":"...","nodes":[{"type":"mesh","name":"mesh_000000","inputs":{
//     "points":{"type":"vec3f","count":2,"data":[0.5,...]},"tint":["rgba",1,0,0,1],
//     "material":{"node":"mat1"},"color":{"node":"tex1","output":"out"}}}],"comments":["..."]}
#include <algorithm>

#include "bench/scenes/scene_writer.h"
#include "tools/scene_text/printable_text.h"

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
    append(out, {"{\"type\":\"", type, "\",\"name\":\"", name, "\",\"inputs\":{"});
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
    append(out, {"[\"", keyword, "\","});
    out += digits;
    std::replace(out.end() - static_cast<std::ptrdiff_t>(digits.size()), out.end(), ' ', ',');
    out += ']';
  }

  void buffer(std::string_view input, std::string_view keyword, size_t width,
              const NumberList& numbers) override {
    openBuffer(input, keyword, numbers.componentCount / width);
    appendJsonArray(out, numbers.digits);
    out += '}';
  }

  void compressed(std::string_view input, std::string_view keyword, size_t elementCount,
                  std::string_view stream) override {
    openBuffer(input, keyword, elementCount);
    out += '"';
    vsa_tools::appendHex(out, stream);
    out += "\"}";
  }

  void reference(std::string_view input, std::string_view node) override {
    key(input);
    append(out, {"{\"node\":\"", node, "\"}"});
  }

  void connection(std::string_view input, std::string_view node, std::string_view output) override {
    key(input);
    append(out, {"{\"node\":\"", node, "\",\"output\":\"", output, "\"}"});
  }

  std::string finish() override {
    append(out, {"],\"comments\":[", comments, "]}\n"});
    return std::move(out);
  }

 private:
  void key(std::string_view input) {
    if (inputCount++ > 0) out += ',';
    append(out, {"\"", input, "\":"});
  }

  void openBuffer(std::string_view input, std::string_view keyword, size_t elementCount) {
    key(input);
    append(out,
           {"{\"type\":\"", keyword, "\",\"count\":", std::to_string(elementCount), ",\"data\":"});
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
