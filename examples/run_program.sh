#!/usr/bin/env bash
# run_program.sh EXPECTED PROGRAM [TEXT...]: runs an example program on each text of this folder, on TEXT... together,
# on a missing file, and on a text that starts with an invalid character. Compares the output with the file EXPECTED;
# with VSA_ACCEPT=1 rewrites that file instead. Sorts the messages, because the order of warnings about links depends on
# addresses.
set -euo pipefail
cd "$(dirname "$0")"
expected=$1
program=$2
shift 2
messages=$(mktemp)
trap 'rm -f "$messages"' EXIT

run() {
  local status=0
  printf '== %s\n' "$*"
  "$program" "$@" 2>"$messages" || status=$?
  LC_ALL=C sort "$messages"
  printf 'exit %d\n' "$status"
}

run_all() {
  for text in *.vsa; do run "$text"; done
  if [ $# -gt 0 ]; then run "$@"; fi
  run there_is_no_such_text
  run /dev/stdin <<<'} no statement begins like this'
}

if [ "${VSA_ACCEPT:-0}" = 1 ]; then
  run_all "$@" >"$expected"
else
  diff -u "$expected" <(run_all "$@")
fi
