#!/usr/bin/env bash
# Renders the icon sources in src/resources/icons/ to the PNG files that the
# resource file embeds (src/resources/resource/). Run after editing an icon.
set -euo pipefail
cd "$(dirname "$0")/../src/resources"

command -v rsvg-convert >/dev/null || { echo "rsvg-convert is not installed" >&2; exit 1; }

# source name -> embedded file name (some keep an upper-case extension)
icons=(
    "new:new.PNG" "save:save.PNG" "log:log.png" "exit:exit.PNG"
    "start:start.PNG" "pause:pause.PNG" "stop:stop.PNG"
    "add_port:add_port.png" "remove_port:remove_port.png" "cleanport:cleanport.png"
    "view-left-open:view-left-open.png" "settings:settings.png"
)

mkdir -p resource
for entry in "${icons[@]}"; do
    rsvg-convert -w 48 -h 48 -o "resource/${entry#*:}" "icons/${entry%%:*}.svg"
done
rsvg-convert -w 256 -h 256 -o resource/logo.png icons/logo.svg

# macOS bundle icon: an .icns container holding PNG renderings, one chunk per
# size (type code, big-endian length including the 8-byte chunk header, data).
be32() {
    local n=$1
    printf "$(printf '\\x%02x\\x%02x\\x%02x\\x%02x' \
        $((n >> 24 & 255)) $((n >> 16 & 255)) $((n >> 8 & 255)) $((n & 255)))"
}
workdir=$(mktemp -d)
trap 'rm -rf "$workdir"' EXIT
chunks=()
for entry in ic07:128 ic08:256 ic09:512 ic10:1024; do
    type=${entry%%:*} size=${entry#*:}
    rsvg-convert -w "$size" -h "$size" -o "$workdir/$type.png" icons/logo.svg
    { printf '%s' "$type"; be32 $(($(wc -c < "$workdir/$type.png") + 8)); cat "$workdir/$type.png"; } \
        > "$workdir/$type.chunk"
    chunks+=("$workdir/$type.chunk")
done
{ printf 'icns'; be32 $(($(cat "${chunks[@]}" | wc -c) + 8)); cat "${chunks[@]}"; } > quorvane.icns
