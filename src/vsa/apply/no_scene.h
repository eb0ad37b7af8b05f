// The null object for a missing scene. Internal.
#pragma once

#include <vsa/scene/scene_interface.h>

namespace zn::korvo_sdk::impl {

/// A scene that finds and creates nothing. With it, a text is checked but not applied.
interfaces::IScene& noScene();

}  // namespace zn::korvo_sdk::impl
