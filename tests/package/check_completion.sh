#!/usr/bin/env bash
# Checks that the completion of tonvale-calc offers every command, option and word that the program
# PROGRAM takes, and none that it does not:
#
#   tests/package/check_completion.sh PROGRAM COMPLETION
set -euo pipefail
# shellcheck source=scripts/lib.sh
source "$(dirname "${BASH_SOURCE[0]}")/../../scripts/lib.sh"

program=$(realpath -- "$1")
# shellcheck source=packaging/tonvale-calc.bash
source "$2"
complaints=0

complain() {
    say "$*"
    complaints=$((complaints + 1))
}

# What is offered for the last of the words that follow the program's name.
offered() {
    COMP_WORDS=("$program" "$@")
    COMP_CWORD=$#
    COMPREPLY=()
    _tonvale_calc
    [[ ${#COMPREPLY[@]} -eq 0 ]] || printf '%s\n' "${COMPREPLY[@]}"
}

# Whether the program does not say $1 of the command line that follows.
takes() {
    local complaint=$1
    shift
    [[ $("$program" "$@" 2>&1 >/dev/null) != *"$complaint"* ]]
}

check_command() {
    local command=$1 option word words known written taken=()
    takes 'comando sconosciuto' "$command" || complain "$command is no command"
    # All that might be an option of any command is written in the program.
    written=$(grep -aoE -- '--[a-z]+' "$program" | sort -u)
    for option in $written; do
        [[ $option != --help ]] || continue
        if takes 'opzione sconosciuta' "$command" "$option="; then
            taken+=("$option")
        fi
    done
    known=$(offered "$command" --)
    [[ $known == "$(printf '%s\n' ${taken+"${taken[@]}"})" ]] ||
        complain "$command takes ${taken[*]-nothing}, and is offered ${known//$'\n'/ }"
    for option in $known; do
        words=$(offered "$command" "$option" '')
        for word in $words; do
            takes 'valore non ammesso' "$command" "$option=$word" ||
                complain "$command does not take $option $word"
        done
    done
}

commands=$(offered '')
for command in $commands; do
    [[ $command == --* ]] || check_command "$command"
done
[[ $(wc -w <<<"$commands") -ge 8 ]] || complain "too few commands are offered: $commands"
[[ $(offered nipts --quantita HTL) == $'HTLA\nHTLAN' ]] || complain "words of --quantita are missing"
[[ $(offered calcola --formato j) == json ]] || complain "words of --formato are missing"
[[ $complaints -eq 0 ]]
