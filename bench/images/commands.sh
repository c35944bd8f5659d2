#!/usr/bin/env bash
# Times whole commands that capture a screen of 3840 by 2160 pixels into a PNG file, each on the
# same pictures under an X server of its own, and prints the fastest of five runs.
set -euo pipefail
cd "$(dirname "$0")/../.."
tools=build/bench/bench/images
runs=5

folder=$(mktemp -d)
trap 'kill "${server:-}" 2>/dev/null || true; rm -rf "$folder"' EXIT
"$tools/image-bench" --save "$folder" 2>/dev/null
exec 3<> <(:)
Xvfb -displayfd 4 -noreset -nolisten tcp -screen 0 3840x2160x24 4>"$folder/display" 2>/dev/null &
server=$!
while [ ! -s "$folder/display" ]; do
    kill -0 "$server"
    read -r -t 0.1 -u 3 || true
done
DISPLAY=:$(cat "$folder/display")
export DISPLAY

# Seconds of the processor and of the clock, and bytes.
measure() {
    local TIMEFORMAT='%U %S %R' out="$folder/capture.png"
    for ((run = 0; run < runs; ++run)); do
        rm -f "$out"
        { time "$@" "$out" >/dev/null 2>&1; } 2>&1
    done | awk '
        NR == 1 || $1 + $2 < cpu { cpu = $1 + $2 }
        NR == 1 || $3 < wall { wall = $3 }
        END { printf "%.3f %.3f ", cpu, wall }'
    stat -c %s "$out"
}

printf '| screen | command | CPU s | wall s | bytes |\n|---|---|---|---|---|\n'
for picture in editor dialogs photograph; do
    hsetroot -full "$folder/$picture.png" >/dev/null
    for command in "$tools/screen-to-png" maim "scrot --overwrite"; do
        # shellcheck disable=SC2086 # The words of the command.
        read -r cpu wall bytes < <(measure $command)
        printf '| %s | %s | %s | %s | %s |\n' "$picture" "$(basename "${command%% *}")" "$cpu" "$wall" "$bytes"
    done
done
