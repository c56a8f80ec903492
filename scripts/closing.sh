# How a shell script starts and closes the journal. To be sourced.

# outlive_terminal COMMAND [ARGUMENT...]: becomes the command, which does not end when the terminal is closed or its
# connection lost, as a program does that leaves SIGHUP alone: the journal would have no time to ask. For the background.
outlive_terminal() {
    trap '' HUP
    exec "$@"
}

# close_journal PROCESS TOOLS SECONDS: asks the journal that runs as PROCESS to close, as the task list would, and waits
# until it has. TOOLS is the folder of askclose.exe; SECONDS limits the wait, 0 is no limit. It asks three times: a dialog with
# nothing unsaved closes at the first, the window behind it at the next. An entry that is not saved makes the journal ask
# a question, which only a person can answer. Succeeds when the journal has ended.
close_journal() {
    asked=0
    waited=0 # in steps of 0.2 seconds
    while kill -0 "$1" 2>/dev/null; do
        if [ "$asked" -lt 3 ] && [ $((waited % 5)) = 0 ]; then
            asked=$((asked + 1))
            # There is none that could be asked while it starts, or asks for its password.
            wine "$2/askclose.exe" </dev/null >/dev/null 2>&1 || return 1
        fi
        [ "$waited" != 15 ] ||
            echo 'The journal has something that is not saved: answer its question, or press Ctrl+C again to end it.' >&2
        [ "$3" = 0 ] || [ "$waited" -lt $(($3 * 5)) ] || return 1
        sleep 0.2
        waited=$((waited + 1))
    done
}
