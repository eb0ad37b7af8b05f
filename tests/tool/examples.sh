#!/usr/bin/env bash
# examples.sh VSA: runs `vsa check --strict` on every text in examples/. If a text NAME.vsa causes messages, the file
# NAME.log contains the expected output and a last line "exit STATUS". All other texts must cause no message.
set -euo pipefail
vsa=$1
cd "$(dirname "$0")/../.."
shopt -s nullglob
texts=(examples/*.vsa)
if [ ${#texts[@]} -eq 0 ]; then
  echo "examples: there are none"
  exit 77
fi

failed=0
for text in "${texts[@]}"; do
  expected=${text%.vsa}.log
  status=0
  if [ -f "$expected" ]; then
    found=$("$vsa" check --strict "$text" 2>&1) || status=$?
    diff -u "$expected" <(printf '%s\nexit %d\n' "$found" "$status") && echo "as expected: $text" || failed=1
  elif found=$("$vsa" check --strict "$text" 2>&1); then
    echo "clean: $text"
  else
    printf '%s: expected no messages\n%s\n' "$text" "$found"
    failed=1
  fi
done
exit "$failed"
