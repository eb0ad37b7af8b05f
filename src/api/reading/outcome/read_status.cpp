// Returns the names of statuses, limits, diagnostics, arguments and severities.
#include <vsa/reading/read_status.h>

#include <cstddef>
#include <iterator>

#include <vsa/reading/read_diagnostic.h>

namespace vsa {

namespace {

constexpr const char* STATUS_NAMES[] = {"complete",      "stopped-by-error", "cut-off",
                                        "unreadable",    "cancelled",        "over-limit",
                                        "out-of-memory", "host-exception"};
constexpr const char* LIMIT_NAMES[] = {"text-bytes", "memory",     "buffer-bytes",
                                       "nodes",      "elements",   "empty-elements",
                                       "depth",      "diagnostics"};
constexpr const char* DIAGNOSTIC_NAMES[] = {
#define VSA_ROW(name, id, ...) id,
    VSA_DIAGNOSTIC_TABLE(VSA_ROW)
#undef VSA_ROW
        "end-mark",
    "over-limit", "host-message"};
constexpr const char* ARGUMENT_NAMES[] = {
#define VSA_ROW(name, id, severity, kind, position, format, arguments) arguments,
    VSA_DIAGNOSTIC_TABLE(VSA_ROW)
#undef VSA_ROW
        "",
    "maximum", "message"};
constexpr const char* SEVERITY_NAMES[] = {"warning", "error"};

static_assert(std::size(STATUS_NAMES) == static_cast<std::size_t>(ReadStatus::HostException) + 1);
static_assert(std::size(LIMIT_NAMES) == static_cast<std::size_t>(Limit::Diagnostics) + 1);
static_assert(std::size(DIAGNOSTIC_NAMES) == DIAGNOSTIC_ID_COUNT);
static_assert(std::size(ARGUMENT_NAMES) == DIAGNOSTIC_ID_COUNT);

template <class Enumeration, std::size_t COUNT>
const char* nameIn(const char* const (&names)[COUNT], Enumeration value) noexcept {
  const auto index = static_cast<std::size_t>(value);
  return index < COUNT ? names[index] : "unknown";
}

}  // namespace

const char* name(ReadStatus status) noexcept {
  return nameIn(STATUS_NAMES, status);
}

const char* name(Limit limit) noexcept {
  return nameIn(LIMIT_NAMES, limit);
}

const char* name(DiagnosticId id) noexcept {
  return nameIn(DIAGNOSTIC_NAMES, id);
}

const char* argumentNames(DiagnosticId id) noexcept {
  const auto index = static_cast<std::size_t>(id);
  return index < std::size(ARGUMENT_NAMES) ? ARGUMENT_NAMES[index] : "";
}

const char* name(Severity severity) noexcept {
  return nameIn(SEVERITY_NAMES, severity);
}

}  // namespace vsa
