#!/usr/bin/env bash
# Formats every C++ file of the project; with --check it changes nothing and fails where a file would change.
set -euo pipefail
cd "$(dirname "$0")/.."
mode=(-i)
[ "${1-}" != --check ] || mode=(--dry-run --Werror)
find Library CommandLine Application Tests Benchmarks Documentation \( -name '*.h' -o -name '*.cpp' \) -print0 | xargs -0 clang-format "${mode[@]}"
