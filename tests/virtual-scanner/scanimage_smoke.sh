#!/bin/sh
# SPDX-License-Identifier: GPL-3.0-or-later
# The real scanimage with a scanner attached by `vscan run`. Arguments: the vscan program, a folder to work in.
set -u
vscan=$1
work=$2
failures=0

check() { # WHAT EXPECTED ACTUAL
    if [ "$2" != "$3" ]; then
        echo "FAILED: $1: expected '$2', got '$3'"
        failures=$((failures + 1))
    fi
}

rm -rf "$work" && mkdir -p "$work/feeder one" && cd "$work" || exit 1
for page in "001-front 10" "001-back 20" "002-front 30"; do
    set -- $page
    { printf 'P5\n300 400\n255\n'; head -c 120000 /dev/zero | tr '\0' "\\$2"; } > "feeder one/$1.pnm"
done

scan() { "$vscan" run --feeder "feeder one" --no-usb -- "$@" 2>stderr.txt; }

check "list" "device \`vscan:one' is a Virtual qwd200 sheetfed scanner" "$(scan scanimage -L)"
scan scanimage -d vscan:one --source "ADF Duplex" --mode 灰度 --paper-size FULL --batch=p%d.pnm
check "an emptied feeder ends the batch well" 0 $?
check "pages" "p1.pnm p2.pnm p3.pnm p4.pnm" "$(echo p*.pnm)"
check "order" "010 020 030 377" "$(for n in 1 2 3 4; do tail -c 1 p$n.pnm | od -An -to1 | tr -d ' '; done | xargs)"
scan sh -c '"$0" jam-at 1 5000 && scanimage -d vscan:one -o jam.pnm' "$vscan"
check "jam" 6 $?
scan sh -c '"$0" unplug && scanimage -L | grep -c vscan' "$vscan" > count.txt
check "unplugged" 0 "$(cat count.txt)"

scan sh -c 'exit 41'
check "exit code" 41 $?
scan sh -c 'kill -9 $$'
check "killed child" 137 $?
scan ./no-such-program
check "missing program" 127 $?
"$vscan" run --feeder /nonexistent -- true 2>/dev/null
check "missing feeder" 125 $?
scan sh -c 'echo "$VSCAN_SOCKET"' > socket.txt
check "socket is gone" gone "$([ -e "$(cat socket.txt)" ] && echo there || echo gone)"
check "socket folder is gone" gone "$([ -e "$(dirname "$(cat socket.txt)")" ] && echo there || echo gone)"
scan sh -c '"$0" frobnicate' "$vscan"
check "unknown verb" 4 $?

# Whoever kills the runner ends its client.
mkdir "/tmp/vscan-smoke-$$"
"$vscan" run --sock "/tmp/vscan-smoke-$$/socket" -- sh -c 'echo $$ > child.pid; exec sleep 60' &
runner=$!
for _ in 1 2 3 4 5 6 7 8 9 10; do [ -s child.pid ] && break; sleep 0.2; done
kill -9 $runner
wait $runner 2>/dev/null
for _ in 1 2 3 4 5 6 7 8 9 10; do kill -0 "$(cat child.pid)" 2>/dev/null || break; sleep 0.2; done
check "client of a killed runner" gone "$(kill -0 "$(cat child.pid)" 2>/dev/null && echo there || echo gone)"
rm -rf "/tmp/vscan-smoke-$$" # a killed runner cannot remove its socket

[ $failures = 0 ] && echo "all passed"
exit $failures
