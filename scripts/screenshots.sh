#!/usr/bin/env bash
# Starts the real program under Xvfb with a throw-away settings store and
# takes screenshots a reviewer can look at:
#   first-run.png      the first-run folder dialog
#   english.png        the main window after the first run (one session)
#   english-grid.png   a workspace of three sessions in a grid
#   toolbox.png        the Toolbox
#   chinese-grid.png   the same workspace with the Chinese interface
#   plot.png           a session plotting a sine and a cosine beside its view
#   reconnect-waiting.png, reconnect-back.png
#                      a session reconnecting by itself: its device
#                      unplugged, then back; the link options in its panel
#   find.png           a session with highlight rules, searching with the find bar
#   find-2x.png        the same at QT_SCALE_FACTOR=2
#   send-tools.png     one session with macros, hex send and a marked typo
#   macro-editor.png   its macro editor
#   sixteen-grid.png   sixteen sessions in a grid, the document named on the
#                      command line (the workspace scrolls, the window fits)
#   sixteen-one.png    one of them given the whole workspace (double-click)
# Fails when a window never appears or the program exits with an error.
# Usage: scripts/screenshots.sh [output folder]   (Linux, X11 tools needed)
set -euo pipefail
cd "$(dirname "$0")/.."
root=$(pwd)
out=$(realpath -m "${1:-build/screenshots}")
mkdir -p "$out"

if [[ -z "${QUORVANE_IN_XVFB:-}" ]]; then
    [[ -x build/src/quorvane ]] || scripts/build.sh >/dev/null
    export QUORVANE_IN_XVFB=1
    exec xvfb-run -a -s "-screen 0 1400x1000x24 -noreset" "$0" "$out"
fi

work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
export HOME=$work/home XDG_CONFIG_HOME=$work/config XDG_DATA_HOME=$work/data
export QT_QPA_PLATFORM=xcb LANG=en_US.UTF-8 QT_LOGGING_RULES="default.debug=false"
mkdir -p "$HOME"
app="$root/build/src/quorvane"
store="$XDG_CONFIG_HOME/VERDANE/Quorvane.conf"

shot() { xwd -root -silent | /usr/bin/convert xwd:- "png:$out/$1"; echo "wrote $out/$1"; }

# Waits for a visible window whose title matches, and puts the pointer on it
# so that typed keys reach it (there is no window manager to give focus).
wait_window() {
    local pattern=$1 i
    id=""
    for i in $(seq 1 100); do
        id=$(xdotool search --onlyvisible --name "$pattern" 2>/dev/null | tail -n 1 || true)
        [[ -n "$id" ]] && break
        kill -0 "$pid" 2>/dev/null || { echo "program exited before '$pattern' appeared" >&2; exit 1; }
        sleep 0.2
    done
    [[ -n "$id" ]] || { echo "window '$pattern' never appeared" >&2; exit 1; }
    eval "$(xdotool getwindowgeometry --shell "$id")"
    xdotool mousemove $((X + WIDTH / 2)) $((Y + HEIGHT / 2))
    xdotool windowfocus --sync "$id" 2>/dev/null || xdotool windowfocus "$id"
    sleep 1
}

quit_app() {
    xdotool key ctrl+q
    local status=0
    wait "$pid" || status=$?
    [[ $status -eq 0 ]] || { echo "program exited with status $status" >&2; exit 1; }
}

# First run: the folder dialog, answered with its default folder.
"$app" & pid=$!
wait_window '^Quorvane$'
shot first-run.png
xdotool key Return
wait_window 'Quorvane'
sleep 1
shot english.png
quit_app

# A workspace of three sessions laid out two per row, reopened at launch.
doc="$work/grid.qvn"
cat > "$doc" <<DOC
[General]
PortNumber=3
ColumnNumber=2
QuickView=false
DOC
for i in 0 1 2; do
    printf '[%s]\nPortName=COM%s\nBaudRate=115200\nDataBits=8\nStopBits=1\nReceiveMsgForamt=2\nLogFontFamily=Monospace\nLogFontSize=10\nSplitterLeft=0\nSplitterRight=100\nLastTargetHost=127.0.0.1\nLastTargetPort=6000\n' \
        "$i" "$((i + 1))" >> "$doc"
done
printf 'RecentFiles=%s\nOpenLastConnection=true\nValueL=2\n' "$doc" >> "$store"

"$app" & pid=$!
wait_window 'grid'
shot english-grid.png
xdotool key alt+t Return
wait_window 'Toolbox'
# Without a window manager a window mapped under the closing menu is not
# painted until it is resized; then show the CRC tab.
xdotool windowsize "$id" 600 460
sleep 1
xdotool windowmove "$id" 60 60
sleep 1
xdotool mousemove --window "$id" 140 22 click 1
sleep 1
shot toolbox.png
xdotool key Escape
sleep 0.5
wait_window 'grid'
quit_app

# The same workspace in Chinese.
sed -i 's/^ValueL=.*/ValueL=1/' "$store"
"$app" & pid=$!
wait_window 'grid'
shot chinese-grid.png
quit_app

# One session with a macro bar, in hex send mode with a typo in the box.
doc="$work/macros.qvn"
cat > "$doc" <<'DOC'
[General]
PortNumber=1
ColumnNumber=1
QuickView=true

[0]
PortName=COM1
BaudRate=115200
DataBits=8
StopBits=1
ReceiveMsgForamt=2
SendMsgFormat=1
DisplaySendMsg=1
LogFontFamily=Monospace
LogFontSize=10
EnterSends=true
SendMacros="[{\"name\":\"Read reg 0\",\"payload\":\"01 03 00 00 00 01\",\"hex\":true,\"checksum\":\"CRC-16/MODBUS\"},{\"name\":\"Version\",\"payload\":\"AT+GMR\",\"lineEnding\":3},{\"name\":\"Poll\",\"payload\":\"AA 55\",\"hex\":true,\"checksum\":\"SUM-8\",\"repeatMs\":1000}]"
DOC
sed -i "s|^RecentFiles=.*|RecentFiles=$doc|; s/^ValueL=.*/ValueL=2/" "$store"
"$app" & pid=$!
wait_window 'macros'
xdotool windowmove "$id" 0 0 windowsize "$id" 1300 900
sleep 1
eval "$(xdotool getwindowgeometry --shell "$id")"
# The send box sits in the lower part of the session, right of the panel.
xdotool mousemove $((X + WIDTH / 2)) $((Y + HEIGHT - 110)) click 1
sleep 0.5
xdotool type --delay 30 '0x7E,0xA5 3G'
sleep 1
shot send-tools.png
# "Macros..." is the first entry of the bar just above the send box.
xdotool mousemove $((X + 300)) $((Y + HEIGHT - 262)) click 1
wait_window '^Macros$'
# Unpainted until resized without a window manager, as the Toolbox above.
xdotool windowsize "$id" 660 400
sleep 1
xdotool windowmove "$id" 200 150
sleep 1
xwd -id "$id" -silent | /usr/bin/convert xwd:- "png:$out/macro-editor.png"
echo "wrote $out/macro-editor.png"
xdotool key Escape
sleep 0.5
wait_window 'macros'
quit_app

# Sixteen sessions, two per row, some of them network sessions, opened as a
# document named on the command line with the last document not restored.
doc16="$work/sixteen.qvn"
printf '[General]\nPortNumber=16\nColumnNumber=2\nQuickView=false\n' > "$doc16"
for i in $(seq 0 15); do
    mode=0
    (( i % 4 == 1 )) && mode=2
    printf '[%s]\nConnMode=%s\nPortName=COM%s\nBaudRate=115200\nDataBits=8\nStopBits=1\nReceiveMsgForamt=2\nLogFontFamily=Monospace\nLogFontSize=10\nSplitterLeft=0\nSplitterRight=100\nLastTargetHost=10.0.0.%s\nLastTargetPort=502\n' \
        "$i" "$mode" "$((i + 1))" "$((i + 1))" >> "$doc16"
done
sed -i 's/^ValueL=.*/ValueL=2/; s/^OpenLastConnection=.*/OpenLastConnection=false/' "$store"
"$app" "$doc16" & pid=$!
wait_window 'sixteen'
shot sixteen-grid.png
# The first session's title bar sits under the menu and tool bars.
xdotool mousemove $((X + 150)) $((Y + 79)) click --repeat 2 --delay 80 1
sleep 1
shot sixteen-one.png
quit_app

# Sessions on a socat pty pair: the live plot beside the receive view, fed
# with a sine and a cosine as "name:value" lines; then a session reconnecting
# by itself, its device unplugged (waiting) and plugged in again, with the
# link options in the panel.
if command -v socat >/dev/null; then
    plug() {
        socat pty,raw,echo=0,link="$work/ttyA" pty,raw,echo=0,link="$work/ttyB" & socat_pid=$!
        for i in $(seq 1 50); do [[ -e "$work/ttyB" ]] && break; sleep 0.1; done
    }
    # Starts the program on a one-session document for the pair: its name,
    # whether the panel shows, and the session's further keys.
    open_on_pair() {
        doc="$work/$1.qvn"
        printf '[General]\nPortNumber=1\nColumnNumber=1\nQuickView=%s\n[0]\nPortName=%s\nBaudRate=115200\nDataBits=8\nStopBits=1\nReceiveMsgForamt=2\nLogFontFamily=Monospace\nLogFontSize=10\n%b' \
            "$2" "$work/ttyA" "$3" > "$doc"
        sed -i "s|^RecentFiles=.*|RecentFiles=$doc|; s/^OpenLastConnection=.*/OpenLastConnection=true/" "$store"
        "$app" & pid=$!
        wait_window "$1"
        xdotool windowmove "$id" 0 0 windowsize "$id" 1300 800
    }

    plug
    open_on_pair plot false 'SplitterLeft=0\nSplitterRight=100\nPlotVisible=true\nPlotWindow=600\n'
    awk 'BEGIN { for (i = 0; i < 800; i++) printf "sin:%.4f,cos:%.4f\r\n", sin(i / 40), cos(i / 40) * 0.5 }' > "$work/ttyB"
    sleep 2
    shot plot.png
    quit_app

    # Highlight rules ("error" red, "warn" amber, "OK" green matches only)
    # and the find bar looking for "timeout", at normal size and doubled.
    doc="$work/find.qvn"
    printf '[General]\nPortNumber=1\nColumnNumber=1\nQuickView=true\n[0]\nPortName=%s\nBaudRate=115200\nDataBits=8\nStopBits=1\nReceiveMsgForamt=2\nLogFontFamily=Monospace\nLogFontSize=10\n' \
        "$work/ttyA" > "$doc"
    cat >> "$doc" <<'DOC'
HighlightRules="[{\"pattern\":\"error\",\"colour\":\"#d02020\"},{\"pattern\":\"warn\",\"colour\":\"#c88000\"},{\"pattern\":\"OK\",\"matchCase\":true,\"wholeLine\":false,\"colour\":\"#209030\"}]"
DOC
    sed -i "s|^RecentFiles=.*|RecentFiles=$doc|" "$store"
    for scale in 1 2; do
        QT_SCALE_FACTOR=$scale "$app" & pid=$!
        wait_window 'find'
        xdotool windowmove "$id" 0 0 windowsize "$id" 1300 900
        awk 'BEGIN { for (i = 0; i < 120; i++) {
            s = sprintf("12:%02d:%02d", i / 60, i % 60)
            if (i % 17 == 5) printf "%s error: sensor %d timeout\r\n", s, i % 4
            else if (i % 11 == 3) printf "%s warn: battery %d%%\r\n", s, 40 - i / 4
            else printf "%s temp=%.1f hum=%d%% OK\r\n", s, 20 + (i % 9) / 3, 40 + i % 7 } }' > "$work/ttyB"
        sleep 2
        xdotool key ctrl+f
        sleep 0.5
        xdotool type --delay 30 'timeout'
        xdotool key Return Return
        sleep 1
        [[ $scale == 1 ]] && shot find.png || shot find-2x.png
        quit_app
    done
    kill "$socat_pid"
    wait "$socat_pid" 2>/dev/null || true

    plug
    open_on_pair reconnect true 'AutoReconnect=true\nBreakDuration=100\n'
    sleep 1
    printf 'boot: ok\r\n' > "$work/ttyB"
    sleep 1
    kill "$socat_pid"
    wait "$socat_pid" 2>/dev/null || true
    sleep 1.5
    shot reconnect-waiting.png
    plug
    sleep 2.5
    printf 'boot: again\r\n' > "$work/ttyB"
    sleep 1
    shot reconnect-back.png
    quit_app
    kill "$socat_pid"
fi
