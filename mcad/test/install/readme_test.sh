#!/bin/bash
# readme_test.sh SOURCE: the examples in README.md are the files that they are said to be.
set -euo pipefail
cd "$1"
for example in host translator; do
    sed -n "/^<!-- examples\/$example.cpp -->/,/^\`\`\`\$/p" README.md | sed '1,2d;$d' |
        diff - "examples/$example.cpp" || { echo "README.md shows another examples/$example.cpp" >&2; exit 1; }
done
