# What is run is built, and nothing else.
. "$(dirname "$0")/stand_ins.sh"

# built [OPTION]: the targets that a run with the option builds, in the order of their names.
built() {
    : >"$here/called"
    DISPLAY=:0 sh "$here/tree/run.sh" "$@" >"$here/said" 2>&1
    sed -n 's/^cmake --build --preset release --target //p' "$here/called" | tr ' ' '\n' | LC_ALL=C sort | tr '\n' ' '
}

programs='PegHelp addrbook askclose calendar iexplorm journal'
[ "$(built)" = "$programs pmail tasks " ] || wrong 'another set was built'
[ "$(built --sample)" = "$programs makesample pmail tasks " ] || wrong 'another set was built for the sample'
