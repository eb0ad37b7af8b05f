#!/usr/bin/env bash
# scenes.sh VSA JSON_SAME: real scenes read without a warning and dump as NAME.json beside each NAME.vsa says, numbers
# compared by value. The scenes are not part of the tree: they lie beside it, or where VSA_SCENES says.
set -euo pipefail
vsa=$1
json_same=$2
folder=${VSA_SCENES:-$(dirname "$0")/../../../shared/scenes}
if [ ! -d "$folder" ]; then
  echo "scenes: skipped, there is no folder $folder (VSA_SCENES names another)"
  exit 77
fi

failed=0
dump=$(mktemp)
trap 'rm -f "$dump"' EXIT
for text in "$folder"/*.vsa; do
  if "$vsa" check --strict "$text" && "$vsa" dump "$text" >"$dump" && "$json_same" "${text%.vsa}.json" "$dump"; then
    echo "same: $(basename "$text")"
  else
    echo "FAILED: $text"
    failed=1
  fi
done
exit "$failed"
