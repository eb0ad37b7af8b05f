// The format version that the reader sets in a scene before it reads a file.
#pragma once

namespace zn::korvo_sdk {

/// The first version of the format. It applies to a file without a version.
inline constexpr unsigned long long VSX_FILE_VERSION_1 = 1;

}  // namespace zn::korvo_sdk
