#!/usr/bin/env bash
# floors.sh: a source includes its own floor and those below it. foundation knows neither scene nor reader, the scene
# knows no reader, and the reader meets a scene through its interface, never the one in scene/model. None of them knows
# the tools or the tests. The check is tried on a copy with a forbidden include in each floor first.
set -euo pipefail
cd "$(dirname "$0")/.."

# One row a floor: the files, then what they do not include.
floors() {
  cat <<'ROWS'
src/foundation/*            scene/ vsa/ tools/ tests/
src/scene/*                 vsa/ tools/ tests/
src/scene/[!m]*             scene/model/
src/vsa/*                   scene/model/ tools/ tests/
src/vsa/token*              vsa/parser vsa/statement vsa/input_ vsa/value_
src/vsa/lexer*              vsa/parser vsa/statement vsa/input_ vsa/value_
src/vsa/value_convert*      vsa/parser vsa/lexer vsa/token
ROWS
}

# violations ROOT: every forbidden include below ROOT.
violations() {
  local root=$1 files forbidden prefix
  while read -r files forbidden; do
    for prefix in $forbidden; do
      (cd "$root" && find src -path "$files" \( -name '*.h' -o -name '*.cpp' \) -exec \
        grep -HnE "^[[:space:]]*#[[:space:]]*include[[:space:]]*[\"<](\.\./)*(src/)?$prefix" {} +) || true
    done
  done < <(floors)
}

scratch=$(mktemp -d)
trap 'rm -rf "$scratch"' EXIT
failed=0

# expect_found FILE INCLUDE: with that line in the file, that file is reported, and no other.
expect_found() {
  rm -rf "$scratch/src"
  cp -r src "$scratch/src"
  printf '%s\n' "$2" >>"$scratch/$1"
  local found
  found=$(violations "$scratch" | cut -d: -f1,3 | sort -u)
  if [ "$found" != "$1:$2" ]; then
    printf 'floors: %s with %s: found "%s"\n' "$1" "$2" "$found"
    failed=1
  fi
}
expect_found src/foundation/string.h '#include "scene/attr_type.h"'
expect_found src/foundation/log.cpp '#include <vsa/vsa.h>'
expect_found src/scene/attr_data.h '# include "vsa/token.h"'
expect_found src/scene/model/node.cpp '#include "../vsa/vsa.h"'
expect_found src/scene/scene_interface.h '#include "scene/model/scene.h"'
expect_found src/vsa/no_scene.cpp '  #include "scene/model/scene.h"'
expect_found src/vsa/vsa.h '#include "tools/support/log_capture.h"'
expect_found src/vsa/lexer_source.h '#include "vsa/parser.h"'
expect_found src/vsa/token.h '#include "vsa/parser.h"'
expect_found src/vsa/value_convert.h '#include "vsa/lexer.h"'

# What only mentions another floor includes nothing of it.
rm -rf "$scratch/src"
cp -r src "$scratch/src"
printf '// See "scene/model/scene.h".\n' >>"$scratch/src/vsa/vsa.h"
found=$(violations "$scratch"; violations .)
if [ -n "$found" ]; then
  printf 'floors: includes of a floor above, or of another room:\n%s\n' "$found"
  failed=1
fi
exit "$failed"
