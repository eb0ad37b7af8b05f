// Writes Open Inventor 2.1 ASCII, for Coin. A mesh becomes an indexed face set. A node with scalar
// inputs becomes a node that declares its own fields. A node with links, or without inputs, becomes
// a group. Compressed buffers are left out.
//
// A name must be defined before it is used. Links refer to later nodes, so the nodes are written in
// reverse order. Both a reference and a connection become a child with USE.
#include <vector>

#include "bench/scenes/scene_writer.h"

namespace bench {
namespace {

class IvWriter : public SceneWriter {
 public:
  void comment(std::string_view text) override { append(preface, {"# ", text, "\n"}); }

  void beginNode(std::string_view type, std::string_view name) override {
    nodeType = type;
    nodeName = name;
    declared.clear();
    body.clear();
    properties.clear();
    hasChildren = false;
  }

  void endNode() override {
    std::string block = preface;
    preface.clear();
    append(block, {"DEF ", nodeName, " "});
    if (nodeType == "mesh") {
      append(block, {"Separator {\n  VertexProperty {\n", properties, "  }\n", body, "}\n"});
    } else if (hasChildren || declared.empty()) {
      append(block, {"Group {\n", body, "}\n"});
    } else {
      append(block, {nodeType, " {\n  fields [ ", declared, " ]\n", body, "}\n"});
    }
    blocks.push_back(std::move(block));
  }

  void boolean(std::string_view input, bool value) override {
    field("SFBool", input, value ? "TRUE" : "FALSE");
  }

  void integer(std::string_view input, int64_t value) override {
    field("SFInt32", input, std::to_string(value));
  }

  void real(std::string_view input, std::string_view digits) override {
    field("SFFloat", input, digits);
  }

  void string(std::string_view input, std::string_view text) override {
    field("SFString", input, quoted(text));
  }

  void tuple(std::string_view input, std::string_view keyword, std::string_view digits) override {
    field("SFVec" + std::string(vectorSize(keyword)) + "f", input, digits);
  }

  void buffer(std::string_view input, std::string_view, size_t width,
              const NumberList& numbers) override {
    if (input == "points") {
      rows("vertex", width, numbers);
    } else if (input == "normals") {
      rows("normal", width, numbers);
    } else if (input == "uvs") {
      rows("texCoord", width, numbers);
    } else if (input == "indices") {
      faces(numbers);
    }
  }

  void compressed(std::string_view, std::string_view, size_t, std::string_view) override {}

  void reference(std::string_view, std::string_view node) override { use(node); }
  void connection(std::string_view, std::string_view node, std::string_view) override { use(node); }

  std::string finish() override {
    std::string out = "#Inventor V2.1 ascii\n\nSeparator {\n";
    for (size_t i = blocks.size(); i > 0; --i) out += blocks[i - 1];
    return out + preface + "}\n";
  }

 private:
  void field(std::string_view type, std::string_view input, std::string_view value) {
    if (!declared.empty()) declared += ", ";
    append(declared, {type, " ", input});
    append(body, {"  ", input, " ", value, "\n"});
  }

  void use(std::string_view node) {
    hasChildren = true;
    append(body, {"  USE ", node, "\n"});
  }

  void rows(std::string_view name, size_t width, const NumberList& numbers) {
    append(properties, {"    ", name, " [ "});
    eachNumber(numbers.digits, [&](std::string_view number, size_t index) {
      if (index > 0) properties += index % width == 0 ? ",\n      " : " ";
      properties += number;
    });
    properties += " ]\n";
  }

  void faces(const NumberList& numbers) {
    body += "  IndexedFaceSet {\n    coordIndex [ ";
    eachNumber(numbers.digits, [&](std::string_view number, size_t index) {
      if (index > 0) body += index % 3 == 0 ? ", -1,\n      " : ", ";
      body += number;
    });
    body += ", -1 ]\n  }\n";
  }

  std::vector<std::string> blocks;
  std::string preface;
  std::string nodeType, nodeName;
  std::string declared, body, properties;
  bool hasChildren = false;
};

}  // namespace

std::unique_ptr<SceneWriter> makeIvWriter() {
  return std::make_unique<IvWriter>();
}

}  // namespace bench
