// The candidate of OpenSceneGraph. It reads the text format of osgDB, including links by UniqueID.
#include <osg/Geometry>
#include <osg/Group>
#include <osg/UserDataContainer>
#include <osgDB/ReadFile>

#include <stdexcept>

#include "bench/peers/peers.h"

namespace bench {
namespace {

struct Found {
  size_t nodes = 0;
  size_t inputs = 0;
  size_t numbers = 0;
};

size_t numbersOf(const osg::Array* array) {
  return array ? size_t(array->getNumElements()) * size_t(array->getDataSize()) : 0;
}

void count(Found& found, osg::Node& node) {
  ++found.nodes;
  if (const osg::UserDataContainer* data = node.getUserDataContainer()) {
    found.inputs += data->getNumUserObjects();
  }
  if (const osg::Group* group = node.asGroup()) found.inputs += group->getNumChildren();
  if (const osg::Geometry* mesh = node.asGeometry()) {
    found.inputs += 4;
    found.numbers += numbersOf(mesh->getVertexArray()) + numbersOf(mesh->getNormalArray()) +
                     numbersOf(mesh->getTexCoordArray(0)) +
                     mesh->getPrimitiveSet(0)->getNumIndices();
  }
}

}  // namespace

Candidate osgReader(const Text& osgt, const std::string& path) {
  writeFile(path, osgt.text);
  const osg::ref_ptr<osg::Node> root = osgDB::readRefNodeFile(path);
  osg::Group* const scene = root ? root->asGroup() : nullptr;
  if (!scene) throw std::runtime_error("OpenSceneGraph: cannot read " + path);
  Found found;
  for (unsigned i = 0; i < scene->getNumChildren(); ++i) count(found, *scene->getChild(i));
  requireCount("OpenSceneGraph", "nodes", found.nodes, osgt.expected.nodes);
  requireCount("OpenSceneGraph", "inputs", found.inputs, osgt.expected.inputs);
  requireCount("OpenSceneGraph", "numbers", found.numbers, osgt.expected.numbers);
  return {"OpenSceneGraph .osgt", [path] {
            const Stopwatch watch;
            const osg::ref_ptr<osg::Node> fresh = osgDB::readRefNodeFile(path);
            return watch.seconds();
          }};
}

}  // namespace bench
