// Writes .osgt, the text format of OpenSceneGraph, in the form of osgDB. A mesh becomes a Geometry.
// Any other node becomes a Group with its inputs as value objects. The format has no comments.
// Compressed buffers are left out.
//
// An object must be defined before its UniqueID is used. Links refer to later nodes, so the nodes
// are written in reverse order. Both a reference and a connection become a child, which is the only
// link between nodes in this format.
#include <unordered_map>
#include <vector>

#include "bench/scenes/scene_writer.h"

namespace bench {
namespace {

class OsgtWriter : public SceneWriter {
 public:
  void comment(std::string_view) override {}

  void beginNode(std::string_view type, std::string_view name) override {
    isMesh = type == "mesh";
    nodeName = name;
    values.clear();
    children.clear();
    points.clear();
    normals.clear();
    uvs.clear();
    indices.clear();
    valueCount = childCount = 0;
  }

  void endNode() override {
    std::string block;
    append(block, {"    ", isMesh ? "osg::Geometry" : "osg::Group", " {\n      UniqueID ",
                   idOf(nodeName), " \n      Name \"", nodeName, "\" \n"});
    if (valueCount > 0) addValues(block);
    if (isMesh) {
      append(block, {indices, points, normals, uvs});
    } else if (childCount > 0) {
      append(block, {"      Children ", std::to_string(childCount), " {\n", children, "      }\n"});
    }
    block += "    }\n";
    blocks.push_back(std::move(block));
  }

  void boolean(std::string_view input, bool value) override {
    object("Bool", input, value ? "TRUE" : "FALSE");
  }

  void integer(std::string_view input, int64_t value) override {
    object("Int", input, std::to_string(value));
  }

  void real(std::string_view input, std::string_view digits) override {
    object("Double", input, digits);
  }

  void string(std::string_view input, std::string_view text) override {
    object("String", input, quoted(text));
  }

  void tuple(std::string_view input, std::string_view keyword, std::string_view digits) override {
    object("Vec" + std::string(vectorSize(keyword)) + "d", input, digits);
  }

  void buffer(std::string_view input, std::string_view, size_t width,
              const NumberList& numbers) override {
    if (input == "points") {
      array(points, "      VertexArray TRUE {\n", width, numbers);
    } else if (input == "normals") {
      array(normals, "      NormalArray TRUE {\n", width, numbers);
    } else if (input == "uvs") {
      array(uvs, "      TexCoordArrayList 1 {\n", width, numbers);
    } else if (input == "indices") {
      primitives(numbers);
    }
  }

  void compressed(std::string_view, std::string_view, size_t, std::string_view) override {}

  void reference(std::string_view, std::string_view node) override { child(node); }

  void connection(std::string_view, std::string_view node, std::string_view) override {
    child(node);
  }

  std::string finish() override {
    std::string out = "#Ascii Scene \n#Version 161 \n#Generator OpenSceneGraph 3.6.5 \n\n";
    append(out, {"osg::Group {\n  UniqueID ", newId(), " \n  Name \"root\" \n  Children ",
                 std::to_string(blocks.size()), " {\n"});
    for (size_t i = blocks.size(); i > 0; --i) out += blocks[i - 1];
    return out + "  }\n}\n";
  }

 private:
  std::string newId() { return std::to_string(++lastId); }

  std::string idOf(std::string_view node) {
    size_t& id = ids[std::string(node)];
    if (id == 0) id = ++lastId;
    return std::to_string(id);
  }

  void object(std::string_view type, std::string_view input, std::string_view value) {
    ++valueCount;
    append(values, {"            osg::", type, "ValueObject {\n              UniqueID ", newId(),
                    " \n              Name \"", input, "\" \n              Value ", value,
                    " \n            }\n"});
  }

  void addValues(std::string& block) {
    append(block,
           {"      UserDataContainer TRUE {\n        osg::DefaultUserDataContainer {\n",
            "          UniqueID ", newId(), " \n          UDC_UserObjects ",
            std::to_string(valueCount), " {\n", values, "          }\n        }\n      }\n"});
  }

  void child(std::string_view node) {
    ++childCount;
    append(children, {"        osg::Group {\n          UniqueID ", idOf(node), " \n        }\n"});
  }

  static void rows(std::string& to, size_t perRow, const NumberList& numbers) {
    eachNumber(numbers.digits, [&](std::string_view number, size_t index) {
      if (index % perRow == 0) to += "            ";
      append(to, {number, " "});
      if (index % perRow == perRow - 1) to += '\n';
    });
    if (numbers.componentCount % perRow != 0) to += '\n';
  }

  void array(std::string& to, std::string_view opening, size_t width, const NumberList& numbers) {
    append(to, {opening, "        osg::Vec", std::to_string(width), "Array {\n          UniqueID ",
                newId(), " \n          Binding BIND_PER_VERTEX \n          vector ",
                std::to_string(numbers.componentCount / width), " {\n"});
    rows(to, width, numbers);
    to += "          }\n        }\n      }\n";
  }

  void primitives(const NumberList& numbers) {
    append(indices,
           {"      PrimitiveSetList 1 {\n        osg::DrawElementsUInt {\n          UniqueID ",
            newId(), " \n          Mode TRIANGLES \n          vector ",
            std::to_string(numbers.componentCount), " {\n"});
    rows(indices, 4, numbers);
    indices += "          }\n        }\n      }\n";
  }

  std::vector<std::string> blocks;
  std::unordered_map<std::string, size_t> ids;
  size_t lastId = 0;

  bool isMesh = false;
  std::string nodeName;
  std::string values, children, points, normals, uvs, indices;
  size_t valueCount = 0, childCount = 0;
};

}  // namespace

std::unique_ptr<SceneWriter> makeOsgtWriter() {
  return std::make_unique<OsgtWriter>();
}

}  // namespace bench
