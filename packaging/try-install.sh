#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
# SPDX-FileCopyrightText: 2026 The K520 authors
#
# Installs the packages of build/deb into a clean root of this machine's Debian release, and uses them
# there as an ordinary user who has no network. Needs root rights, its own or by sudo; without them the
# packages are unpacked and used from a folder, which proves less.
#
# What is downloaded is kept in build/try-install. Mounts live in a namespace that ends with the script.
set -euo pipefail
here=$(realpath "${BASH_SOURCE[0]}")
cd "$(dirname "$here")/.."
folder=$PWD/build/try-install
root=$folder/root

say() {
    printf -- '-- %s\n' "$*"
}

fail() {
    printf 'try-install: %s\n' "$*" >&2
    exit 1
}

# Looks every 100 ms, for 30 s at most, whether a command succeeds.
wait_for() {
    for _ in {1..300}; do
        ! "$@" || return 0
        sleep 0.1
    done
    fail "this never came true: $*"
}

# --- the clean root

# The release's base system, as packed by an earlier run or from the first mirror that apt knows of.
make_root() {
    local codename mirror base
    mkdir -p "$root"
    # In memory where there is enough: a package manager waits for the disk all the time.
    if (($(sed -n 's/^MemAvailable: *\([0-9]*\) kB/\1/p' /proc/meminfo) > 3000000)); then
        mount -t tmpfs -o size=2g,mode=755 k520-root "$root"
    fi
    # shellcheck disable=SC1091
    codename=$(. /etc/os-release && echo "$VERSION_CODENAME")
    base=$folder/$codename.tar
    if [[ ! -e $base ]]; then
        # shellcheck disable=SC2016 # apt expands it
        mirror=$(apt-get indextargets --format '$(CODENAME) $(COMPONENT) $(REPO_URI)' \
            'Created-By: Packages' | sed -n "s/^$codename main //p" | head -n 1)
        [[ -n $mirror ]] || fail "apt knows no mirror of $codename"
        say "the base system of $codename"
        debootstrap --variant=minbase "$codename" "$root" "$mirror" >"$folder/debootstrap.log" ||
            fail "debootstrap failed; see $folder/debootstrap.log"
        rm -f "$root"/var/cache/apt/archives/*.deb
        tar --create --one-file-system --file="$base.new" --directory="$root" .
        mv "$base.new" "$base"
    else
        tar --extract --file="$base" --directory="$root"
    fi
}

# The machine's own sources, keys and certificates, and a place for what apt downloads.
prepare_root() {
    rm -r "$root/etc/apt"
    cp --archive /etc/apt "$root/etc/apt"
    for path in /usr/share/keyrings /usr/share/ca-certificates /etc/ssl/certs; do
        if [[ -e $path ]]; then
            mkdir -p "$root$path"
            cp --archive --no-clobber "$path/." "$root$path"
        fi
    done
    cp --dereference /etc/resolv.conf /etc/hosts "$root/etc/"
    mkdir -p "$folder/archives/partial" "$root/packages" "$root/archives" "$root/tmp/.X11-unix"
    for package in build/deb/*.deb; do
        cp "$package" "$root/packages/$(dpkg-deb --field "$package" Package).deb"
    done
    mount -t proc proc "$root/proc"
    mount --bind "$folder/archives" "$root/archives"
    mount --bind /tmp/.X11-unix "$root/tmp/.X11-unix"
}

in_root() {
    DEBIAN_FRONTEND=noninteractive chroot "$root" "$@"
}

apt() {
    in_root apt-get --quiet=2 --no-install-recommends -o Dir::Cache::archives=/archives \
        -o APT::Keep-Downloaded-Packages=true -o APT::Sandbox::User=root \
        -o DPkg::Options::=--force-unsafe-io "$@" &>>"$folder/apt.log" || {
        tail -n 20 "$folder/apt.log"
        fail "apt-get $* failed"
    }
}

install_packages() {
    : >"$folder/apt.log"
    apt update
    say "k520-cli"
    apt install --yes /packages/k520-data.deb /packages/k520-cli.deb
    ! in_root dpkg-query --show 'libqt*' 2>/dev/null ||
        fail "k520-cli needs the window toolkit"
    say "k520"
    apt install --yes /packages/k520.deb
}

# In the root, as an ordinary user, without a network.
as_user() {
    unshare --net chroot --userspec=radio:radio "$root" env --ignore-environment \
        --chdir=/home/radio HOME=/home/radio PATH=/usr/bin:/bin LANG=C.UTF-8 "$@"
}

# --- what a user does

# use_cli COMMAND...: COMMAND runs a program as the user, in a folder of the user's
use_cli() {
    "$@" k520-cli new new.dat
    "$@" k520-cli set new.dat ch5.rx=446.05 option.tot=60s -o edited.dat
    "$@" k520-cli show edited.dat | grep -q 446.05000 || fail "show does not show the channel"
    "$@" k520-cli write -p virtual edited.dat --verify
    "$@" k520-cli read -p virtual -o read.dat
    "$@" k520-cli verify -p virtual read.dat
}

# Nothing is kept in a folder that cannot be written, so there the radio is as it was before.
use_cli_read_only() {
    "$@" k520-cli new new.dat
    "$@" k520-cli read -p virtual -o read.dat
    "$@" k520-cli show read.dat >/dev/null
    "$@" k520-cli set read.dat ch5.rx=446.05
    if "$@" k520-cli config set Setting COM 2 2>refused; then
        fail "a setting was stored in a folder that cannot be written"
    fi
    cat refused
}

# A program folder with short sessions and without the questions of the first start.
make_folder() {
    "$@" k520-cli config set Setting ReadEndAddr 03FF
    "$@" k520-cli config set Setting WriteEndAddr 03FF
    "$@" k520-cli config set Setting FirRun 0
}

# The screen, without its header: nobody paints a black one.
painted() {
    (($(tail --bytes=$((1280 * 900 * 4)) "$folder/Xvfb_screen0" | od -An -v -tx4 -w4 | sort -u | wc -l) > 100))
}

shown() {
    [[ -n $(xdotool search --onlyvisible --name 'K520' 2>/dev/null) ]]
}

# The program in a window, and where all of it came from.
use_desktop() {
    local program started display
    mkfifo "$folder/display"
    Xvfb -displayfd 3 -ac -screen 0 1280x900x24 -fbdir "$folder" 3>"$folder/display" 2>/dev/null &
    read -r display <"$folder/display"
    ! painted || fail "there is something on the screen already"
    # shellcheck disable=SC2016 # for the shell in the root
    {
        as_user K520_HOME=/srv/k520 DISPLAY=":$display" XDG_RUNTIME_DIR=/home/radio \
            sh -c 'echo $$ >number; exec k520 read.dat'
    } 2>"$folder/k520.log" &
    started=$!
    DISPLAY=:$display wait_for shown
    wait_for painted
    cp "$folder/Xvfb_screen0" "$folder/screen.xwd"
    program=$(<"$root/home/radio/number")
    [[ $(readlink "/proc/$program/exe") == "$root/usr/bin/k520" ]] ||
        fail "what runs is $(readlink "/proc/$program/exe")"
    sed -n 's/^[^/]* \(\/.*\)/\1/p' "/proc/$program/maps" | sort -u >"$folder/maps"
    for part in libQt6Widgets plugins/platforms/libqxcb plugins/iconengines/libqsvgicon; do
        grep -q "^$root/usr/lib/.*$part" "$folder/maps" || fail "the program runs without $part"
    done
    ! grep '\.so' "$folder/maps" | grep -v "^$root/" || fail "these are not from the clean root"
    say "the window is painted; $(grep -c '\.so' "$folder/maps") libraries and plugins, all from the root"
    kill "$program"
    wait "$started" || true
}

in_clean_root() {
    make_root
    prepare_root
    install_packages
    in_root useradd --create-home --key HOME_MODE=0700 radio

    say "as a user whose program folder is made on first use"
    make_folder as_user
    use_cli as_user
    say "with a program folder that cannot be written"
    cp --recursive "$root/home/radio/.local/share/k520" "$root/srv/k520"
    cp "$root/usr/share/k520/PL220_CV.exe" "$root/srv/k520"
    chown --recursive 0:0 "$root/srv/k520"
    before=$(cd "$root/srv/k520" && sha256sum ./*)
    cd "$folder"
    use_cli_read_only as_user K520_HOME=/srv/k520
    use_desktop
    [[ $(cd "$root/srv/k520" && sha256sum ./*) == "$before" ]] || fail "that folder has changed"
    say "removal"
    apt purge --yes k520 k520-cli k520-data
    ! find "$root/usr" "$root/etc" -name '*k520*' -not -path '*/doc/*' | grep . ||
        fail "this is still there"
}

in_bare_folder() {
    say "there is no clean root: $1"
    say "not checked: the dependencies, the programs as another user, and that all libraries are Debian's"
    for package in build/deb/*.deb; do
        dpkg-deb --extract "$package" "$root"
    done
    mkdir -m 700 "$folder/home"
    cd "$folder/home"
    bare() {
        env --unset=K520_HOME HOME="$folder/home" XDG_DATA_HOME="$folder/home/data" \
            XDG_RUNTIME_DIR="$folder/home" PATH="$root/usr/bin:$PATH" QT_QPA_PLATFORM=offscreen "$@"
    }
    make_folder bare
    use_cli bare
    bare timeout 60 k520 --until-painted || fail "the desktop program did not paint its window"
}

clean_up() {
    rm -rf --one-file-system "$root" "${folder:?}/home" "$folder/display" "$folder/Xvfb_screen0"
    [[ -z ${SUDO_UID:-} ]] || chown --recursive "$SUDO_UID" "$folder"
}

case ${1:-} in
    inside)
        in_clean_root
        exit
        ;;
    "") ;;
    *)
        echo "usage: packaging/try-install.sh" >&2
        exit 2
        ;;
esac
if ((EUID != 0)) && sudo -n true 2>/dev/null; then
    exec sudo -n "$here"
fi
own_space=(unshare --mount --propagation private --pid --fork --kill-child --mount-proc)
trap clean_up EXIT
clean_up
mkdir -p "$folder"
if ((EUID != 0)); then
    in_bare_folder "that needs root rights"
elif ! "${own_space[@]}" unshare --net true 2>/dev/null; then
    in_bare_folder "this machine does not let its administrator make namespaces"
else
    "${own_space[@]}" "$here" inside
fi
say "the packages can be installed and used"
