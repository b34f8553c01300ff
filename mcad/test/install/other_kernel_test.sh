#!/bin/bash
# other_kernel_test.sh BUILD CXX SOURCE: builds the library on another modelling kernel, shared and as an
# archive, and uses it from an installation. The other kernel is the bundled one, as a library of its own whose
# headers lie in another folder.
set -euo pipefail
build=$1 cxx=$2 source=$3
here=$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)

kernel=$(mktemp -d)
trap 'rm -rf "$kernel"' EXIT
mkdir "$kernel/other_kernel"
cd "$kernel"
for file in "$source"/mcad/src/platform/acis/*; do
    sed 's:"platform/acis/:"other_kernel/:' "$file" >"other_kernel/${file##*/}"
done
flags=(-std=c++20 -fPIC)
[[ $("$cxx" --version) == *clang* ]] || flags+=(-fno-gnu-unique) # it can be unloaded
printf '%s\0' other_kernel/*.cpp |
    xargs -0 -P "$(nproc)" -I FILE ${CMAKE_CXX_COMPILER_LAUNCHER:+"$CMAKE_CXX_COMPILER_LAUNCHER"} \
        "$cxx" "${flags[@]}" -I. -c FILE -o FILE.o
"$cxx" -shared -Wl,-soname,libother_kernel.so other_kernel/*.o -o libother_kernel.so

sed -n 's:^#include "platform/acis/:#include "other_kernel/:p' "$source/mcad/src/platform/acis/acis.h" \
    >zeq_acis.h
cat >zeq_acis.cmake <<'END'
add_library(zeq::acis SHARED IMPORTED GLOBAL)
set_target_properties(zeq::acis PROPERTIES IMPORTED_LOCATION ${CMAKE_CURRENT_LIST_DIR}/libother_kernel.so
  INTERFACE_INCLUDE_DIRECTORIES ${CMAKE_CURRENT_LIST_DIR})
END
cat >zeq_acis.pc <<'END'
Name: zeq_acis
Description: Another modelling kernel
Version: 1
Cflags: -I${pcfiledir}
Libs: -L${pcfiledir} -lother_kernel -Wl,-rpath,${pcfiledir}
END

for shared in ON OFF; do
    PKG_CONFIG_PATH=$kernel "$here/install_test.sh" "$build" "$cxx" "$source" -G Ninja \
        -DZEQ_ACIS_DIR="$kernel" -DBUILD_SHARED_LIBS="$shared" -DZEQ_BUILD_TOOLS=OFF -DZEQ_BUILD_TESTS=OFF \
        -DCMAKE_BUILD_TYPE=Debug
done
