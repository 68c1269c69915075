# Sourced by the scripts of this folder, never run: how they build.

# build_quietly <preset> <directory> [<cmake option>..]
# Configures and builds a preset in a directory of its own. What cmake and the compilers say goes to build.txt in that
# directory and is shown only if the build fails.
build_quietly() {
    local preset=$1 directory=$2
    shift 2
    mkdir -p "$directory"
    [[ -e $directory/vorka ]] || echo "Building Vorka, once; this takes a minute or two." >&2
    (cd "$root" && cmake --preset "$preset" -B "$directory" "$@" && cmake --build "$directory") \
        > "$directory/build.txt" 2>&1 && return 0
    tail -n 60 "$directory/build.txt" >&2
    echo "The build failed; all of it stands in $directory/build.txt" >&2
    return 1
}
