#!/usr/bin/env bash
# Builds the benchmarks optimised, runs them and prints the ratios.
#   bench/run.sh                       all of them, some minutes
#   bench/run.sh --filter REGEX        some of them
#   bench/run.sh --plot                and draws docs/benchmarks.svg
#   bench/run.sh --count               instructions instead of time: the same in every run, messages only
# The results stay in build/bench/benchmarks.json. Entries are run in random order, several times each, and
# the best time counts, so that what else the machine does decides little.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."
# shellcheck source=packaging/packages.sh
. packaging/packages.sh

filter=.
plot=no
count=no
while [ $# -gt 0 ]; do
    case $1 in
    --filter)
        filter=${2:?--filter needs a regular expression}
        shift
        ;;
    --plot) plot=yes ;;
    --count) count=yes ;;
    *)
        sed -n '2,8s/^# \{0,1\}//p' "${BASH_SOURCE[0]}"
        exit 2
        ;;
    esac
    shift
done

install_packages "${build_packages[@]}" "${bench_packages[@]}"
build=build/bench
mkdir -p $build
results=$build/benchmarks.json
target=netpublic_bench
[ "$count" = no ] || target=netpublic_count
cmake -S . -B $build -G Ninja -DCMAKE_BUILD_TYPE=RelWithDebInfo -DNETPUBLIC_BUILD_TESTS=OFF \
    -DNETPUBLIC_BUILD_TOOLS=OFF -DNETPUBLIC_BUILD_BENCH=ON >$build.log 2>&1 || { cat $build.log && exit 1; }
grep "^-- .*enchmarks" $build.log || true
cmake --build $build --target $target >$build.log 2>&1 || { cat $build.log && exit 1; }

if [ "$count" = yes ]; then
    python3 bench/count.py $build/bench/netpublic_count $build/counts.json
    results=$build/counts.json
else
    $build/bench/netpublic_bench --benchmark_filter="$filter" --benchmark_min_time=0.01 --benchmark_repetitions=9 \
        --benchmark_enable_random_interleaving=true --benchmark_out=$results --benchmark_out_format=json \
        >/dev/null 2>$build.log || { cat $build.log && exit 1; }
fi
python3 bench/report.py $results
if [ "$plot" = yes ]; then
    /usr/bin/python3 bench/plot.py $results docs/benchmarks.svg
    echo "drawn: docs/benchmarks.svg"
fi
