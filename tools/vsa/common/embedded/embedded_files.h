// The contents of files that CMake compiles into the command, see
// tools/vsa/common/embedded/embed.cmake.
#pragma once

#include <string_view>

namespace vsa_tools {

/// page.html, in which the caller must replace @REPORT@ and @CHART_SCRIPT@.
std::string_view pageTemplate();

/// docs/messages.md and docs/rules.md.
std::string_view messagesPage();
std::string_view rulesPage();

/// Chart.js, the library that draws the plots. vendor/chart.LICENSE.md is its licence.
std::string_view chartScript();

}  // namespace vsa_tools
