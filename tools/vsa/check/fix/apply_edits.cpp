#include "tools/vsa/check/fix/apply_edits.h"

#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <filesystem>
#include <iterator>
#include <map>
#include <system_error>

#include <vsa/file_replacement.h>

namespace vsa_tools {

namespace {

bool isInside(const TextEdit& edit, std::string_view text) {
  return edit.begin <= edit.end && edit.end <= text.size();
}

/// Returns whether two edits overlap. Two edits that begin at the same place overlap even if one of
/// them is an insertion, because their order is not known.
bool overlaps(const TextEdit& a, const TextEdit& b) {
  return (a.begin < b.end && b.begin < a.end) || a.begin == b.begin;
}

/// Edits that do not overlap, by the place where they begin.
using DisjointEdits = std::multimap<std::uint64_t, const TextEdit&>;

// Returns whether an edit overlaps none of the taken edits. Only the edit before it and the one
// after it can overlap it.
bool isFree(const TextEdit& edit, const DisjointEdits& taken) {
  const auto after = taken.lower_bound(edit.begin);
  if (after != taken.end() && overlaps(edit, after->second)) return false;
  return after == taken.begin() || !overlaps(edit, std::prev(after)->second);
}

}  // namespace

EditedText withEdits(std::string_view text, const std::vector<std::vector<TextEdit>>& findings) {
  EditedText edited;
  DisjointEdits taken;
  for (const std::vector<TextEdit>& edits : findings) {
    const bool isApplied = !edits.empty() && std::ranges::all_of(edits, [&](const TextEdit& edit) {
      return isInside(edit, text) && isFree(edit, taken);
    });
    if (!isApplied) continue;
    for (const TextEdit& edit : edits) taken.emplace(edit.begin, edit);
    ++edited.fixed;
  }
  std::uint64_t at = 0;
  for (const auto& [begin, edit] : taken) {
    edited.text.append(text, at, begin - at);
    edited.text += edit.text;
    at = edit.end;
  }
  edited.text.append(text, at);
  return edited;
}

std::string replaceFile(const std::string& path, std::string_view bytes) {
  std::error_code error;
  const bool isRegular = std::filesystem::is_regular_file(path, error);
  if (error) return error.message();
  if (!isRegular) return "not a regular file";
  if (::access(path.c_str(), W_OK) != 0) return std::strerror(errno);
  vsa::FileReplacement file;
  if (file.open(path) && file.write(bytes) && file.replace()) return {};
  return file.error();
}

}  // namespace vsa_tools
