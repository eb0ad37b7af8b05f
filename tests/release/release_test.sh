#!/usr/bin/env bash
# release_test.sh: tests that tools/dev/release accepts a repository that can be released, and reports each problem of a
# repository that cannot.
set -euo pipefail
release=$(cd "$(dirname "${BASH_SOURCE[0]}")/../.." && pwd)/tools/dev/release
folder=$(mktemp -d)
trap 'rm -rf "$folder"' EXIT
failed=0

# A git hook that runs this test sets these variables for its own repository.
unset GIT_DIR GIT_WORK_TREE GIT_INDEX_FILE
git_here() { git -C "$folder" -c user.name=test -c user.email=test@example.org "$@" >/dev/null 2>&1; }

# ready: makes a repository that can be released.
ready() {
  rm -rf "$folder"
  mkdir "$folder"
  echo 'project(vsa VERSION 1.2.3 LANGUAGES CXX)' >"$folder/CMakeLists.txt"
  printf '# Changes\n\n## 1.2.3, 22 November 2026\n\n## 1.2.2, 1 May 2026\n' >"$folder/CHANGELOG.md"
  printf '## Reporting a vulnerability\n\nYou get an answer within 90 days.\n' >"$folder/SECURITY.md"
  git_here init -b main
  git_here add .
  git_here commit -m 'all: begin'
}

# expect COUNT WHAT: expects that COUNT checks fail.
expect() {
  local output status=0 count
  output=$("$release" --metadata "$folder") || status=$?
  count=$(grep -c '^FAILS' <<<"$output" || true)
  if [ "$count" -ne "$1" ] || [ "$status" -ne $(($1 > 0)) ]; then
    printf 'release: %s: %s checks fail instead of %s\n%s\n' "$2" "$count" "$1" "$output"
    failed=1
  fi
}

# change WHAT COMMAND...: makes a change in a ready repository and commits it. Expects that one check fails.
change() {
  local what=$1
  ready
  shift
  "$@"
  git_here add .
  git_here commit --allow-empty -m 'all: change'
  expect 1 "$what"
}

ready
expect 0 "a repository that is ready"
change "changes without a date" sed -i 's/1.2.3, .*/1.2.3, not released yet/' "$folder/CHANGELOG.md"
change "changes of another version" sed -i '/1.2.3/d' "$folder/CHANGELOG.md"
change "a tag" git_here tag v1.2.3
change "no time to answer" sed -i 's/90 days/soon/' "$folder/SECURITY.md"
change "another branch" git_here checkout -b other
ready
touch "$folder/new"
expect 1 "a file that is not committed"
exit "$failed"
