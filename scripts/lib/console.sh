# Sourced by the scripts of this folder, never run: how the console is started.

# start_in_console <program> [<option>..]
# Replaces the shell by the program, in the working folder. At a terminal, and where Debian's rlwrap is installed, lines can
# be edited there, arrow keys bring back what was typed before, and .history keeps it for the next time. The program and its
# texts are the same either way.
start_in_console() {
    local editor=()
    if [[ -t 0 && -t 1 ]] && command -v rlwrap > /dev/null && (($(stty size | cut -d' ' -f2) > 0)); then
        editor=(rlwrap --complete-filenames --history-filename .history)
    fi
    exec "${editor[@]}" "$@"
}
