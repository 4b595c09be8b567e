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
