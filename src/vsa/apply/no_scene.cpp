#include "vsa/apply/no_scene.h"

namespace zn::korvo_sdk::impl {

interfaces::IScene& noScene() {
  static NoScene none;
  return none;
}

}  // namespace zn::korvo_sdk::impl
