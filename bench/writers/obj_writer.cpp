// Writes the meshes of a scene as Wavefront OBJ: v, vn, vt and triangles. Of other nodes only the
// name remains, because the format cannot represent them.
#include "bench/scenes/scene_writer.h"

namespace bench {
namespace {

class ObjWriter : public SceneWriter {
 public:
  void comment(std::string_view text) override { out.append("# ").append(text) += '\n'; }

  void beginNode(std::string_view, std::string_view name) override {
    out.append("o ").append(name) += '\n';
    vertexCount = 0;
  }

  // Adds the vertices of the node to the count of the file. Indices refer to the vertices of the
  // whole file and start at 1.
  void endNode() override { firstVertex += vertexCount; }

  void buffer(std::string_view input, std::string_view, size_t width,
              const NumberList& numbers) override {
    if (input == "points") {
      rows("v", width, numbers);
      vertexCount = numbers.componentCount / width;
    } else if (input == "normals") {
      rows("vn", width, numbers);
    } else if (input == "uvs") {
      rows("vt", width, numbers);
    } else if (input == "indices") {
      faces(numbers);
    }
  }

  void boolean(std::string_view, bool) override {}
  void integer(std::string_view, int64_t) override {}
  void real(std::string_view, std::string_view) override {}
  void string(std::string_view, std::string_view) override {}
  void tuple(std::string_view, std::string_view, std::string_view) override {}
  void compressed(std::string_view, std::string_view, size_t, std::string_view) override {}
  void reference(std::string_view, std::string_view) override {}
  void connection(std::string_view, std::string_view, std::string_view) override {}

  std::string finish() override { return std::move(out); }

 private:
  void rows(std::string_view tag, size_t width, const NumberList& numbers) {
    eachNumber(numbers.digits, [&](std::string_view number, size_t index) {
      if (index % width == 0) out += tag;
      out += ' ';
      out += number;
      if (index % width == width - 1) out += '\n';
    });
  }

  void faces(const NumberList& numbers) {
    eachNumber(numbers.digits, [&](std::string_view number, size_t index) {
      if (index % 3 == 0) out += 'f';
      const std::string vertex = std::to_string(std::stoul(std::string(number)) + firstVertex);
      out.append(" ").append(vertex).append("/").append(vertex).append("/").append(vertex);
      if (index % 3 == 2) out += '\n';
    });
  }

  std::string out;
  size_t firstVertex = 1;
  size_t vertexCount = 0;
};

}  // namespace

std::unique_ptr<SceneWriter> makeObjWriter() {
  return std::make_unique<ObjWriter>();
}

}  // namespace bench
