#!/bin/bash
# install_test.sh BUILD CXX [SOURCE ARGUMENT...]: installs the build directory BUILD into a temporary prefix,
# then builds and runs the programs beside this script and the examples against it, through find_package and through
# pkg-config, and looks at what the library exports.
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
for program in "$work"/consumer/bin/*; do # bound at once, as a host may want it: every symbol is looked up
    LD_BIND_NOW=1 "$program"
done

PKG_CONFIG_PATH=$(dirname "$(find "$work/prefix" -name zeq_api.pc)"):${PKG_CONFIG_PATH-}
export PKG_CONFIG_PATH
read -ra flags < <(pkg-config --cflags --libs zeq_api)
"$cxx" -std=c++20 "$here/main.cpp" "$here/use_library.cpp" "${flags[@]}" -o "$work/by-pkg-config"
LD_LIBRARY_PATH=$(pkg-config --variable=libdir zeq_api) "$work/by-pkg-config"

examples=$here/../../../examples
cmake -S "$examples" -B "$work/examples" -DCMAKE_PREFIX_PATH="$work/prefix" -DCMAKE_CXX_COMPILER="$cxx"
cmake --build "$work/examples"
echo 12.5 >"$work/ball.txt"
# The translator's output is kept, to see afterwards which shared buffers it made.
printf '#!/bin/bash\n%q | tee %q\n' "$work/examples/translator" "$work/sent" >"$work/translator.sh"
chmod +x "$work/translator.sh"

expect_no_buffers() {
    local name
    for name in $(grep -aoE '[0-9a-f]{8}(-[0-9a-f]{4}){3}-[0-9a-f]{12}' "$work/sent"); do
        [[ ! -e $(echo /tmp/mp-v25-*)/$name ]] || { echo "the shared buffer $name is left" >&2; exit 1; }
    done
    [[ -n ${name-} ]] # there were some
}

"$work/examples/host" "$work/translator.sh" "$work/ball.txt" | tee "$work/printed"
diff - "$work/printed" <<'END'
root Ball of block 1
block 1 Ball
geometry of block 1: 1 top entities
ok 
END
expect_no_buffers
if "$work/examples/host" /bin/false "$work/ball.txt"; then exit 1; fi
read -ra flags < <(pkg-config --cflags --libs zeq_api zeq_transport)
"$cxx" -std=c++20 "$examples/translator.cpp" "${flags[@]}" -o "$work/translator-by-pkg-config"
LD_LIBRARY_PATH=$(pkg-config --variable=libdir zeq_api) "$work/translator-by-pkg-config" </dev/null

if [[ -e $work/prefix/bin/zeq ]]; then
    "$work/prefix/bin/zeq" --strict --translator "$work/translator.sh" import "$work/ball.txt" | tee "$work/printed"
    grep -q '^Geometry   1 body, 1 face (1 sphere)' "$work/printed"
    grep -q '^Topology   sound' "$work/printed"
    expect_no_buffers
fi
for program in zeq convexor; do # the installed programs find the library
    [[ ! -e $work/prefix/bin/$program ]] || "$work/prefix/bin/$program" --version
done

library=$(find "$work/prefix" -name libzeq_api.so)
[[ -n $library ]] || exit 0
own='3zeq|2mp|6mv_cvx|4OdDb|15ATTRIB_CONVEXOR|18ATTRIB_CONVEXOR_ID' functions='is_ATTRIB_CONVEXOR'
if ! pkg-config --print-requires zeq_api | grep -q zeq_acis; then
    own+='|[0-9]+[A-Z]|11acis_detail|9entity_of|[0-9]+(bs[23]|restore|subtype|kept|unknown)_'
    functions+='|api_|is_|read_|write_'
fi
foreign=$(nm -D --defined-only "$library" | cut -c18- |
    grep -vE "^[^u] _Z((NK?|T[VTIS]N?|GVN|Th.*_NK?)($own)|[0-9]+($functions))" || true)
if [[ -n $foreign ]]; then
    c++filt <<<"the library exports names that are not its own, or unique ones: $foreign" >&2
    exit 1
fi
