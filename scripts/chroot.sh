# Debian 12 in a folder, to build and try packages in. Source it after common.sh.
# shellcheck shell=bash

chroots=${XDG_CACHE_HOME:-$HOME/.cache}/trellisport-manager/debian-12
as_root=()
[ "$(id -u)" -eq 0 ] || as_root=(sudo)

# base_system: makes $chroots/base, a Debian without anything else, unless it is there; what is there
# gets Debian's updates once a day.
base_system() {
    if [ -e "$chroots/base.done" ]; then
        [ -z "$(find "$chroots/base.done" -mmin +1440)" ] || renew_base
        return
    fi
    command -v debootstrap >/dev/null || fail "debootstrap is missing."
    echo "Making a bare Debian 12 in $chroots (once)..."
    mkdir -p "$chroots"
    "${as_root[@]}" rm -rf "$chroots/base"
    "${as_root[@]}" debootstrap --variant=minbase bookworm "$chroots/base" >"$chroots/base.log" 2>&1 ||
        fail "Debian could not be fetched; the details are in $chroots/base.log."
    # This machine's own sources, so that both have the same versions.
    local file
    for file in sources.list sources.list.d/debian.sources; do
        [ ! -e "/etc/apt/$file" ] || "${as_root[@]}" cp "/etc/apt/$file" "$chroots/base/etc/apt/$file"
    done
    if [ -e /etc/apt/sources.list.d/debian.sources ] && [ ! -e /etc/apt/sources.list ]; then
        "${as_root[@]}" rm -f "$chroots/base/etc/apt/sources.list"
    fi
    inside "$chroots/base" apt-get update -q >>"$chroots/base.log" 2>&1 ||
        fail "Debian's package lists could not be fetched; the details are in $chroots/base.log."
    touch "$chroots/base.done"
}

# Without a network what is there does as well, and the next run tries again.
renew_base() {
    {
        inside "$chroots/base" apt-get update -q -o APT::Update::Error-Mode=any &&
            inside "$chroots/base" env DEBIAN_FRONTEND=noninteractive apt-get upgrade -q -y &&
            inside "$chroots/base" apt-get clean && touch "$chroots/base.done"
    } >"$chroots/base.log" 2>&1 ||
        echo "Debian's updates could not be fetched; going on without them ($chroots/base.log)."
}

# copy_of_base FOLDER: a new copy of the bare system.
copy_of_base() {
    base_system
    "${as_root[@]}" rm -rf "$1"
    "${as_root[@]}" cp -a --reflink=auto "$chroots/base" "$1"
}

# system_with NAME SECTION PREPARATION...: $chroots/NAME is a Debian with that section of
# packages.txt, made anew when the section has changed. The preparation is a command for inside, run
# before the packages are installed.
system_with() {
    local name=$1 wanted
    local root=$chroots/$name
    wanted=$(packages_of "$2")
    shift 2
    [ "$(cat "$root.done" 2>/dev/null)" != "$wanted" ] || return 0
    rm -f "$root.done"
    copy_of_base "$root"
    echo "Installing what $name needs (once)..."
    {
        inside "$root" "$@" && inside "$root" apt-get update -q &&
            # shellcheck disable=SC2086
            install_inside "$root" $wanted
    } >"$root.log" 2>&1 ||
        fail "the packages could not be installed; the details are in $root.log."
    echo "$wanted" >"$root.done"
}

# inside ROOT [--bind FOLDER]... COMMAND...: runs the command there; a bound folder is seen under its
# own path. What is mounted for it goes with it.
inside() {
    local root=$1 binds=()
    shift
    while [ "${1:-}" = --bind ]; do
        binds+=("$2")
        shift 2
    done
    "${as_root[@]}" cp -L /etc/resolv.conf "$root/etc/resolv.conf"
    # shellcheck disable=SC2016
    "${as_root[@]}" unshare --mount --propagation private bash -euc '
        root=$1 count=$2
        shift 2
        mount -t proc proc "$root/proc"
        for ((; count > 0; count--)); do
            mkdir -p "$root$1"
            mount --bind "$1" "$root$1"
            shift
        done
        exec chroot "$root" "$@"' inside "$root" "${#binds[@]}" "${binds[@]}" "$@"
}

# install_inside ROOT PACKAGE...
install_inside() {
    local root=$1
    shift
    inside "$root" env DEBIAN_FRONTEND=noninteractive \
        apt-get install -q -y --no-install-recommends "$@"
}
