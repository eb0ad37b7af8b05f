#!/usr/bin/env bash
# history_test.sh: tests tools/dev/history with repositories whose commits have given subjects.
set -euo pipefail
history=$(cd "$(dirname "$0")/../.." && pwd)/tools/dev/history
scratch=$(mktemp -d)
trap 'rm -rf "$scratch"' EXIT
repository=$scratch/repository
failed=0
unset GIT_DIR GIT_WORK_TREE GIT_INDEX_FILE # a git hook sets them

# commit SUBJECT [DATE]: adds an empty commit to the repository.
commit() {
  GIT_AUTHOR_DATE=${2:-2030-01-01T00:00:00Z} GIT_COMMITTER_DATE=${2:-2030-01-01T00:00:00Z} \
    git -C "$repository" -c user.name=test -c user.email=test -c commit.gpgsign=false \
    commit --quiet --allow-empty --message "$1"
}

new_repository() {
  rm -rf "$repository"
  git init --quiet "$repository"
}

# expect STATUS TEXT [CHECKOUT]: runs the check, and expects that exit status and an output that contains the text.
expect() {
  local said status=0
  said=$("$history" "${3:-$repository}") || status=$?
  if [ "$status" -ne "$1" ] || [[ $said != *"$2"* ]]; then
    printf 'expected status %s and "%s", got status %s and:\n%s\n\n' "$1" "$2" "$status" "$said"
    failed=1
  fi
}

# in_order SUBJECT and out_of_order SUBJECT FAULT: test a repository that has only a commit with that subject.
in_order() {
  new_repository
  commit "$1"
  expect 0 '1 subjects checked'
}
out_of_order() {
  new_repository
  commit "$1"
  expect 1 "$1: $2"
}

x62=$(printf 'x%.0s' {1..62})
in_order 'lexer: keep quotes in string tokens'
in_order 'scene, reader: hold less for each node'
in_order 'number lists: read 1.5 of 3 numbers at a time'
in_order 'tools/dev: add a check of subjects'
in_order "lexer: $(printf 'ä%.0s' {1..65})" # 72 characters in 137 bytes
out_of_order "lexer: x$(printf 'ä%.0s' {1..65})" '73 characters, more than 72'
out_of_order "lexer: xxxx$x62" '73 characters, more than 72'
out_of_order 'Keep quotes in string tokens' "not of the form 'area: what changed'"
out_of_order 'Lexer: keep quotes' "not of the form 'area: what changed'"
out_of_order 'lexer:keep quotes' "not of the form 'area: what changed'"
out_of_order 'lexer:  keep quotes' "not of the form 'area: what changed'"
out_of_order ': keep quotes' "not of the form 'area: what changed'"
out_of_order 'the lexer now keeps the quotes of tokens: they were lost' "not of the form 'area: what changed'"
out_of_order 'lexer: keep quotes; drop blanks' 'has a semicolon'
out_of_order 'lexer: keep quotes.' 'ends in a full stop'
out_of_order 'fixup! lexer: keep quotes' "not of the form 'area: what changed'"

# The check begins after the last tag.
new_repository
commit 'Before the tag'
git -C "$repository" tag v1
expect 0 '0 subjects checked (since v1)'
commit 'lexer: keep quotes'
expect 0 '1 subjects checked (since v1)'
commit 'After the tag'
expect 1 'After the tag: not of the form'

# Without a tag, the check begins at a date.
new_repository
commit 'Long ago' 2026-11-22T03:59:59Z
commit 'lexer: keep quotes' 2026-11-22T04:00:00Z
expect 0 '1 subjects checked (since 2026-11-22T04:00:00Z)'
commit 'Later' 2026-11-22T04:00:01Z
expect 1 'Later: not of the form'

# The subject of a merge is not checked, because git chooses it.
new_repository
commit 'lexer: keep quotes'
git -C "$repository" checkout --quiet -b other
commit 'parser: keep blanks'
git -C "$repository" checkout --quiet -
git -C "$repository" -c user.name=test -c user.email=test -c commit.gpgsign=false merge --quiet --no-ff \
  --message 'Merge other' other
expect 0 '2 subjects checked'

# In a shallow clone, some of the commits are missing.
git clone --quiet --depth 1 "file://$repository" "$scratch/shallow"
commit 'parser: keep more blanks'
rm -rf "$scratch/shallow"
git clone --quiet --depth 1 "file://$repository" "$scratch/shallow"
expect 0 '1 subjects checked (since 2026-11-22T04:00:00Z, as far as this shallow clone goes)' "$scratch/shallow"

# A tree that was unpacked from an archive has no commits, even inside another repository.
mkdir -p "$repository/unpacked" "$scratch/unpacked"
expect 0 'no subjects are checked: this checkout is no git repository' "$scratch/unpacked"
expect 0 'no subjects are checked: this checkout is no git repository' "$repository/unpacked"
new_repository
expect 0 'no subjects are checked: there is no commit yet'
exit "$failed"
