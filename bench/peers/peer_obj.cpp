// The candidate of tinyobjloader. It reads the meshes as Wavefront OBJ.
#include <tiny_obj_loader.h>

#include <stdexcept>

#include "bench/peers/peers.h"

namespace bench {
namespace {

struct ObjScene {
  tinyobj::attrib_t vertices;
  std::vector<tinyobj::shape_t> shapes;
  std::vector<tinyobj::material_t> materials;
};

void load(ObjScene& scene, const std::string& path) {
  std::string warning, error;
  if (!tinyobj::LoadObj(&scene.vertices, &scene.shapes, &scene.materials, &warning, &error,
                        path.c_str())) {
    throw std::runtime_error("tinyobjloader: " + error);
  }
}

}  // namespace

Candidate objReader(const Text& obj, const std::string& path) {
  writeFile(path, obj.text);
  ObjScene scene;
  load(scene, path);
  size_t numbers = scene.vertices.vertices.size() + scene.vertices.normals.size() +
                   scene.vertices.texcoords.size();
  for (const tinyobj::shape_t& shape : scene.shapes) numbers += shape.mesh.indices.size();
  requireCount("tinyobjloader", "meshes", scene.shapes.size(), obj.expected.nodes);
  requireCount("tinyobjloader", "numbers", numbers, obj.expected.numbers);
  return {"tinyobjloader .obj", [path] {
            ObjScene fresh;
            const Stopwatch watch;
            load(fresh, path);
            return watch.seconds();
          }};
}

}  // namespace bench
