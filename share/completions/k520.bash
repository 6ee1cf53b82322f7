# SPDX-License-Identifier: MIT
# SPDX-FileCopyrightText: 2026 The K520 authors
# shellcheck shell=bash
#
# Completions of k520 for bash.

_k520() {
    local current=${COMP_WORDS[COMP_CWORD]} offers=''
    COMPREPLY=()
    case ${COMP_WORDS[COMP_CWORD - 1]} in
        --program-folder)
            compopt -o dirnames +o default
            return ;;
        -style)
            offers='fusion windows' ;;
        -platform)
            offers='xcb wayland offscreen' ;;
        *)
            # Files are left to readline.
            [[ $current == -* ]] || return 0
            offers='-h --help --help-all -v --version --program-folder -style -platform -reverse' ;;
    esac
    compopt +o default
    mapfile -t COMPREPLY < <(compgen -W "$offers" -- "$current")
}

complete -o default -F _k520 k520
