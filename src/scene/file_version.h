// The version that a scene's header state starts from when a file is read into it.
#pragma once

namespace zn::korvo_sdk {

inline constexpr unsigned long long VSX_FILE_VERSION_1 = 1;

}  // namespace zn::korvo_sdk
