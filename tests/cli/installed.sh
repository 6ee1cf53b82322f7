#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
# SPDX-FileCopyrightText: 2026 The K520 authors
#
# Installs what was built into a folder and uses it there: the programs have to find their files, and
# command lines are completed as a user does it with the Tab key, in bash, and in zsh and fish where
# they are installed.
#   installed.sh BUILD-FOLDER
set -euo pipefail
here=$(mktemp -d)
trap 'rm -r "$here"' EXIT
cmake --install "$1" --prefix "$here/prefix" >"$here/log" || {
    cat "$here/log"
    exit 1
}
export HOME=$here XDG_DATA_HOME=$here/data XDG_RUNTIME_DIR=$here
# What the system's libraries keep to the end is theirs.
export ASAN_OPTIONS=${ASAN_OPTIONS:-}:detect_leaks=0
unset K520_HOME
cd "$here"
share=$here/prefix/share
bin=$here/prefix/bin
programs=(k520-cli)
[[ ! -e $bin/k520 ]] || programs+=(k520)
# What is offered where a file may stand.
touch fleet.dat
mkdir folder
failures=0

# A command line up to the cursor, and what is offered there, in any order. Where all of it is too
# much, "+" stands in front of what has to be among it.
cases=(
    "k520-cli sho|show"
    "k520-cli config |get set"
    "k520-cli set --h|--help"
    "k520-cli --pro|--program-folder"
    "k520-cli --program-folder fol|folder/"
    "k520-cli --program-folder folder confi|config"
    "k520-cli config set |+Setting Ports"
    "k520-cli config set Ports COM1|COM1 COM10 COM11 COM12 COM13 COM14 COM15 COM16"
    "k520-cli config get Setting Lan|Language"
    "k520-cli config set Setting Language |"
    "k520-cli show fl|fleet.dat"
    "k520-cli show fleet.dat |"
    "k520-cli show fleet.dat --j|--json"
    "k520-cli write -p 1 fl|fleet.dat"
    "k520-cli write -p vi|virtual"
    "k520-cli read --port |+1 16 virtual"
    "k520-cli read -p virtual --o|--output"
    "k520-cli read -p virtual -o fl|fleet.dat"
    "k520-cli simulate --baud |"
    "k520-cli set fleet.dat |+band= ch1. ch16."
    "k520-cli set fleet.dat ch3.r|ch3.rx="
    "k520-cli set fleet.dat ch3.rx=446 ch16.Po|ch16.Power="
    "k520-cli set fleet.dat option.vox|option.vox_level= option.vox_delay= option.vox_inhibit_rx="
    "k520-cli nonsense |"
)
[[ ! -e $bin/k520 ]] || cases+=("k520 fl|fleet.dat" "k520 --program-folder fol|folder/" "k520 -sty|-style")

# judge SHELL CASE: the offers are in stdin, one a line
judge() {
    local line=${2%|*} wanted=${2##*|} offered
    offered=$(sort -u)
    if [[ $wanted == +* ]]; then
        wanted=${wanted#+}
        # shellcheck disable=SC2086 # one word a line
        wanted=$(printf '%s\n' $wanted | sort)
        offered=$(comm -12 <(echo "$wanted") <(echo "$offered"))
    else
        # shellcheck disable=SC2086
        wanted=$(printf '%s\n' $wanted | sort)
    fi
    [[ $offered == "$wanted" ]] || {
        printf '%s: "%s"\n  offers %s\n  not    %s\n' "$1" "$line" "${offered//$'\n'/ }" \
            "${wanted//$'\n'/ }"
        failures=$((failures + 1))
    }
}

# What readline does around a completion function: it cuts the line into words, and where there is
# no offer it goes on by the function's options.
bash_offers() {
    local completer words
    local -A mode=([default]=1)
    # shellcheck disable=SC2317 # the completions call it
    compopt() {
        while (($#)); do
            case $1 in
                -o) mode[$2]=1 ;;
                +o) unset "mode[$2]" ;;
            esac
            shift 2
        done
    }
    COMP_LINE=$1 COMP_POINT=${#1}
    words=${1//=/ = }
    # shellcheck disable=SC2206 # cut at blanks
    COMP_WORDS=($words)
    [[ $1 != *' ' ]] || COMP_WORDS+=("")
    COMP_CWORD=$((${#COMP_WORDS[@]} - 1))
    completer=$(complete -p "${COMP_WORDS[0]}")
    [[ $completer == *"-o default"* ]] || unset "mode[default]"
    COMPREPLY=()
    completer=${completer#*-F }
    "${completer%% *}" "${COMP_WORDS[0]}" \
        "${COMP_WORDS[COMP_CWORD]}" "${COMP_WORDS[COMP_CWORD - 1]}"
    if ((${#COMPREPLY[@]})); then
        printf '%s\n' "${COMPREPLY[@]}"
    elif [[ -n ${mode[dirnames]-} ]]; then
        compgen -d -S / -- "${COMP_WORDS[COMP_CWORD]}" || true
    elif [[ -n ${mode[default]-} ]]; then
        compgen -f -- "${COMP_WORDS[COMP_CWORD]}" || true
    fi
}

in_bash() {
    for program in "${programs[@]}"; do
        # shellcheck disable=SC1090
        source "$share/bash-completion/completions/$program"
    done
    for each in "${cases[@]}"; do
        judge bash "$each" < <(bash_offers "${each%|*}")
    done
}

in_fish() {
    for each in "${cases[@]}"; do
        judge fish "$each" < <(fish --no-config --command "
            for file in $share/fish/vendor_completions.d/*; source \$file; end
            complete --do-complete='${each%|*}'" | cut -f 1)
    done
}

# In a terminal, where the line that the Tab key leaves is run: so for single offers. A slash after a
# folder goes away then.
in_zsh() {
    local single=() answers each
    for each in "${cases[@]}"; do
        [[ ${each##*|} == *[+\ ]* || -z ${each##*|} ]] || single+=("${each%/}")
    done
    mapfile -t answers < <(COMPLETIONS=$share/zsh/site-functions zsh -f terminal.zsh "${single[@]%|*}")
    for each in "${!single[@]}"; do
        judge zsh "${single[each]}" <<<"${answers[each]-}"
    done
}

cat >terminal.zsh <<'END'
zmodload zsh/zpty
export PS1= TERM=dumb
zpty shell zsh -f -i
zpty -w shell "fpath=(\$COMPLETIONS \$fpath); autoload -U compinit; compinit -u -D
    k520-cli k520() { print -r -- \"last word:\" \"\${@[-1]}\" }
    print ready:\$((20 + 3))"
zpty -r shell text '*ready:23*'
for line; do
    zpty -w -n shell $line$'\t\n'
    zpty -r shell text $'*last word:*\n'
    print -r -- "${${${text##*last word: }%%$'\n'*}%$'\r'}"
done
END

# From a folder that nobody has told the programs of: their files are found beside them.
"$bin/k520-cli" new made.dat
"$bin/k520-cli" show made.dat >/dev/null
cmp "$share/k520/Uninstall.exe" "$XDG_DATA_HOME/k520/Uninstall.exe"

in_bash
if command -v zsh >/dev/null; then in_zsh; else echo "zsh is not installed; it was left out"; fi
if command -v fish >/dev/null; then in_fish; else echo "fish is not installed; it was left out"; fi

# What the programs say about their options has to be what bash offers.
for program in "${programs[@]}"; do
    mapfile -t options < <("$bin/$program" --help | grep -oE '^ +(-[a-z], ?)?--[a-z-]+' |
        grep -oE -e '--[a-z-]+')
    ((${#options[@]} >= 3)) || failures=$((failures + 1))
    for option in "${options[@]}"; do
        judge bash "$program $option|+$option" < <(bash_offers "$program $option")
    done
done
echo "${#cases[@]} command lines, $failures failures"
((failures == 0))
