# SPDX-License-Identifier: Apache-2.0
# For scripts that need an X server of their own.
#
#   start_x_server FOLDER [XVFB-OPTION…]
#
# Starts Xvfb and sets DISPLAY and x_server, the server's process ID. The caller ends the process.
# FOLDER receives the server's log. Messages begin with the script's name.
#
# A server that chooses its own number can get that of one which is ending and still removes its
# socket. Hence the script locks the number of a display as long as it runs.
# Without -noreset, the server starts anew whenever its last client leaves, and drops a client that
# connects meanwhile: such as a window manager while the caller asks whether it runs.
start_x_server() {
    local folder=$1 number ready starts=0
    shift
    mkfifo "$folder/number"
    for ((number = 100; number < 1000 && starts < 5; number++)); do
        exec 8>>"${TMPDIR:-/tmp}/hovlets-display-$number.lock" || continue
        flock --nonblock 8 || continue
        [ ! -e "/tmp/.X11-unix/X$number" ] || continue
        starts=$((starts + 1))
        Xvfb ":$number" -displayfd 3 "$@" -noreset -nolisten tcp 3>"$folder/number" 2>"$folder/xvfb.log" 8>&- &
        x_server=$!
        # Reads nothing if the server ends, for instance because another one took the number.
        if read -r -t 30 ready <"$folder/number" && [ "$ready" = "$number" ]; then
            export DISPLAY=:$number
            return
        fi
        kill "$x_server" 2>/dev/null || true
        wait "$x_server" 2>/dev/null || true
    done
    echo "${0##*/}: Xvfb did not start:" >&2
    cat "$folder/xvfb.log" >&2
    return 1
}
