#!/usr/bin/env bash
# Builds what people install, and leaves it in build/packages/:
#
#   ./package.sh
#
# an installer and an archive of the Windows programs, a Debian package and an archive of
# tonvale-calc for Linux, and their SHA256SUMS. Packages that are missing are installed first.
#
# The same sources give the same bytes wherever and whenever they are built: files bear the date of
# the commit (or that of SOURCE_DATE_EPOCH), and come in the order of their names.
set -euo pipefail
# shellcheck source=scripts/lib.sh
source "$(dirname "${BASH_SOURCE[0]}")/scripts/lib.sh"

PACKAGES=$ROOT/build/packages
STAGE=$ROOT/build/package-files
VERSION=$(project_version)
DEBIAN_ADDRESS=sviluppatori@tonvale.invalid
SOURCE_DATE_EPOCH=${SOURCE_DATE_EPOCH:-$(git -C "$ROOT" log -1 --format=%ct)}
export SOURCE_DATE_EPOCH TZ=UTC
umask 022

# Builds targets $2... of the preset $1. A configuration that is there already serves as well.
build() {
    local preset=$1
    shift
    if [[ ! -f $ROOT/build/$preset/build.ninja ]]; then
        quietly "$ROOT/build/logs/package-configure.log" \
            cmake -S "$ROOT" --preset "$preset" -DTONVALE_TESTS=OFF -DTONVALE_BENCHMARKS=OFF
    fi
    say "Building for $preset"
    quietly "$ROOT/build/logs/package-build.log" cmake --build "$ROOT/build/$preset" --target "$@"
}

# Everything below the folder $1 gets the date of the sources.
set_dates() {
    find "$1" -exec touch -h -d "@$SOURCE_DATE_EPOCH" {} +
}

# What lies below the folder $1, as "." and names that follow it, in order.
sorted_files() {
    (cd "$1" && find . -type f -printf '%P\n' | LC_ALL=C sort)
}

# Text files of Windows end their lines with CR LF.
install_windows_text() {
    sed 's/$/\r/' "$1" >"$2"
}

stage_windows() {
    local folder=$1
    mkdir -p "$folder"
    install -m 755 "$ROOT/build/windows/app/tonvale.exe" \
        "$ROOT/build/windows/calc/tonvale-calc.exe" "$folder"
    install -m 644 "$ROOT/resources/help/tonvale.hlp" "$folder"
    install_windows_text "$ROOT/LICENSE" "$folder/LICENSE.txt"
}

make_setup() {
    local folder=$STAGE/setup
    stage_windows "$folder"
    set_dates "$folder"
    quietly "$ROOT/build/logs/makensis.log" "$ROOT/packaging/make_setup.sh" "$VERSION" "$folder" \
        "$PACKAGES/tonvale-$VERSION-setup.exe"
}

make_zip() {
    local name=tonvale-$VERSION
    stage_windows "$STAGE/zip/$name"
    install_windows_text "$ROOT/packaging/LEGGIMI.txt" "$STAGE/zip/$name/LEGGIMI.txt"
    mkdir "$STAGE/zip/$name/esempi"
    install -m 644 "$ROOT"/examples/* "$STAGE/zip/$name/esempi"
    set_dates "$STAGE/zip"
    sorted_files "$STAGE/zip" |
        (cd "$STAGE/zip" && zip -X -9 -q "$PACKAGES/tonvale-$VERSION-windows.zip" -@)
}

# The companion, its manual page and its completion below the folder $1.
stage_linux() {
    local prefix=$1
    mkdir -p "$prefix/bin" "$prefix/share/man/man1" "$prefix/share/bash-completion/completions"
    install -m 755 "$ROOT/build/linux/calc/tonvale-calc" "$prefix/bin"
    "$prefix/bin/tonvale-calc" --help |
        awk -v version="$VERSION" -v date="$(date -u -d "@$SOURCE_DATE_EPOCH" +%F)" \
            -f "$ROOT/packaging/man_page.awk" |
        gzip -9n >"$prefix/share/man/man1/tonvale-calc.1.gz"
    install -m 644 "$ROOT/packaging/tonvale-calc.bash" \
        "$prefix/share/bash-completion/completions/tonvale-calc"
}

make_tar() {
    local name=tonvale-calc-$VERSION
    stage_linux "$STAGE/tar/$name"
    install -m 644 "$ROOT/LICENSE" "$STAGE/tar/$name"
    tar -C "$STAGE/tar" --format=ustar --sort=name --mtime="@$SOURCE_DATE_EPOCH" \
        --owner=0 --group=0 --numeric-owner -c "$name" |
        gzip -9n >"$PACKAGES/$name-linux-x86_64.tar.gz"
}

# The version of the C library that the program $1 asks for.
needed_c_library() {
    objdump -T "$1" | grep -o 'GLIBC_[0-9.]*' | sort -uV | tail -n 1 | cut -d _ -f 2
}

write_debian_papers() {
    local doc=$1 author='Gli sviluppatori di Tonvale'
    mkdir -p "$doc"
    {
        say 'Format: https://www.debian.org/doc/packaging-manuals/copyright-format/1.0/'
        say 'Upstream-Name: Tonvale'
        say
        say 'Files: *'
        say "Copyright: 2026 $author"
        say 'License: Expat'
        sed -n '/^Permission/,$ { s/^$/./; s/^/ /; p }' "$ROOT/LICENSE"
    } >"$doc/copyright"
    {
        printf 'tonvale-calc (%s) stable; urgency=medium\n\n' "$VERSION"
        printf '  * Versione %s.\n\n' "$VERSION"
        printf ' -- %s <%s>  %s\n' "$author" "$DEBIAN_ADDRESS" \
            "$(LC_ALL=C date -u -R -d "@$SOURCE_DATE_EPOCH")"
    } | gzip -9n >"$doc/changelog.gz"
}

make_deb() {
    local root=$STAGE/deb
    stage_linux "$root/usr"
    write_debian_papers "$root/usr/share/doc/tonvale-calc"
    mkdir "$root/DEBIAN"
    (cd "$root" && sorted_files . | grep -v '^DEBIAN/' | xargs md5sum >DEBIAN/md5sums)
    cat >"$root/DEBIAN/control" <<EOF
Package: tonvale-calc
Version: $VERSION
Architecture: amd64
Maintainer: Gli sviluppatori di Tonvale <$DEBIAN_ADDRESS>
Installed-Size: $(du -sk --apparent-size --exclude=DEBIAN "$root" | cut -f 1)
Depends: libc6 (>= $(needed_c_library "$root/usr/bin/tonvale-calc"))
Section: science
Priority: optional
Description: noise exposure and hearing loss on the command line (in Italian)
 Recomputes the data files of Tonvale, a Windows program for occupational
 health engineers, checks that the results saved in them are those of their
 data, draws them and makes registers of whole folders; predicts hearing loss
 after ISO 1999 and the damage that Italian tables tell of it.
EOF
    set_dates "$root"
    quietly "$ROOT/build/logs/dpkg-deb.log" dpkg-deb --root-owner-group -Zxz --threads-max=1 \
        --build "$root" "$PACKAGES/tonvale-calc_${VERSION}_amd64.deb"
}

main() {
    [[ $# -eq 0 ]] || {
        say "Usage: ./package.sh" >&2
        exit 2
    }
    cd "$ROOT"
    ensure_packages "${PACKAGE_PACKAGES[@]}"
    build windows tonvale tonvale-calc
    build linux tonvale-calc
    "$ROOT/scripts/check-executables.sh" build/windows/app/tonvale.exe \
        build/windows/calc/tonvale-calc.exe || die "the programs are not as a release has to be"
    rm -rf "$PACKAGES" "$STAGE"
    mkdir -p "$PACKAGES"
    make_setup
    make_zip
    make_tar
    make_deb
    (cd "$PACKAGES" && sha256sum tonvale* >SHA256SUMS && cat SHA256SUMS)
}

main "$@"
