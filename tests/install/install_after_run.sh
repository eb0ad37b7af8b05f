#!/usr/bin/env bash
# install_after_run.sh: tests that `./dev run` builds everything that `cmake --install` installs, in a copy of the tree
# without a build folder.
set -euo pipefail
root=$(cd "$(dirname "$0")/../.." && pwd)
scratch=$(mktemp -d)
trap 'rm -rf "$scratch"' EXIT
prefix=$scratch/prefix

mkdir "$scratch/tree"
tar -C "$root" --exclude=./build --exclude=./.git -cf - . | tar -C "$scratch/tree" -xf -
cd "$scratch/tree"
./dev run examples/first_light.vsa >"$scratch/scene.json"
grep -q '"result":true' "$scratch/scene.json"
cmake --install build/release --prefix "$prefix"
"$prefix/bin/vsa" dump examples/first_light.vsa | cmp - "$scratch/scene.json"
for installed in include/vsa/vsa.h 'lib*/libvsa.a' 'lib*/libvsa.so' 'lib*/pkgconfig/vsa.pc' \
  'lib*/cmake/vsa/vsa-config.cmake'; do
  [ -n "$(find "$prefix" -path "$prefix/$installed")" ] || {
    echo "$installed is not installed"
    exit 1
  }
done
