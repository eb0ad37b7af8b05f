// SceneStorage: all objects that a Scene owns. Nodes, inputs and outputs compute the address of the
// SceneStorage from their own addresses (see Slabs). Internal.
#pragma once

#include <vsa/foundation/string.h>
#include <vsa/foundation/vector.h>
#include "scene/model/input_impl.h"
#include "scene/model/node_impl.h"
#include "scene/model/node_table.h"
#include "scene/model/output_impl.h"
#include "scene/model/scene_limits.h"
#include "scene/model/storage/output_names.h"
#include "scene/model/storage/slabs.h"
#include "scene/model/storage/small_block_pool.h"

namespace zn::korvo_sdk {

/// The header of the file.
struct FileHeader {
  unsigned long long version = 0;
  String time;
  ds::Vector<String> comments;
};

struct SceneStorage {
  explicit SceneStorage(Scene* owner) noexcept : scene(owner) {}

  Scene* const scene;
  // Declared before the lists that use its memory, so that it is destroyed after them.
  SmallBlockPool pool;
  NodeTable nodes{this};
  Slabs<InputImpl, SceneStorage> inputs{this};
  // The outputs except the first output of each node, which is a member of the node.
  Slabs<OutputImpl, SceneStorage> outputs{this};
  OutputNames outputNames;
  SceneLimits limits;
  FileHeader header;
};

}  // namespace zn::korvo_sdk
