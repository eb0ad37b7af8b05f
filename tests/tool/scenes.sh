#!/usr/bin/env bash
# scenes.sh VSA JSON_SAME: reads real scenes. Each NAME.vsa must be read without messages, and its dump must equal
# NAME.json. Then `vsa convert` writes the scene in two forms, and reading these must give the same result. The scenes
# are not a part of the repository. They are in ../shared/scenes or in the folder VSA_SCENES.
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

# same_again TEXT OPTION...: writes the scene, reads it again, and compares its dump with "$dump". Bytes that are not
# UTF-8 may be escape sequences in the text, but they are written as bytes.
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
