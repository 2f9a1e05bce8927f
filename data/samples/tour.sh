#!/usr/bin/env bash
# The main job from end to end: makes a drawing, saves it, reads it back, finds it equal, and
# pictures it.   tour.sh VEXTOOL OUTPUT-FOLDER
set -euo pipefail
vextool=$1
out=$2
samples=$(dirname "$(readlink -f "$0")")
mkdir -p "$out"

say() { printf '\n== %s\n' "$*"; }

say "making $out/piperack.zpl from data/samples/piperack.jsonl"
"$vextool" new "$out/piperack.zpl" --from "$samples/piperack.jsonl"
"$vextool" info "$out/piperack.zpl" | grep -A 8 -E '^(entities|extents)'

say "reading it back and checking it"
"$vextool" check "$out/piperack.zpl"
"$vextool" dump "$out/piperack.zpl" >"$out/piperack.jsonl"
"$vextool" new "$out/piperack-again.zpl" --from "$out/piperack.jsonl"
"$vextool" dump "$out/piperack-again.zpl" >"$out/piperack-again.jsonl"
# Hard identifiers are drawn anew by each program that makes objects; all else must be the same.
if ! diff <(sed 's/"id":[0-9]*//' "$out/piperack.jsonl") <(sed 's/"id":[0-9]*//' "$out/piperack-again.jsonl"); then
    echo "the drawing did not come back as it was" >&2
    exit 1
fi
echo "every object came back as it was saved"

say "picturing it"
for extension in png pdf svg; do
    "$vextool" render "$out/piperack.zpl" -o "$out/piperack.$extension"
    ls -l "$out/piperack.$extension" | awk '{ print $NF ", " $5 " bytes" }'
done
