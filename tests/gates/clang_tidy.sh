#!/usr/bin/env bash
# Runs clang-tidy over the sources below some directories, as many at once as there are processors.
#   clang_tidy.sh BUILD_DIR DIRECTORY...
set -euo pipefail
export build=$1
shift
# clang does not know these options of gcc.
sed -i "s/ -fno-tree-pre -fno-gcse//" "$build/compile_commands.json"
# shellcheck disable=SC2016 # expanded by the inner shell
find "$@" -name '*.cpp' -print0 | xargs -0 -r -n 1 -P "$(nproc)" bash -c '
    set -o pipefail
    clang-tidy-14 --quiet --extra-arg=-fconstexpr-steps=67108864 -p "$build" "$1" 2>&1 | { grep -E ": (error|warning): " || true; }' tidy
