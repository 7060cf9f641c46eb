#!/usr/bin/env bash
# outside.sh CMAKE BUILD-TREE COMPILER TOOLCHAIN EMULATOR SANITIZERS: installs the library into a
# temporary folder and builds and runs a small program against it, through CMake and pkg-config.
set -eu
cmake=$1 build=$2 compiler=$3 toolchain=$4 emulator=$5 sanitizers=$6
here=$(cd "$(dirname "$0")" && pwd)
work=$(mktemp -d "${TMPDIR:-/tmp}/zdm-outside.XXXXXX")
trap 'rm -rf "$work"' EXIT

"$cmake" --install "$build" --prefix "$work/prefix" >/dev/null
options=(-DCMAKE_PREFIX_PATH="$work/prefix" -DCMAKE_BUILD_TYPE=Debug)
# A cross-compiler looks for packages below its own root only; it is named the prefix as one.
[ -n "$toolchain" ] && options+=(-DCMAKE_TOOLCHAIN_FILE="$toolchain" -DCMAKE_EXE_LINKER_FLAGS=-static
                                 -DCMAKE_FIND_ROOT_PATH_MODE_PACKAGE=BOTH
                                 -Dzdm_DIR="$work/prefix/lib/cmake/zdm")
[ -z "$toolchain" ] && options+=(-DCMAKE_CXX_COMPILER="$compiler")
[ -n "$sanitizers" ] && options+=(-DCMAKE_CXX_FLAGS="-fsanitize=$sanitizers")
"$cmake" -G Ninja -S "$here/outside" -B "$work/tree" "${options[@]}" >"$work/log" 2>&1 &&
  "$cmake" --build "$work/tree" >>"$work/log" 2>&1 || { cat "$work/log"; exit 1; }

if [ -n "$emulator" ]; then
  cp "$work/prefix/bin/zdm.dll" "$work/tree"
  "$emulator" "$work/tree/outside.exe"
else
  "$work/tree/outside"
  "$work/tree/quickstart" "$work/quickstart.zdm" >/dev/null
  "$work/prefix/bin/zdm" classes >/dev/null
  PKG_CONFIG_PATH=$(dirname "$(find "$work/prefix" -name zdm.pc)")
  export PKG_CONFIG_PATH
  flags=$(pkg-config --cflags --libs zdm)
  lib=$(pkg-config --variable=libdir zdm)
  # shellcheck disable=SC2086
  "$compiler" -std=c++20 ${sanitizers:+-fsanitize=$sanitizers} "$here/outside/outside.cpp" \
    -o "$work/plain" $flags -Wl,-rpath,"$lib"
  "$work/plain"
  # shellcheck disable=SC2046,SC2086
  "$compiler" -std=c++20 ${sanitizers:+-fsanitize=$sanitizers} "$here/../../examples/quickstart.cpp" \
    -o "$work/quick" $(pkg-config --cflags --libs zdm-document) -Wl,-rpath,"$lib"
  "$work/quick" "$work/quick.zdm" >/dev/null
  pkg-config --libs zdm-drawing >/dev/null
  # Every installed header is whole.
  find "$work/prefix/include/zdm" -name '*.h' -printf '#include <%P>\n' | sort >"$work/all.cpp"
  # shellcheck disable=SC2086
  "$compiler" -std=c++20 -fsyntax-only "$work/all.cpp" $flags
fi
