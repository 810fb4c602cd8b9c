#!/usr/bin/env bash
# Installs the Debian package DEB into a root that holds nothing but the C library, uses it there and
# removes it again:
#
#   tests/package/check_deb.sh DEB
set -euo pipefail
# shellcheck source=scripts/lib.sh
source "$(dirname "${BASH_SOURCE[0]}")/../../scripts/lib.sh"

deb=$(realpath -- "$1")
root=$(mktemp -d)
trap 'as_root rm -rf "$root"' EXIT

# The system's own C library, known to the root's dpkg as what it is.
make_root() {
    mkdir -p "$root/var/lib/dpkg/updates" "$root/var/lib/dpkg/info" "$root/usr/lib" \
        "$root/usr/lib64" "$root/tmp"
    ln -s usr/lib "$root/lib"
    ln -s usr/lib64 "$root/lib64"
    dpkg -s libc6 | sed '/^Depends:/d; /^Recommends:/d' >"$root/var/lib/dpkg/status"
    dpkg -L libc6 >"$root/var/lib/dpkg/info/libc6:amd64.list"
    grep -E '^(/usr)?/lib(64)?/.*[.]so' "$root/var/lib/dpkg/info/libc6:amd64.list" |
        tar -ch -T - -f - 2>/dev/null | tar -C "$root" -xf -
}

files() {
    (cd "$root" && find . -path ./var/lib/dpkg -prune -o -print | sort)
}

make_root
before=$(files)
as_root dpkg --root="$root" -i "$deb" >/dev/null
help=$(as_root chroot "$root" /usr/bin/tonvale-calc --help) ||
    die "the program does not run in a clean root"
commands=$(sed -n 's/^  tonvale-calc \([a-z-]*\).*/\1/p' <<<"$help")
[[ $commands == *verifica* ]] || die "the program tells nothing of its commands"
[[ $(as_root chroot "$root" /usr/bin/tonvale-calc --version) == "tonvale-calc $(project_version)" ]] ||
    die "the program has another version"

# The manual page has no faults, and tells of every command that there is.
page=$root/usr/share/man/man1/tonvale-calc.1.gz
faults=$(zcat "$page" | groff -man -ww -z -K utf8 2>&1)
[[ -z $faults ]] || die "the manual page: $faults"
text=$(zcat "$page" | groff -man -T utf8 -K utf8 -P -cbou)
for command in $commands; do
    grep -q "tonvale-calc  *$command" <<<"$text" || die "the manual page misses $command"
done
"$ROOT/tests/package/check_completion.sh" "$root/usr/bin/tonvale-calc" \
    "$root/usr/share/bash-completion/completions/tonvale-calc" || die "the completion is wrong"

as_root dpkg --root="$root" --purge tonvale-calc >/dev/null
left=$(comm -13 <(say "$before") <(files))
[[ -z $left ]] || die "left behind: $left"
