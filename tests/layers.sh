#!/usr/bin/env bash
# layers.sh: checks every #include of src/ and include/ against the table below. If they all agree
# with it, tests the check itself on a copy of the tree with one forbidden include at a time.
set -euo pipefail
cd "$(dirname "$0")/.."

# One row for each folder: the folder, then the other folders that it may include.
layers() {
  cat <<'ROWS'
include/vsa/foundation
include/vsa/diagnostics      include/vsa/foundation
include/vsa/scene            include/vsa/foundation
include/vsa/model            include/vsa/foundation include/vsa/scene
include/vsa/values           include/vsa/foundation include/vsa/scene
include/vsa/reading          include/vsa/foundation include/vsa/diagnostics include/vsa/scene
include/vsa                  include/vsa/foundation include/vsa/diagnostics include/vsa/scene include/vsa/model include/vsa/values include/vsa/reading
src/foundation/base          include/vsa/foundation
src/foundation/numbers       include/vsa/foundation src/foundation/base
src/foundation/containers    include/vsa/foundation src/foundation/base
src/foundation/text          include/vsa/foundation src/foundation/base src/foundation/numbers src/foundation/containers
src/foundation/compression   include/vsa/foundation include/vsa/diagnostics src/foundation/base src/foundation/containers
src/foundation/io            include/vsa/foundation src/foundation/base
src/diagnostics              include/vsa/foundation include/vsa/diagnostics src/foundation/base src/foundation/io
src/scene                    include/vsa/foundation include/vsa/scene src/foundation/base src/foundation/text
src/scene/model/storage      include/vsa/foundation src/foundation/base src/foundation/containers src/foundation/text
src/scene/model              include/vsa/foundation include/vsa/diagnostics include/vsa/scene include/vsa/model src/foundation/base src/foundation/containers src/diagnostics src/scene src/scene/model/storage
src/vsa/lex                  include/vsa/foundation include/vsa/diagnostics src/diagnostics src/foundation/base src/foundation/io src/foundation/text
src/vsa/apply                include/vsa/foundation include/vsa/diagnostics include/vsa/scene src/diagnostics src/foundation/base src/foundation/numbers src/scene src/vsa/lex
src/vsa/apply/links          include/vsa/foundation include/vsa/diagnostics include/vsa/scene src/diagnostics src/foundation/base src/foundation/containers src/foundation/text src/scene src/vsa/apply
src/vsa/apply/values         include/vsa/foundation include/vsa/diagnostics include/vsa/scene src/diagnostics src/foundation/containers src/foundation/text src/scene src/vsa/apply
src/vsa                      include/vsa include/vsa/foundation include/vsa/diagnostics include/vsa/scene src/diagnostics src/foundation/base src/foundation/compression src/foundation/containers src/foundation/numbers src/foundation/text src/scene src/vsa/lex src/vsa/apply src/vsa/apply/links src/vsa/apply/values
src/api                      include/vsa include/vsa/values include/vsa/foundation include/vsa/diagnostics include/vsa/scene include/vsa/model src/diagnostics src/foundation/base src/foundation/io src/foundation/text src/scene src/scene/model src/vsa
src/api/c                    include/vsa include/vsa/values
src/api/types                include/vsa include/vsa/reading include/vsa/foundation include/vsa/scene include/vsa/values src/foundation/base src/foundation/text
src/api/reading/text         include/vsa include/vsa/reading include/vsa/foundation src/foundation/io src/vsa/apply src/vsa/lex
src/api/reading/source_range include/vsa include/vsa/reading include/vsa/foundation include/vsa/diagnostics include/vsa/scene src/api/reading/text src/vsa src/vsa/lex
src/api/reading/outcome      include/vsa include/vsa/reading include/vsa/foundation include/vsa/diagnostics src/api/reading/text src/api/reading/source_range src/diagnostics src/vsa src/vsa/apply
src/api/reading              include/vsa include/vsa/reading include/vsa/foundation include/vsa/diagnostics include/vsa/scene include/vsa/model src/diagnostics src/api/reading/outcome src/api/reading/text src/api/reading/source_range src/foundation/io src/vsa src/vsa/apply src/vsa/lex
src/write/text               include/vsa include/vsa/foundation include/vsa/scene include/vsa/model src/foundation/base src/foundation/compression src/foundation/numbers src/foundation/text
src/write/walk               include/vsa include/vsa/foundation include/vsa/scene include/vsa/model src/scene
src/write                    include/vsa include/vsa/foundation include/vsa/scene include/vsa/model src/foundation/base src/foundation/text src/scene src/write/text src/write/walk
src/syntax                   include/vsa include/vsa/reading include/vsa/foundation src/foundation/base src/foundation/text src/vsa/lex
ROWS
}

# folder_of NAME: prints the folder of an included file, or nothing for a header of the standard library or the system.
folder_of() {
  case $1 in
    \<vsa/*) set -- "include/${1#<}" ;;
    \"tools/* | \"tests/* | \"bench/* | \"fuzz/* | \"examples/*) set -- "${1#\"}" ;;
    \"*) set -- "src/${1#\"}" ;;
    *) return ;;
  esac
  set -- "${1%/*}"
  printf '%s' "${1//\/..\//\/}"
}

# violations ROOT: prints every forbidden include in ROOT, as FILE: NAME.
violations() {
  local root=$1 folder allowed file name
  while read -r folder allowed; do
    while IFS=: read -r file name; do
      local to
      to=$(folder_of "$name")
      case " $folder $allowed " in
        *" $to "*) ;;
        *) [ -z "$to" ] || printf '%s: %s\n' "$file" "$name" ;;
      esac
    done < <(cd "$root" && find "$folder" -maxdepth 1 \( -name '*.h' -o -name '*.cpp' \) -exec \
      grep -HoE '^[[:space:]]*#[[:space:]]*include[[:space:]]*["<][^">]+' {} + |
      sed -E 's/:[[:space:]]*#[[:space:]]*include[[:space:]]*/:/')
  done < <(layers)
}

failed=0
complain() {
  printf 'layers: %s\n' "$*"
  failed=1
}

scratch=$(mktemp -d)
trap 'rm -rf "$scratch"' EXIT
cp -r src include "$scratch"

# expect_found FILE LINE NAME: adds the line to the file, and expects that only that include is reported.
expect_found() {
  cp "$1" "$scratch/before"
  printf '%s\n' "$2" >>"$scratch/$1"
  local found
  found=$(violations "$scratch")
  [ "$found" = "$1: $3" ] || complain "$1 with $2: found '$found'"
  cp "$scratch/before" "$scratch/$1"
}

found=$(violations .)
[ -z "$found" ] || complain "includes that the table does not allow:"$'\n'"$found"

# Each folder must have a row.
while read -r folder; do
  layers | grep -q "^$folder\( \|\$\)" || complain "no row for $folder"
done < <(find src include -name '*.h' -o -name '*.cpp' | sed 's|/[^/]*$||' | sort -u)

if [ "$failed" -eq 0 ]; then
  expect_found include/vsa/foundation/string.h '#include <vsa/scene/attr_type.h>' '<vsa/scene/attr_type.h'
  expect_found src/foundation/io/log.cpp '#include <vsa/parse.h>' '<vsa/parse.h'
  expect_found include/vsa/scene/attr_data.h '# include "vsa/lex/token.h"' '"vsa/lex/token.h'
  expect_found src/scene/model/node.cpp '#include "vsa/parser.h"' '"vsa/parser.h'
  expect_found include/vsa/scene/scene_interface.h '#include <vsa/model/scene.h>' '<vsa/model/scene.h'
  expect_found src/vsa/parser.cpp '  #include <vsa/model/scene.h>' '<vsa/model/scene.h'
  expect_found src/vsa/parser.cpp '#include "tools/scene_text/read_outcome.h"' '"tools/scene_text/read_outcome.h'
  expect_found src/vsa/lex/token.h '#include "vsa/parser.h"' '"vsa/parser.h'
  expect_found src/vsa/apply/values/value_convert.h '#include "vsa/parser.h"' '"vsa/parser.h'
  # An include in a comment is not an include.
  printf '// See #include <vsa/model/scene.h>.\n' >>"$scratch/include/vsa/parse.h"
  found=$(violations "$scratch")
  [ -z "$found" ] || complain "a comment was taken for an include: $found"
fi
exit "$failed"
