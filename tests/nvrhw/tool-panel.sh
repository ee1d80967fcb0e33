#!/bin/bash
# Plays the user of `nvrhw panel` in a terminal and reads its screen.
# The program is in NVRHW_TOOL, a board in NVRHW_SAMPLE_BOARD.
set -eu
export LC_ALL=C.UTF-8
program=$NVRHW_TOOL # may have an emulator before it
work=$(mktemp -d)
board=$work/board
lines=$board/dev/gpiodrv
t() { tmux -u -S "$work/socket" -f /dev/null "$@"; }
trap 't kill-server 2>/dev/null || true; rm -rf "$work"' EXIT

cp -R "$NVRHW_SAMPLE_BOARD" "$board"
sed -i 's/^model.*/model = Gerät 中文 \x1b[31m/' "$board/mnt/mtd/code/factory_setting/machineinfo.ini"
t new-session -d -x 80 -y 24 "PS1='$ ' LC_ALL=C sh"

fail() {
    echo "FAILED: $*"
    t capture-pane -p
    exit 1
}
# Each waits until what it asks for has come about.
until_true() {
    for ((i = 0; i < 400; i++)); do
        if "$@"; then return; fi
        sleep 0.05
    done
    fail "$*"
}
has_row() { t capture-pane -p | grep -qE -- "$1"; }
sees() { until_true has_row "$1"; }
keys() { t send-keys "$@"; }
size() { t resize-window -x "$1" -y "$2"; }

# start [VARIABLE=VALUE...]: runs the panel from a shell that tells its status and its process.
start() {
    keys "clear; stty -g >$work/before; sh -c 'echo \$\$ >$work/pid; exec env $* $program panel" \
        " --board $board'; s=\$?; stty -g >$work/after; echo ended \$s" Enter
}
opened() { start "$@" && sees ' q quit'; }
# The shell is back with this status, and the terminal is as it was.
ended() {
    sees "^ended $1"
    cmp "$work/before" "$work/after" || fail "other settings of the terminal"
    [ "$(t display-message -p '#{alternate_on} #{cursor_flag}')" = "0 1" ] || fail "not restored"
    if has_row INPUTS; then fail "the picture is left behind"; fi
}

echo "not on a terminal"
if $program panel --board "$board" </dev/null 2>"$work/error"; then fail "status 0"; fi
grep -q 'needs a terminal' "$work/error"
start TERM=dumb
sees 'type "dumb" cannot show the panel'
ended 1
echo "first screen"
opened
sees '^ nvrhw panel  Gerät 中文 �\[31m +0 alarms +0 outputs on'
sees '^▸ *1 front door +0/0 +0 +○ normal +2 yard gate +0/1 +0 +○ normal'
sees '^─ OUTPUTS line .* left .* mode'
sees '^ *4 siren +2/3 +0 +○ normal +steady'
echo "inputs"
echo 1 >"$lines/0/0"
sees '^▸ *1 front door +0/0 +1 +● ALARM'
sees ' ALARM +input 1  front door$'
sees ' 1 alarm '
keys Right Space Left Space
sees ' normal +input 1  front door$'
sees ' 2 yard gate +0/1 +1 +● ALARM'
[ "$(cat "$lines/0/0" "$lines/0/1" | xargs)" = "0 1" ] || fail "not flipped"
mv "$lines/1" "$work/bank"
ln -s /dev/null "$lines/1" # a character device stands for a chip
sees ' 9 +1/0 +- +\? unreadable'
sees ' log +group 1, bit 7 cannot be read'
keys Down Down Down Down Space
sees 'input 9 is a line of a real GPIO chip'
rm "$lines/1"
mv "$work/bank" "$lines/1"
sees '▸ *9 +1/0 +1 +○ normal'
keys t
sees 'this key is for an output'
echo "outputs"
keys Tab o abc Enter
sees 'a time-out is such as 500ms'
keys BSpace BSpace BSpace 3s Enter
sees '▸ *1 +2/0 +0 +○ normal +steady for 3 s'
keys t
sees '▸ *1 +2/0 +1 +● active +[0-2]\.[0-9] s'
sees '▸ *1 +2/0 +0 +○ normal +steady for 3 s'
keys m f 9 Enter t
sees '▸ *1 +2/0 +[01] +[●○] flashing +[0-2]\.[0-9] s +flash 9/s for 3 s'
sees '▸ *1 +2/0 +0 +○ normal +flash 9/s'
keys o 0 Enter t Down t Down i t
sees ' 1 +2/0 +[01] +[●○] flashing +no end +flash 9/s$'
sees '▸ *3 +2/2 +1 +● active +no end +steady, inverted'
keys c
sees '▸ *3 +2/2 +0 +○ normal'
echo "sizes"
size 60 16
sees '^▸ *3 +2/2 +0 +○ normal +steady'
size 40 10 # the smallest
sees '^▸ *3 .* 0 +○ normal'
sees '^ \? help  q quit  t trigger'
keys '?'
sees 'Tab +from the inputs'
for ((i = 0; i < 9; i++)); do keys NPage; done
sees 'leaves out columns'
keys Escape
sees '^▸ *3 .* 0 +○ normal' # an escape may be the begin of a key, so it takes a moment
size 38 9
sees 'needs 40 columns and 10'
keys t # not while it cannot be seen
size 120 40
sees '^ *16 +1/7 +0 +○ normal$'
sees '▸ *3 +2/2 +0 +○ normal'
size 80 24
echo "ways out"
for _ in {1..5}; do
    keys '?'
    sees 'next mode: steady, flash'
    keys Escape
    sees '▸ *3 +2/2 +0 +○ normal'
    keys C-z # while a picture is being drawn
    ended 147 # stopped: the shell goes on
    keys 'clear; fg; echo ended $?' Enter
    sees '▸ *3 +2/2 +0 +○ normal'
done
keys q
sees '^nvrhw: output 1 was switched off with the panel'
sees '^nvrhw: output 2 stays on'
ended 0
[ "$(cat "$lines/2/0" "$lines/2/1" | xargs)" = "0 1" ] || fail "wrong levels left"
opened
keys C-c
ended 0
for signal in TERM HUP; do
    opened
    kill -s $signal "$(cat "$work/pid")"
    ended 0
done
opened
kill -s SEGV "$(cat "$work/pid")"
sees '^ended [1-9]'
ended ''
echo "colours"
has_colours() { t capture-pane -pe | grep -q $'\x1b\\[[0-9;]*3[1-6]m'; }
opened
until_true has_colours
keys q
ended 0
opened NO_COLOR=1
if has_colours; then fail "colours"; fi
keys q
ended 0
echo "many lines"
config=$board/hd1/program/config/hardwareConfig.xml
{
    echo '<c><GPIOAlarmOut/><GPIOAlarmIn>'
    for id in {1..99}; do
        echo "<item id=\"$id\" group=\"0\" bitPosition=\"$((id % 8))\" validLevel=\"1\"/>"
    done
    echo '</GPIOAlarmIn></c>'
} >"$config"
opened
sees 'INPUTS .* ↓[0-9]+$'
keys End
sees '^▸99 '
sees 'INPUTS .* ↑[0-9]+$'
keys q
ended 0
echo "broken board"
echo '<c/>' >"$config"
start
sees '^nvrhw: .*hardwareConfig.xml'
ended 1
