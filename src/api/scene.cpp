#include <vsa/scene.h>

namespace vsa {

Scene::Scene() noexcept = default;
Scene::Scene(Scene&& other) noexcept = default;
Scene& Scene::operator=(Scene&& other) noexcept = default;
Scene::~Scene() = default;

zn::korvo_sdk::Scene& Scene::plain() {
  if (plain_ == nullptr) plain_ = std::make_unique<zn::korvo_sdk::Scene>();
  return *plain_;
}

const zn::korvo_sdk::Scene& Scene::plain() const {
  if (plain_ != nullptr) return *plain_;
  static const zn::korvo_sdk::Scene EMPTY;
  return EMPTY;
}

}  // namespace vsa
