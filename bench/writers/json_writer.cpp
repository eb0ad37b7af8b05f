// Writes JSON in the format of `vsa dump`, but without the result and the log. A compressed buffer
// is a string of hexadecimal digits:
//   {"fileVersion":3,"fileComments":["..."],"nodes":[{"type":"mesh","name":"m1","inputs":[
//     {"name":"tint","type":"Rgba","value":[1,0,0,1]},{"name":"material","type":"Node",
//     "value":"mat1"},{"name":"color","type":"Null","value":null,"connection":"tex1.out"}]}]}
#include "bench/scenes/scene_writer.h"
#include "tools/scene_text/printable_text.h"

namespace bench {
namespace {

class JsonWriter : public SceneWriter {
 public:
  void comment(std::string_view text) override {
    if (!comments.empty()) comments += ',';
    appendJsonString(comments, text);
  }

  void beginNode(std::string_view type, std::string_view name) override {
    if (nodeCount++ > 0) nodes += ",\n";
    append(nodes, {"{\"type\":\"", type, "\",\"name\":\"", name, "\",\"inputs\":["});
    inputCount = 0;
  }

  void endNode() override { nodes += "]}"; }

  void boolean(std::string_view name, bool value) override {
    input(name, "Bool", value ? "true" : "false");
  }

  void integer(std::string_view name, int64_t value) override {
    input(name, "Int", std::to_string(value));
  }

  void real(std::string_view name, std::string_view digits) override {
    input(name, "Real", digits);
  }

  void string(std::string_view name, std::string_view text) override {
    open(name, "String");
    appendJsonString(nodes, text);
    nodes += '}';
  }

  void tuple(std::string_view name, std::string_view keyword, std::string_view digits) override {
    open(name, typeName(keyword));
    appendJsonArray(nodes, digits);
    nodes += '}';
  }

  void buffer(std::string_view name, std::string_view keyword, size_t width,
              const NumberList& numbers) override {
    openBuffer(name, keyword, numbers.componentCount / width);
    appendJsonArray(nodes, numbers.digits);
    nodes += '}';
  }

  void compressed(std::string_view name, std::string_view keyword, size_t elementCount,
                  std::string_view stream) override {
    openBuffer(name, keyword, elementCount);
    nodes += '"';
    vsa_tools::appendHex(nodes, stream);
    nodes += "\"}";
  }

  void reference(std::string_view name, std::string_view node) override {
    open(name, "Node");
    append(nodes, {"\"", node, "\"}"});
  }

  void connection(std::string_view name, std::string_view node, std::string_view output) override {
    open(name, "Null");
    append(nodes, {"null,\"connection\":\"", node, ".", output, "\"}"});
  }

  std::string finish() override {
    return "{\"fileVersion\":3,\"fileTime\":\"2024-03-09 14:20:11\",\"fileComments\":[" + comments +
           "],\"nodes\":[" + nodes + "]}\n";
  }

 private:
  // Returns the display name of a keyword, such as "Vec3f" for "vec3f".
  static std::string typeName(std::string_view keyword) {
    std::string name(keyword);
    name[0] = static_cast<char>(name[0] - 'a' + 'A');
    return name;
  }

  void head(std::string_view name, std::string_view type) {
    if (inputCount++ > 0) nodes += ',';
    append(nodes, {"{\"name\":\"", name, "\",\"type\":\"", type, "\","});
  }

  void open(std::string_view name, std::string_view type) {
    head(name, type);
    nodes += "\"value\":";
  }

  void openBuffer(std::string_view name, std::string_view keyword, size_t elementCount) {
    head(name, "Buffer");
    append(nodes, {"\"bufferType\":\"", typeName(keyword),
                   "\",\"count\":", std::to_string(elementCount), ",\"value\":"});
  }

  void input(std::string_view name, std::string_view type, std::string_view value) {
    open(name, type);
    append(nodes, {value, "}"});
  }

  std::string nodes;
  std::string comments;
  size_t nodeCount = 0;
  size_t inputCount = 0;
};

}  // namespace

std::unique_ptr<SceneWriter> makeJsonWriter() {
  return std::make_unique<JsonWriter>();
}

}  // namespace bench
