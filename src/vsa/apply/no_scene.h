// The scene of a reader without one. Internal.
#pragma once

#include <vsa/scene/scene_interface.h>

namespace zn::korvo_sdk::impl {

/// A scene that finds and creates nothing, so that a text is checked and not applied.
interfaces::IScene& noScene();

}  // namespace zn::korvo_sdk::impl
