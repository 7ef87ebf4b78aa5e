# Shared by run, test and the other commands. Source it from the repository's root.
# shellcheck shell=bash

fail() {
    echo "$(basename "$0"): $1" >&2
    exit "${2:-1}"
}

# packages_of SECTION...: the names in these sections of scripts/packages.txt.
packages_of() {
    awk -v sections=" $* " '
        /^#/ || NF == 0 { next }
        /^\[/ { section = substr($1, 2, length($1) - 2); next }
        index(sections, " " section " ") { print $1 }' scripts/packages.txt
}

# install_packages SECTION...: installs what is missing of these sections.
install_packages() {
    local wanted missing log
    wanted=$(packages_of "$@")
    # shellcheck disable=SC2086
    missing=$(comm -23 <(tr ' ' '\n' <<<"$wanted" | sort -u) \
        <(dpkg-query -W -f '${db:Status-Abbrev} ${Package}\n' $wanted 2>/dev/null |
            awk '$1 == "ii" { print $2 }' | sort -u))
    [ -z "$missing" ] && return
    local as_root=()
    if [ "$(id -u)" -ne 0 ]; then
        command -v sudo >/dev/null || fail "packages are missing and only root can install them: $(xargs <<<"$missing")"
        as_root=(sudo)
    fi
    log=$(mktemp)
    echo "Installing $(wc -w <<<"$missing") packages from Debian (once)..."
    # shellcheck disable=SC2086
    if ! { "${as_root[@]}" apt-get update &&
        "${as_root[@]}" env DEBIAN_FRONTEND=noninteractive apt-get install -y --no-install-recommends $missing; } >"$log" 2>&1; then
        fail "the packages could not be installed; is there a network? The details are in $log."
    fi
    rm -f "$log"
}

# install_modules FROM TO: what the lock file in FROM names, from npm, into TO, unless it is there.
install_modules() {
    command -v npm >/dev/null || install_packages npm
    mkdir -p "$2"
    cmp -s "$1/package-lock.json" "$2/installed" && return
    echo "Installing what $1 needs (once)..."
    cp "$1"/*.json "$2/"
    npm --prefix "$2" ci --ignore-scripts --no-audit --no-fund >"$2/log" 2>&1 ||
        fail "it could not be installed; is there a network? The details are in $2/log."
    cp "$1/package-lock.json" "$2/installed"
}

# build PRESET TARGET...: configures when needed and builds; quiet unless something fails.
build() {
    local preset=$1 folder=build log
    shift
    [ "$preset" = dev ] || folder=build-$preset
    mkdir -p "$folder"
    log=$folder/build.log
    if [ ! -f "$folder/build.ninja" ]; then
        cmake --preset "$preset" >"$log" 2>&1 || {
            cat "$log" >&2
            fail "the build could not be set up."
        }
    fi
    if [ -t 1 ]; then
        ninja -C "$folder" "$@" | tee "$log" | sed -un 's/^\(\[[0-9]*\/[0-9]*\]\).*/\1/p' |
            while read -r step; do printf '\rBuilding %s ' "$step"; done
        local status=${PIPESTATUS[0]}
        printf '\r\033[K'
    else
        ninja -C "$folder" "$@" >"$log" 2>&1
        local status=$?
    fi
    if [ "$status" -ne 0 ]; then
        grep -vE '^\[[0-9]+/[0-9]+\] ' "$log" >&2
        fail "the build failed; the whole output is in $log."
    fi
}
