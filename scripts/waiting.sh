# To be sourced.

# wait_for COMMAND...: until it succeeds, twenty seconds at most.
wait_for() {
    give_up=$(($(date +%s) + 20))
    until "$@"; do
        [ "$(date +%s)" -lt "$give_up" ] || return 1
        sleep 0.02
    done
}
