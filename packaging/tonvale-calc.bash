# Completion of tonvale-calc for bash. Commands, options and the words that options take are read
# from what `tonvale-calc --help` says, whose lines of use are those that the text hangs from.

_tonvale_calc_help() {
    local program=$1 command=$2
    "$program" --help 2>/dev/null | awk -v command="$command" '
        /^  tonvale-calc / { inside = $2 == command }
        /^[^ ]/ { inside = 0 }
        inside'
}

# The words that an option takes: as the command's own help has them, or else as the first that
# writes them out.
_tonvale_calc_words() {
    local program=$1 command=$2 option=$3 place
    for place in "$command" ''; do
        { if [[ -n $place ]]; then _tonvale_calc_help "$program" "$place"; else "$program" --help; fi; } |
            grep -oE -m 1 -- "$option [[:alnum:]-]+(\\|[[:alnum:]-]+)+" | cut -d ' ' -f 2 |
            tr '|' '\n' | grep . && return
    done
}

_tonvale_calc() {
    local program=${COMP_WORDS[0]} current=${COMP_WORDS[COMP_CWORD]} words
    local previous=${COMP_WORDS[COMP_CWORD - 1]} command=${COMP_WORDS[1]}
    if [[ $COMP_CWORD -eq 1 ]]; then
        words=$("$program" --help 2>/dev/null | sed -n 's/^  tonvale-calc \([a-z-]*\).*/\1/p')
    elif [[ $previous == --* ]] && words=$(_tonvale_calc_words "$program" "$command" "$previous"); then
        :
    elif [[ $current == -* ]]; then
        words=$(_tonvale_calc_help "$program" "$command" | grep -oE -- '--[a-z]+' | sort -u)
    else
        words=''
    fi
    # No words: names of files, which "-o default" completes.
    mapfile -t COMPREPLY < <(compgen -W "$words" -- "$current")
}

complete -o default -F _tonvale_calc tonvale-calc
