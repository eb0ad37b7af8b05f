// The contents of files that CMake compiles into the command. The CMake function is in
// tools/vsa/common/embedded/embed.cmake.
#pragma once

#include <string_view>

namespace vsa_tools {

/// Returns tools/vsa/stats/page.html, the page of `vsa stats --html`. The caller must replace
/// @REPORT@ and @CHART_SCRIPT@ in it.
std::string_view pageTemplate();

/// Return docs/messages.md and docs/rules.md.
std::string_view messagesPage();
std::string_view rulesPage();

/// Returns Chart.js, the library that draws the plots. Its licence is
/// tools/vsa/stats/vendor/chart.LICENSE.md.
std::string_view chartScript();

}  // namespace vsa_tools
