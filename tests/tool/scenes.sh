#!/usr/bin/env bash
# scenes.sh VSA JSON_SAME: reads real scenes. Each NAME.vsa must be read without messages, and its dump must equal
# NAME.json. Its scene is then written by `vsa convert` in two forms and read again, with the same outcome. The scenes
# are not part of the repository: they are in ../shared/scenes or in the folder VSA_SCENES.
set -euo pipefail
vsa=$1
json_same=$2
folder=${VSA_SCENES:-$(dirname "$0")/../../../shared/scenes}
if [ ! -d "$folder" ]; then
  echo "scenes: skipped, there is no folder $folder (set VSA_SCENES)"
  exit 77
fi

failed=0
dump=$(mktemp)
again=$(mktemp)
trap 'rm -f "$dump" "$again"' EXIT

# same_again TEXT OPTION...: writes the scene, and compares the dump of what was written with "$dump". Bytes that are no
# UTF-8, which the text has as escape sequences, are written as they are.
same_again() {
  "$vsa" convert "$@" -o "$again" && "$vsa" check --strict --ignore not-utf-8 "$again" && "$vsa" dump "$again" | cmp - "$dump"
}

for text in "$folder"/*.vsa; do
  if "$vsa" check --strict "$text" && "$vsa" dump "$text" >"$dump" && "$json_same" "${text%.vsa}.json" "$dump" &&
    same_again "$text" && same_again "$text" --compress --full-paths --links-last; then
    echo "same: $(basename "$text")"
  else
    echo "FAILED: $text"
    failed=1
  fi
done
exit "$failed"
