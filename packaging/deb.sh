#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
# SPDX-FileCopyrightText: 2026 The K520 authors
#
# Builds the Debian packages k520, k520-cli and k520-data into build/deb, as root or as an ordinary
# user. Only what is missing for it, and is installed first, needs a network.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."
root=$PWD
folder=$root/build/deb
source=$folder/k520

# The version of CMakeLists.txt; between two releases it says which state of the source this is.
version_of_source() {
    local version
    version=$(sed -n 's/^project(k520 VERSION \([0-9.]*\).*/\1/p' CMakeLists.txt)
    if git rev-parse --verify --quiet HEAD >/dev/null 2>&1 &&
        [[ $(git tag --points-at HEAD) != "v$version" ]]; then
        version+=$(TZ=UTC git log -1 --date=format-local:%Y%m%d.%H%M%S --format='~%cd.%h')
    fi
    echo "$version"
}

# The time of the last change: so the same source makes the same packages.
time_of_source() {
    git log -1 --format=%ct 2>/dev/null || stat --format=%Y CHANGELOG.md
}

# The newest section of CHANGELOG.md in Debian's form.
debian_changelog() {
    printf 'k520 (%s) unstable; urgency=medium\n\n' "$(version_of_source)"
    sed -n '/^## /,$p' CHANGELOG.md | sed -e 1d -e '/^## /,$d' -e '/^$/d' -e 's/`//g' \
        -e 's/^### \(.*\)/  [ \1 ]/' -e 's/^- /  * /' -e 's/^  \([^*[ ]\)/    \1/' |
        fmt --tagged-paragraph --width=78
    printf '\n -- %s  %s\n' "$(sed -n 's/^Maintainer: //p' packaging/debian/control)" \
        "$(LC_ALL=C date --utc --rfc-email --date="@$(time_of_source)")"
}

# A copy of the source: a Debian build wants the folder debian at the top and writes into it.
copy_source() {
    rm -rf "$folder"
    mkdir -p "$source"
    find . -mindepth 1 -maxdepth 1 -not -name 'build*' -not -name .git \
        -exec cp --archive --target-directory="$source" {} +
    mv "$source/packaging/debian" "$source/debian"
    debian_changelog >"$source/debian/changelog"
}

packaging/packages.sh build packaging
copy_source
if command -v ccache >/dev/null; then
    # The build runs with a home folder of its own.
    CCACHE_DIR=${CCACHE_DIR:-$(ccache --get-config cache_dir)}
    export CCACHE_DIR
fi
# Without debugging symbols, which would go into packages of their own.
export DEB_CXXFLAGS_STRIP=-g
DEB_BUILD_OPTIONS="noautodbgsym parallel=$(nproc)"
export DEB_BUILD_OPTIONS
(cd "$source" && dpkg-buildpackage --build=binary --no-sign)
rm -r "$source"
ls -l "$folder"/*.deb
