#!/usr/bin/env bash
# install.sh BUILD COMPILER: installs the build BUILD into a scratch folder and tests the installed files:
#
# - Headers are only in include/vsa. They are all the public headers and no others (headers.sh compiles them).
# - A host can be built through the CMake package and through pkg-config, each with the static and with the shared
#   library. Its include path begins with its own folders `foundation` and `scene`.
# - Of the namespace zn::korvo_sdk::impl, the shared library exports only the two public entry points.
# - The installed command reads a scene.
set -euo pipefail
build=$1
compiler=$2
here=$(cd "$(dirname "$0")" && pwd)
root=$(cd "$here/../.." && pwd)
scratch=$(mktemp -d)
trap 'rm -rf "$scratch"' EXIT
prefix=$scratch/prefix
warnings=(-Wall -Wextra -Wpedantic -Wconversion -Wshadow -Werror)

failed=0
step() { echo "install: $*"; }
complain() {
  printf 'install: %s\n' "$*"
  failed=1
}

# files_in FOLDER: prints the files in the folder and its subfolders, sorted.
files_in() { (cd "$1" && find . -type f | sed 's|^\./||' | LC_ALL=C sort); }

# headers: prints each installed header in the form in which a host includes it.
headers() { files_in "$prefix/include"; }

check_that_only_public_headers_are_installed() {
  diff -u <(files_in "$root/include") <(headers) || complain "include/ of the tree and of the installation differ"
  local outside
  outside=$(headers | grep -v '^vsa/.*\.h$' || true)
  [ -z "$outside" ] || complain "installed outside include/vsa: $outside"
}

# A public header includes only installed headers, as <vsa/...>, and headers of the standard library.
check_that_no_header_is_internal() {
  local header name found
  while read -r header; do
    if [ -e "$root/src/${header#vsa/}" ] || [ -e "$root/src/$header" ]; then
      complain "$header is a file of src/, too"
    fi
    found=$(grep -nw 'Internal' "$prefix/include/$header" || true)
    [ -z "$found" ] || complain "$header says that it is internal: $found"
    found=$(grep -nE '^ *# *include *"' "$prefix/include/$header" || true)
    [ -z "$found" ] || complain "$header includes by a relative name: $found"
    while read -r name; do
      [ -e "$prefix/include/$name" ] || complain "$header includes <$name>, which is not installed"
    done < <(sed -nE 's/^ *# *include *<(vsa\/[^>]+)>.*/\1/p' "$prefix/include/$header")
  done < <(headers)
}

check_that_it_runs() {
  local found
  found=$("$1" "$here/embed.vsa") || complain "$1 failed"
  [ "$found" = "$(cat "$here/embed.out")" ] || complain "$1 printed: $found"
}

check_through_cmake() {
  local log=$scratch/cmake.log
  {
    cmake -S "$here" -B "$scratch/embed" -DCMAKE_PREFIX_PATH="$prefix" -DCMAKE_CXX_COMPILER="$compiler" &&
      cmake --build "$scratch/embed"
  } >"$log" 2>&1 || {
    cat "$log"
    complain "the host does not build through the CMake package"
    return
  }
  check_that_it_runs "$scratch/embed/embed_vsa"
  check_that_it_runs "$scratch/embed/embed_vsa_shared"
}

# check_with_flags NAME FLAG...: compiles and links the host in one command.
check_with_flags() {
  local program=$scratch/$1
  shift
  "$compiler" -std=c++20 "${warnings[@]}" -I"$here/host" "$here/embed.cpp" "$@" -o "$program" || {
    complain "the host does not build with: $*"
    return
  }
  check_that_it_runs "$program"
}

check_through_pkg_config() {
  local description
  description=$(find "$prefix" -name vsa.pc)
  PKG_CONFIG_PATH=$(dirname "$description")
  export PKG_CONFIG_PATH
  libdir=$(pkg-config --variable=libdir vsa)
  # shellcheck disable=SC2046 # flags are words
  check_with_flags by_pkg_config $(pkg-config --cflags --libs vsa) -Wl,-rpath,"$libdir"
  # shellcheck disable=SC2046
  check_with_flags by_archive $(pkg-config --cflags vsa) "$libdir/libvsa.a"
}

# Of the namespace zn::korvo_sdk::impl, which is the reader, only the two entry points are public.
# Names of other namespaces are not checked.
check_exported_names() {
  local internal
  internal=$(nm -D --defined-only --demangle "$libdir/libvsa.so" | sed 's/^[0-9a-f]* *[A-Za-z] //' |
    grep 'zn::korvo_sdk::impl::' | grep -vE 'impl::(parseString|parseVsa)\(' || true)
  [ -z "$internal" ] || complain "internal names are exported: $internal"
}

cmake --install "$build" --prefix "$prefix" >"$scratch/install.log"

step "the command runs"
"$prefix/bin/vsa" --version
"$prefix/bin/vsa" check --strict "$here/embed.vsa"
step "public headers only"
check_that_only_public_headers_are_installed
check_that_no_header_is_internal
step "through the CMake package"
check_through_cmake
step "through pkg-config"
check_through_pkg_config
step "the shared library exports public names only"
check_exported_names
exit "$failed"
