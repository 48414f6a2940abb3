#!/usr/bin/env bash
# Builds the library and its inspector, then shows one exchange: a client's motion-detection settings as
# they come in, the structure the firmware works with, and the reply. With arguments, hands them to the
# inspector instead:  ./demo.sh list
set -euo pipefail
top=$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)
# shellcheck source=packaging/packages.sh
. "$top/packaging/packages.sh"

install_packages "${build_packages[@]}"

build=$top/build/release
log=$build/demo.log
mkdir -p "$build"
[ -x "$build/tools/netparam/netparam" ] || echo "Building into build/release ..."
if ! { cmake -S "$top" --preset release -DNETPUBLIC_BUILD_TESTS=OFF -DNETPUBLIC_BUILD_BENCH=OFF &&
    cmake --build "$build" --target netparam; } >"$log" 2>&1; then
    cat "$log" >&2
    echo "The build failed." >&2
    exit 1
fi

if [ $# -gt 0 ]; then
    exec "$build/tools/netparam/netparam" "$@"
fi
cd "$top"
exec "$build/tools/netparam/netparam" exchange md examples/motion_request.xml --ext examples/motion_extension.xml
