#!/usr/bin/env bash
# headers.sh: compiles each public header alone with g++ and with clang++. A warning is an error. Compiles the header
# for C as C99, too. install.sh tests that these headers are installed, and no others.
set -euo pipefail
root=$(cd "$(dirname "$0")/../.." && pwd)
scratch=$(mktemp -d)
trap 'rm -rf "$scratch"' EXIT
flags=(-fsyntax-only -Wall -Wextra -Wpedantic -Wconversion -Wshadow -Werror "-I$root/include")

# compiles_alone COMPILER HEADER: compiles a source that includes only that header.
compiles_alone() {
  printf '#include <%s>\n' "$2" >"$scratch/header.cpp"
  "$1" -std=c++20 "${flags[@]}" "$scratch/header.cpp" || echo "headers: $2 does not compile alone with $1"
}

# compiles_as_c COMPILER: compiles a source in C99 that includes only the header for C.
compiles_as_c() {
  printf '#include <vsa/vsa_c.h>\n' >"$scratch/header.c"
  "$1" -std=c99 -pedantic "${flags[@]}" "$scratch/header.c" || echo "headers: vsa_c.h does not compile as C with $1"
}

mapfile -t headers < <(cd "$root/include" && find vsa -name '*.h' | LC_ALL=C sort)
[ "${#headers[@]}" -gt 0 ]
problems=$(
  for compiler in g++ clang++; do
    for header in "${headers[@]}"; do compiles_alone "$compiler" "$header"; done
  done
  for compiler in gcc clang; do compiles_as_c "$compiler"; done
)
[ -z "$problems" ] || {
  echo "$problems"
  exit 1
}
