#!/usr/bin/env bash
# run_program.sh EXPECTED PROGRAM [TEXT...]: runs an example program over each text of this folder by itself, and over
# TEXT... together, and compares what it prints with the file EXPECTED. With VSA_ACCEPT=1 rewrites that file instead.
# A file that is not there and a text that begins with a character no token holds come last.
# Warnings about links follow each other in the order of addresses, so messages are compared as a set.
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
