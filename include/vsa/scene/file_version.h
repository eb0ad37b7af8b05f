// The version that a scene's header state starts from when a file is read into it.
#pragma once

namespace zn::korvo_sdk {

/// The first version of the format, and that of a file that names none.
inline constexpr unsigned long long VSX_FILE_VERSION_1 = 1;

}  // namespace zn::korvo_sdk
