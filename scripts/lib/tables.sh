# Sourced by the scripts of this folder, never run: tables of distances to mate, in the folder tables of a build.

# compute_tables <build directory> <word of table_builder>..
compute_tables() {
    local build=$1
    shift
    mkdir -p "$build/tables"
    "$build/tools/table_builder/table_builder" --output "$build/tables" "$@"
}

# prepare_tables <build directory> <its path as the engine sees it>
# Sees that there are tables of three men, and leaves in table_options what lets the engine use all that are there.
prepare_tables() {
    table_options=()
    if [[ ! -f $1/tables/KPK.vdm ]]; then
        echo "Computing the tables of three men, once: a second or two. For all endings of four men: scripts/tables" >&2
    fi
    # Those that are there and sound are kept, which takes no time; damaged ones are mended.
    if ! compute_tables "$1" --men 3 --quiet >&2; then
        echo "Vorka plays on without them." >&2
        return 0
    fi
    table_options=(--tb nalimov 32M "$2/tables")
}
