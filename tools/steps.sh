# For the scripts at the root, which source it: runs each step with a line, keeps its output.

root=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
cd "$root"
logs="$root/build/logs"
mkdir -p "$logs"
jobs=$(nproc 2>/dev/null || echo 2)
# What was compiled in one clone serves the next.
export CCACHE_BASEDIR="$root" CCACHE_NOHASHDIR=1

# step NAME COMMAND...: the command's output goes to build/logs/NAME.log. A failing command ends
# the script with the output's end.
step() {
    local name=$1 begin=$SECONDS
    shift
    printf '%s ...' "$name"
    if ! "$@" </dev/null >"$logs/$name.log" 2>&1; then
        printf ' FAILED\n'
        grep -vE '^ *Start +[0-9]+:|Passed +[0-9.]+ sec$' "$logs/$name.log" | tail -n 120 >&2
        echo "$(basename "$0"): step $name failed: $* (all output: build/logs/$name.log)" >&2
        exit 1
    fi
    printf ' %s s\n' $((SECONDS - begin))
}

# build_preset PRESET [TARGET...]
build_preset() {
    local preset=$1
    shift
    step "configure-$preset" cmake --preset "$preset"
    step "build-$preset" cmake --build --preset "$preset" -j "$jobs" ${1:+--target "$@"}
}

# test_preset PRESET: all its tests, and the summary that ctest closes with.
test_preset() {
    step "ctest-$1" ctest --preset "$1" -j "$jobs" --no-tests=error
    grep -E '^[0-9]+% tests passed|^Total Test time' "$logs/ctest-$1.log"
}
