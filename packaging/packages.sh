#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
# SPDX-FileCopyrightText: 2026 The K520 authors
#
# Installs the Debian packages that are missing, and asks nothing when none is.
#
#   packages.sh SET...      SET is one of the names below
set -euo pipefail

declare -A sets=(
    [build]="g++ cmake ninja-build libfmt-dev nlohmann-json3-dev libcli11-dev
        qt6-base-dev qt6-svg-dev qt6-translations-l10n fonts-dejavu-core fonts-noto-cjk"
    [tests]="libgtest-dev libgmock-dev xvfb openbox xdotool strace"
    [checks]="clang-format-14 clang-tidy-14 shellcheck"
    [coverage]="gcovr valgrind"
    [packaging]="debhelper librsvg2-bin lintian appstream desktop-file-utils man-db mandoc
        debootstrap zsh fish xvfb xdotool"
    [bench]="libbenchmark-dev"
    [mutants]="python3"
    [pictures]="xvfb openbox xdotool imagemagick"
    [fuzz]="clang-14 llvm-14 libclang-rt-14-dev"
)

wanted=()
for name in "$@"; do
    read -rd "" -a packages <<<"${sets[$name]}" || true
    wanted+=("${packages[@]}")
done

if ! command -v dpkg-query >/dev/null; then
    echo "This system does not use Debian packages. Going on with what is there; needed is what"
    echo "Debian calls: ${wanted[*]}"
    exit 0
fi

missing=()
for package in "${wanted[@]}"; do
    states=$(dpkg-query --show --showformat '${db:Status-Status}\n' "$package" 2>/dev/null || true)
    grep -qx installed <<<"$states" || missing+=("$package")
done
((${#missing[@]})) || exit 0

install=(apt-get install --yes --no-install-recommends "${missing[@]}")

give_up() {
    echo "Missing packages: ${missing[*]}"
    echo "They could not be installed: $1."
    echo "Please have them installed, as an administrator, and start again:"
    echo "    ${install[*]}"
    exit 1
} >&2

command -v apt-get >/dev/null || give_up "this system has no apt-get"
if ((EUID == 0)); then
    as_root=()
elif ! command -v sudo >/dev/null; then
    give_up "this is not the administrator's account, and there is no sudo"
elif sudo -n true 2>/dev/null; then
    as_root=(sudo -n)
elif [[ -t 0 && -t 2 ]]; then
    as_root=(sudo)
else
    give_up "sudo asks for a password, and there is no terminal to type it"
fi

# Waits for another installation to end, and not for ever for a network that does not answer.
patience=(-o DPkg::Lock::Timeout=120 -o Acquire::Retries=1
    -o Acquire::http::Timeout=30 -o Acquire::https::Timeout=30)

apt() {
    "${as_root[@]}" env DEBIAN_FRONTEND=noninteractive "$1" "${patience[@]}" "${@:2}" </dev/null
}

echo "Installing missing packages: ${missing[*]}"
apt apt-get --quiet update || echo "The package lists could not be refreshed; trying the present ones."
apt "${install[@]}" ||
    give_up "apt-get failed for the reason above; without network it cannot fetch anything"
