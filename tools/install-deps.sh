#!/usr/bin/env bash
# SPDX-FileCopyrightText: 2026 The Vireo authors
# SPDX-License-Identifier: Apache-2.0
#
# Installs the Debian packages of tools/debian-packages.txt that are missing, and the renderer
# into build/renderer. Does nothing, and says nothing, when all is there. Without the renderer
# all else builds and works: that it could not be fetched is a line, not a failure.
#
#   tools/install-deps.sh           install what is missing
#   tools/install-deps.sh --check   list what is missing, exit 1 if anything is
#
# VIREO_SKIP_DEPS=1 skips the whole step, for systems that bring the same
# programs and libraries under other package names.

set -euo pipefail

list="$(dirname "${BASH_SOURCE[0]}")/debian-packages.txt"

usage() {
    echo "usage: $0 [--check] [--help]"
}

fail() {
    echo "install-deps: $*" >&2
    exit 1
}

check_only=0
case "${1-}" in
    "") ;;
    --check) check_only=1 ;;
    -h | --help)
        usage
        exit 0
        ;;
    *)
        usage >&2
        exit 2
        ;;
esac
if [ "$#" -gt 1 ]; then
    usage >&2
    exit 2
fi

if [ "${VIREO_SKIP_DEPS:-0}" = 1 ]; then
    exit 0
fi

[ -r "$list" ] || fail "cannot read $list"

if ! command -v dpkg-query >/dev/null 2>&1; then
    fail "this is not a Debian system: install what docs/dependencies.md lists by your" \
        "system's own means, then set VIREO_SKIP_DEPS=1"
fi

packages=()
while IFS= read -r line || [ -n "$line" ]; do
    line="${line%%#*}"
    read -r name _ <<<"$line" || true
    [ -z "$name" ] || packages+=("$name")
done <"$list"

missing=()
for package in "${packages[@]}"; do
    # One line for each installed architecture; any one of them will do.
    state="$(dpkg-query -W -f='${db:Status-Status}\n' "$package" 2>/dev/null || true)"
    if ! grep -qx installed <<<"$state"; then
        missing+=("$package")
    fi
done

if [ "$check_only" -eq 1 ]; then
    [ "${#missing[@]}" -eq 0 ] && exit 0
    printf '%s\n' "${missing[@]}"
    exit 1
fi

install_packages() {
    as_root=()
    if [ "$(id -u)" -ne 0 ]; then
        command -v sudo >/dev/null 2>&1 ||
            fail "not root and no sudo here; as root, run: apt-get install ${missing[*]}"
        as_root=(sudo)
    fi

    echo "install-deps: installing ${missing[*]}" >&2

    # The package manager's own output goes to standard error, so that a caller's
    # standard output stays what the caller prints.
    wait_for_lock=(-o DPkg::Lock::Timeout=300)
    "${as_root[@]}" apt-get "${wait_for_lock[@]}" -qq update >&2 ||
        echo "install-deps: package lists could not be refreshed, trying the ones at hand" >&2
    "${as_root[@]}" env DEBIAN_FRONTEND=noninteractive \
        apt-get "${wait_for_lock[@]}" -qq -y --no-install-recommends install "${missing[@]}" >&2 ||
        fail "could not install: ${missing[*]}"
}

[ "${#missing[@]}" -eq 0 ] || install_packages

root="$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)"
installer="$root/lux/render/install_renderer.py"
if [ -e "$installer" ] && [ ! -d "$root/build/renderer" ]; then
    # The system's own Python, which the programs take too.
    /usr/bin/python3 "$installer" "$root/build/renderer" \
        "$root/lux/render/renderer-requirements.txt" ||
        echo "install-deps: pictures of materials need the renderer, all else goes without" >&2
fi
