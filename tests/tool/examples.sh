#!/usr/bin/env bash
# examples.sh VSA: every text in examples/ checks as is expected of it. An example reads in silence; one that is meant
# to show messages has NAME.log beside it: what `vsa check --strict` writes to standard error, then "exit STATUS".
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
    printf '%s: expected to read in silence\n%s\n' "$text" "$found"
    failed=1
  fi
done
exit "$failed"
