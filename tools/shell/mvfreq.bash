# Tab completion of mvfreq for bash. Commands and options are those that --help lists.

_mvfreq_commands() { mvfreq --help | sed -n '/^Subcommands:/,/^$/s/^  \([a-z]\+\) .*/\1/p'; }

# Those that may stand behind `then`.
_mvfreq_filters() { _mvfreq_commands | grep -vx -e spectrum -e view -e explore -e suggest -e peaks -e info; }

_mvfreq_options() { mvfreq "$1" --help | sed -n 's/^  \(-h,\)\?\(--[a-z-]\+\).*/\2/p'; }

_mvfreq() {
    local current=${COMP_WORDS[COMP_CWORD]} previous=${COMP_WORDS[COMP_CWORD-1]}
    local at begin=1
    for ((at = 2; at < COMP_CWORD; ++at)); do  # a command begins behind each `then`
        if [[ ${COMP_WORDS[at]} == then ]]; then begin=$((at + 1)); fi
    done
    local command=${COMP_WORDS[begin]}
    compopt +o default
    if ((COMP_CWORD == 1)); then
        mapfile -t COMPREPLY < <(compgen -W "$(_mvfreq_commands) --help --version" -- "$current")
    elif ((COMP_CWORD == begin)); then
        mapfile -t COMPREPLY < <(compgen -W "$(_mvfreq_filters)" -- "$current")
    elif [[ $current == -* ]]; then
        mapfile -t COMPREPLY < <(compgen -W "$(_mvfreq_options "$command")" -- "$current")
    elif [[ $previous == --border ]]; then
        mapfile -t COMPREPLY < <(compgen -W 'mirror zero' -- "$current")
    elif [[ $previous == --channels ]]; then
        mapfile -t COMPREPLY < <(compgen -W 'grey each' -- "$current")
    elif [[ $previous == --out-dir ]]; then
        compopt -o filenames
        mapfile -t COMPREPLY < <(compgen -d -- "$current")
    else
        # What is read and written are files: bash completes their names.
        compopt -o default
        COMPREPLY=()
    fi
}

complete -F _mvfreq mvfreq
