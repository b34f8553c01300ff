#!/bin/bash
# install_test.sh BUILD CXX [SOURCE ARGUMENT...]: installs the build directory BUILD into a temporary prefix,
# then builds and runs the program beside this script against it, through find_package and through pkg-config.
# With SOURCE, BUILD is first configured from there with these arguments of cmake, and built.
set -euo pipefail
build=$1 cxx=$2
here=$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)
if (($# > 2)); then
    (cd "$3" && cmake "${@:4}" -B "$build" -DCMAKE_CXX_COMPILER="$cxx")
    cmake --build "$build"
fi

work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
cmake --install "$build" --prefix "$work/made" >/dev/null
mv "$work/made" "$work/prefix" # an installation may be moved

cmake -S "$here" -B "$work/consumer" -DCMAKE_PREFIX_PATH="$work/prefix" -DCMAKE_CXX_COMPILER="$cxx" \
    -DCMAKE_BUILD_TYPE=Release
cmake --build "$work/consumer"
"$work/consumer/consumer"

PKG_CONFIG_PATH=$(dirname "$(find "$work/prefix" -name zeq_api.pc)"):${PKG_CONFIG_PATH-}
export PKG_CONFIG_PATH
read -ra flags < <(pkg-config --cflags --libs zeq_api)
"$cxx" -std=c++20 "$here/main.cpp" "${flags[@]}" -o "$work/by-pkg-config"
LD_LIBRARY_PATH=$(pkg-config --variable=libdir zeq_api) "$work/by-pkg-config"

for program in zeq convexor; do # the installed programs find the library
    [[ ! -e $work/prefix/bin/$program ]] || "$work/prefix/bin/$program" --version
done
