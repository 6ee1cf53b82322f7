#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
# SPDX-FileCopyrightText: 2026 The K520 authors
#
# Looks at the packages in build/deb without installing them: Debian's rules, the desktop file and the
# metadata, manual pages and completions.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."

unpacked=$(mktemp -d)
trap 'rm -r "$unpacked"' EXIT
for package in build/deb/*.deb; do
    dpkg-deb --extract "$package" "$unpacked"
done
share=$unpacked/usr/share

# A tool that complains with words alone is an error, too.
quiet() {
    local said
    if ! said=$("$@" 2>&1) || [[ -n $said ]]; then
        printf 'failed: %s\n%s\n' "$*" "$said"
        exit 1
    fi
}

# The page as it goes to a terminal, for the warnings on the way.
roff_of() {
    LC_ALL=C.UTF-8 MANWIDTH=80 man --warnings --encoding=UTF-8 --local-file --troff-device=utf8 \
        --ditroff "$1" >/dev/null
}

# Lintian complains about the administrator's account, and only has to read.
lintian --fail-on error,warning --allow-root build/deb/*.deb
quiet desktop-file-validate "$share/applications/k520.desktop"
appstreamcli validate --no-net "$share/metainfo/"*.xml

pages=("$share/man/man1/"k520{,-cli}.1.gz "$share/man/zh_CN/man1/"k520{,-cli}.1.gz)
for page in "${pages[@]}"; do
    quiet mandoc -T lint -W warning "$page"
    quiet roff_of "$page"
done
quiet bash -n "$share/bash-completion/completions/"{k520,k520-cli}
for shell in zsh fish; do
    command -v $shell >/dev/null || echo "$shell is not installed; its completions are not checked"
done
! command -v zsh >/dev/null || quiet zsh -n "$share/zsh/vendor-completions/"_k520{,-cli}
! command -v fish >/dev/null || quiet fish -n "$share/fish/vendor_completions.d/"k520{,-cli}.fish
echo "the packages are as they should be"
