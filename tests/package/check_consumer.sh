#!/usr/bin/env bash
# Installs the build into a scratch prefix and builds a small C program against
# it twice, through find_package(zylcc) and through pkg-config, then runs both.
# This is what a downstream user does; it catches a missing header, a broken
# export set, a wrong path in zylcc.pc or a library that cannot be found.
#
# Settings come from the environment (set by tests/package/CMakeLists.txt):
#   ZYL_BUILD_DIR ZYL_CONSUMER_DIR ZYL_WORK_DIR ZYL_LIBDIR ZYL_VERSION
#   ZYL_GENERATOR ZYL_CC ZYL_CFLAGS ZYL_LDFLAGS ZYL_TOOLCHAIN ZYL_PKG_CONFIG
set -euo pipefail

work=$ZYL_WORK_DIR
prefix=$work/prefix
libdir=$prefix/$ZYL_LIBDIR
rm -rf "$work"
mkdir -p "$work"

echo "== install into $prefix"
cmake --install "$ZYL_BUILD_DIR" --prefix "$prefix" >"$work/install.log"

echo "== find_package(zylcc)"
config_args=(-G "$ZYL_GENERATOR" -DCMAKE_PREFIX_PATH="$prefix"
             -DCMAKE_C_COMPILER="$ZYL_CC" -DCMAKE_C_FLAGS="$ZYL_CFLAGS"
             -DCMAKE_EXE_LINKER_FLAGS="$ZYL_LDFLAGS")
[[ -n "$ZYL_TOOLCHAIN" ]] && config_args+=(-DCMAKE_TOOLCHAIN_FILE="$ZYL_TOOLCHAIN")
cmake -S "$ZYL_CONSUMER_DIR" -B "$work/cmake" "${config_args[@]}" >"$work/configure.log" ||
  { cat "$work/configure.log"; exit 1; }
# A zylcc installed elsewhere on the system must not stand in for this one.
found=$(sed -n 's/^zylcc_DIR:PATH=//p' "$work/cmake/CMakeCache.txt")
if [[ "$found" != "$prefix"/* ]]; then
  echo "find_package(zylcc) found '$found', not the package in $prefix"
  exit 1
fi
cmake --build "$work/cmake"
"$work/cmake/consumer"

echo "== pkg-config zylcc"
export PKG_CONFIG_PATH=$libdir/pkgconfig
modversion=$("$ZYL_PKG_CONFIG" --modversion zylcc)
if [[ "$modversion" != "$ZYL_VERSION" ]]; then
  echo "pkg-config reports version '$modversion', expected '$ZYL_VERSION'"
  exit 1
fi
flags=$("$ZYL_PKG_CONFIG" --cflags --libs zylcc)
echo "flags: $flags"
# shellcheck disable=SC2086  # the compiler and pkg-config flags are word lists
$ZYL_CC $ZYL_CFLAGS "$ZYL_CONSUMER_DIR/main.c" $flags $ZYL_LDFLAGS \
  -Wl,-rpath,"$libdir" -o "$work/consumer-pc"
"$work/consumer-pc"
