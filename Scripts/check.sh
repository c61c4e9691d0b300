#!/usr/bin/env bash
# The checks before a commit: format, include rule, lint, and ./test (with --full passed on).
set -euo pipefail
cd "$(dirname "$0")/.."
Scripts/format.sh --check
Scripts/check_includes.py
./test "$@"
command -v clang-tidy >/dev/null || { echo "clang-tidy is missing: apt-get install clang-tidy" >&2; exit 1; }
# The lint can't read the headers that g++ has precompiled.
mkdir -p build/lint
sed 's/-Winvalid-pch -include [^ ]*cmake_pch.hxx//' build/compile_commands.json >build/lint/compile_commands.json
# Sources for many instruction sets at once are left to the compilers' warnings: each would be read once a set.
find Library CommandLine Application Tests Benchmarks Documentation -name '*.cpp' ! -name '*Simd.cpp' ! -path 'Tests/Fuzz/*' -print0 |
    xargs -0 -n 4 -P "$(nproc)" clang-tidy --quiet -p build/lint
