# Sourced by the scripts of this folder, never run: how they build.

# build_with_progress <preset> <directory> [<cmake option>..] -- <target>..
# Configures a preset in a directory of its own and builds the targets there. On a terminal one line counts the steps;
# elsewhere only what fails is told. All that cmake says stands in build.txt in that directory.
build_with_progress() {
    local preset=$1 directory=$2 options=()
    shift 2
    while [[ $1 != -- ]]; do options+=("$1"); shift; done
    shift
    mkdir -p "$directory"
    local log=$directory/build.txt
    if ! (cd "$root" && cmake --preset "$preset" -B "$directory" "${options[@]}") > "$log" 2>&1; then
        report_failed_build "$log"
        return 1
    fi
    if [[ -t 2 ]]; then
        NINJA_STATUS='[step %f of %t,%p, after %e s] ' cmake --build "$directory" --target "$@" >&2 && return 0
        echo "The build failed." >&2
        return 1
    fi
    cmake --build "$directory" --target "$@" >> "$log" 2>&1 && return 0
    report_failed_build "$log"
    return 1
}

report_failed_build() {
    tail -n 60 "$1" >&2
    echo "The build failed; all of it stands in $1" >&2
}
