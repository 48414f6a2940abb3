#!/usr/bin/env bash
# Builds the library and its inspector, then shows one exchange: a client's motion-detection settings as
# they come in, the structure the firmware works with, and the reply; then a firmware that answers by text
# alone, with what that takes of its heap. With arguments, hands them to the
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
    cmake --build "$build" --target netparam netpublic netpublic_host; } >"$log" 2>&1; then
    cat "$log" >&2
    echo "The build failed." >&2
    exit 1
fi

if [ $# -gt 0 ]; then
    exec "$build/tools/netparam/netparam" "$@"
fi
cd "$top"
"$build/tools/netparam/netparam" exchange md examples/motion_request.xml --ext examples/motion_extension.xml
echo
echo "By text alone (tests/consumer/by_text.cpp):"
"${CXX:-c++}" -std=c++17 -Inetpublic/include -Ihost -I"$build/include" tests/consumer/by_text.cpp -o "$build/by_text" \
    "$build/host/libnetpublic_host.a" -L"$build" -lnetpublic -ltinyxml -Wl,-rpath,"$build"
exec "$build/by_text"
