#!/usr/bin/env bash
# Tests that logs and dumps do not depend on the compiler, its options, the locale or the run.
#
#   same_everywhere.sh                  builds with each compiler and option below and compares; takes minutes
#   same_everywhere.sh --quick PROGRAM  runs the program dump_under_locale twice, and with each locale
#
# localedef creates the locales in a temporary folder. If that fails, the complete test fails. With
# --quick, the test is then skipped after the comparison of two runs.
set -euo pipefail
here=$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)
root=$(cd "$here/../.." && pwd)
scratch=$(mktemp -d)
trap 'rm -rf "$scratch"' EXIT
locales=(de_DE.UTF-8 tr_TR.UTF-8)

# One row for each build: name, compiler, options.
builds() {
  cat <<'ROWS'
gcc-O0 g++ -O0
gcc-O3 g++ -O3
clang-O0 clang++ -O0
clang-O3 clang++ -O3
gcc-assertions g++ -O1 -D_GLIBCXX_ASSERTIONS
gcc-unsigned-char g++ -O2 -funsigned-char
clang-unsigned-char clang++ -O2 -funsigned-char
ROWS
}

texts() { (cd "$root" && find tests examples -name '*.vsa' | LC_ALL=C sort); }

# dump PROGRAM LOCALE: prints the outcomes of all texts.
dump() {
  (cd "$root" && texts | xargs -d '\n' "$1" "$2")
}

make_locales() {
  command -v localedef >/dev/null || return 1
  local each
  for each in "${locales[@]}"; do
    localedef -c -i "${each%.*}" -f UTF-8 "$scratch/$each" >/dev/null 2>&1 || [ -d "$scratch/$each" ] || return 1
  done
  export LOCPATH=$scratch
}

# compare NAME: compares the current dump with the first one, and prints NAME with the result.
compare() {
  if cmp -s "$scratch/first" "$scratch/dump"; then
    printf '%-32s same\n' "$1"
  else
    printf '%-32s DIFFERS\n' "$1"
    diff "$scratch/first" "$scratch/dump" | head -20 || true
    status=1
  fi
}

check_locales() {
  local program=$1 name=$2 each
  for each in "${locales[@]}"; do
    dump "$program" "$each" >"$scratch/dump"
    compare "$name $each"
  done
}

# build NAME COMPILER OPTION...: builds the program dump_under_locale with that compiler and these options.
build() {
  local name=$1 compiler=$2
  shift 2
  local compile=("$compiler" -std=c++20 -I"$root/include" -I"$root/src" -I"$root" "$@")
  mkdir "$scratch/$name"
  find "$root/src" "$root/tools/scene_text" -name '*.cpp' -print0 |
    (cd "$scratch/$name" && xargs -0 -P "$(nproc)" -n 4 "${compile[@]}" -c)
  "${compile[@]}" "$here/dump_under_locale.cpp" "$scratch/$name"/*.o -o "$scratch/$name.program"
}

status=0
if [ "${1:-}" = --quick ]; then
  program=$2
  dump "$program" C >"$scratch/first"
  dump "$program" C >"$scratch/dump"
  compare 'run to run'
  [ "$status" -eq 0 ] || exit 1
  make_locales || exit 77
  check_locales "$program" 'locale'
  exit "$status"
fi

make_locales || { echo 'no locales: install the package locales' >&2; exit 1; }
while read -r name compiler options; do
  command -v "$compiler" >/dev/null || { printf '%-32s no %s\n' "$name" "$compiler"; status=1; continue; }
  # shellcheck disable=SC2086 # several words
  build "$name" "$compiler" $options
  dump "$scratch/$name.program" C >"$scratch/dump"
  [ -e "$scratch/first" ] || cp "$scratch/dump" "$scratch/first"
  compare "$name"
  check_locales "$scratch/$name.program" "$name"
done < <(builds)
exit "$status"
