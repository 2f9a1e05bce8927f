#!/usr/bin/env bash
# The main job from end to end: plays a drawing as a person types it, saves it, reads it back, finds
# it equal, pictures it, and prints it to scale.   tour.sh VEXTOOL OUTPUT-FOLDER
set -euo pipefail
vextool=$1
out=$2
samples=$(dirname "$(readlink -f "$0")")
mkdir -p "$out"

say() { printf '\n== %s\n' "$*"; }

say "making $out/layers.zpl from data/samples/piperack.jsonl"
"$vextool" new "$out/layers.zpl" --from "$samples/piperack.jsonl"

say "playing data/samples/piperack.scr into $out/piperack.zpl"
"$vextool" run "$samples/piperack.scr" -i "$out/layers.zpl" -o "$out/piperack.zpl"
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

say "picturing it: the sheet, and the loop with its valves and the platform"
"$vextool" render "$out/piperack.zpl" -o "$out/piperack.png" --size 1600 1130
"$vextool" render "$out/piperack.zpl" -o "$out/piperack.svg" --size 420 297 --scale 1:1
"$vextool" render "$out/piperack.zpl" -o "$out/loop.png" --size 1600 1100 --window 190 50 410 200
ls -l "$out"/piperack.{png,svg} "$out/loop.png" | awk '{ print $NF ", " $5 " bytes" }'

say "printing it on A3: 100 units are 100 millimetres of paper"
"$vextool" render "$out/piperack.zpl" -o "$out/piperack.pdf" --size 420 297 --scale 1:1
ls -l "$out/piperack.pdf" | awk '{ print $NF ", " $5 " bytes" }'
