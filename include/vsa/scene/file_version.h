// The version of the format to which the header of a scene is reset before a text is read.
#pragma once

namespace zn::korvo_sdk {

/// The first version of the format.
inline constexpr unsigned long long VSX_FILE_VERSION_1 = 1;

}  // namespace zn::korvo_sdk
