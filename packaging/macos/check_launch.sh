#!/bin/sh
# Starts a signed Kestrel.app and looks at it from outside. On a Mac only, with somebody logged in.
#
#   check_launch.sh APP
#       It must become an agent, stay alive, end when it is told to, and leave no crash report.
set -eu

if [ $# -ne 1 ]; then
    sed -n '2,/^set/s/^# \{0,1\}//p' "$0" >&2
    exit 2
fi
app=$1
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT

# wait_for COMMAND...: whether it succeeds within half a minute.
wait_for() {
    tries=30
    until "$@"; do
        tries=$((tries - 1))
        [ "$tries" -gt 0 ] || return 1
        sleep 1
    done
}

is_agent() {
    lsappinfo info Kestrel > "$work/info" 2>&1 && grep -q 'type="UIElement"' "$work/info"
}

is_gone() {
    ! kill -0 "$pid" 2> /dev/null
}

crash_reports() {
    find "$HOME/Library/Logs/DiagnosticReports" -name 'Kestrel*' -newer "$work/start" 2> /dev/null
}

fail() {
    echo "check_launch.sh: $*" >&2
    crash_reports >&2
    exit 1
}

touch "$work/start"
open "$app"
wait_for is_agent || fail "no agent: $(cat "$work/info")"
pid=$(sed -n 's/.*pid = \([0-9][0-9]*\).*/\1/p' "$work/info" | head -n 1)
[ -n "$pid" ] || fail "no process: $(cat "$work/info")"
sleep 10
! is_gone || fail "it ended by itself"

# The request may wait for a permission that nobody is there to give.
osascript -e 'tell application id "app.kestrel.Kestrel" to quit' &
request=$!
if wait_for is_gone; then
    echo "it quit when it was asked to"
else
    kill "$request" 2> /dev/null || true
    echo "the request to quit was not answered; a signal ends it"
    kill -TERM "$pid"
    wait_for is_gone || fail "it does not end"
fi
sleep 5
[ -z "$(crash_reports)" ] || fail "it left a crash report"
