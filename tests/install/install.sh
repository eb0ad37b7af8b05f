#!/usr/bin/env bash
# install.sh BUILD COMPILER: installs into a scratch folder and builds the five-line embedding against what lies there:
# through the CMake package and through pkg-config, each with the static and with the shared library. Every installed
# header must compile on its own, and the shared library must export public names alone.
set -euo pipefail
build=$1
compiler=$2
here=$(cd "$(dirname "$0")" && pwd)
scratch=$(mktemp -d)
trap 'rm -rf "$scratch"' EXIT
prefix=$scratch/prefix

cmake --install "$build" --prefix "$prefix" >"$scratch/install.log"

step() { echo "install: $*"; }

expect_embedding_works() {
  local found
  found=$("$@")
  [ "$found" = "$(cat "$here/embed.out")" ] || {
    printf '%s printed:\n%s\n' "$*" "$found"
    exit 1
  }
}

step "the command runs"
"$prefix/bin/vsa" --version
"$prefix/bin/vsa" check --strict "$here/embed.vsa"

step "through the CMake package"
cmake -S "$here" -B "$scratch/embed" -DCMAKE_PREFIX_PATH="$prefix" -DCMAKE_CXX_COMPILER="$compiler" >"$scratch/cmake.log"
cmake --build "$scratch/embed" >>"$scratch/cmake.log" || {
  cat "$scratch/cmake.log"
  exit 1
}
expect_embedding_works "$scratch/embed/embed_static" "$here/embed.vsa"
expect_embedding_works "$scratch/embed/embed_shared" "$here/embed.vsa"

step "through pkg-config"
pc=$(find "$prefix" -name vsa.pc)
PKG_CONFIG_PATH=$(dirname "$pc")
export PKG_CONFIG_PATH
libdir=$(pkg-config --variable=libdir vsa)
# shellcheck disable=SC2046 # flags are words
"$compiler" -std=c++20 "$here/embed.cpp" $(pkg-config --cflags --libs vsa) -Wl,-rpath,"$libdir" -o "$scratch/by_pkg_config"
expect_embedding_works "$scratch/by_pkg_config" "$here/embed.vsa"
# shellcheck disable=SC2046
"$compiler" -std=c++20 "$here/embed.cpp" $(pkg-config --cflags vsa) "$libdir/libvsa.a" -o "$scratch/by_archive"
expect_embedding_works "$scratch/by_archive" "$here/embed.vsa"

step "every header on its own, with all warnings"
while read -r header; do
  printf '#include "%s"\n' "$header"  >"$scratch/header.cpp"
  # shellcheck disable=SC2046
  "$compiler" -std=c++20 -fsyntax-only -Wall -Wextra -Wpedantic -Werror $(pkg-config --cflags vsa) "$scratch/header.cpp"
done < <(cd "$prefix/include/vsa" && find . -name '*.h' | sed 's|^\./||' | sort)

step "the shared library exports public names alone"
internal=$(nm -D --defined-only --demangle "$libdir/libvsa.so" | grep -E 'VsaParser|Lexer|AssignInfo' || true)
[ -z "$internal" ] || {
  printf 'internal names are exported:\n%s\n' "$internal"
  exit 1
}
