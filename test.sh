#!/usr/bin/env bash
# The checks. Installs what is missing (Debian), builds below build/, ends with "N passed, N failed".
#   ./test.sh                  what finds most in a few minutes: one line a section
#   ./test.sh full             everything but the next two, with a line for each check
#   ./test.sh page promises
#   ./test.sh format armhf     some sections, with a line for each check
#   ./test.sh --update golden  writes the golden files anew; read the difference before committing it
set -uo pipefail
top=$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)
cd "$top" || exit 1
# shellcheck source=packaging/packages.sh
. packaging/packages.sh

quick_sections=(format structure golden inspector asan budgets)
more_sections=(build release memcheck growth tsan armhf consumer packages bench analysis coverage fuzz)
# By name only: a browser and a package of npm's are needed; the mutants rebuild the library two dozen times.
other_sections=(page promises)
gates=tests/gates
golden=tests/golden
size_goal=98304 # bytes; what the library is to shrink to
size_limit=132552 # what it must not grow beyond meanwhile; the file grows by whole pages
stack_limit=1024 # bytes
static_goal=32768 # bytes; ten messages in a statically linked firmware
static_limit=31744
most_tests=30 # percent of all code
least_lines=98 # percent that the tests must run
least_branches=95
fuzz_seconds=${FUZZ_SECONDS:-60}

passed=0
failed=0
failures=()
log=$(mktemp)
trap 'rm -f "$log"' EXIT

pass() {
    passed=$((passed + ${1:-1}))
}

fail() { # NAME [COUNT]
    failed=$((failed + ${2:-1}))
    failures+=("$1")
    printf 'FAILED  %s\n' "$1"
    sed 's/^/    /' "$log" | tail -n 60
}

each_check=yes # shown, or each section only
# What went well.
good() { # TEXT
    [ $each_check = no ] || printf 'ok      %s\n' "$1"
}

# Runs a command as one check; its output shows only when it fails.
check() { # NAME COMMAND...
    local name=$1 start=$SECONDS
    shift
    if "$@" >"$log" 2>&1; then
        pass
        good "$name ($((SECONDS - start)) s)"
    else
        fail "$name"
        return 1
    fi
}

# As check, and shows what the command found out.
measure() {
    check "$@" && { [ $each_check = no ] || sed 's/^/        /' "$log"; }
}

# A locale with a decimal comma, for the tests that numbers on the wire do not follow the locale.
comma_locale() {
    local directory=$top/build/locale
    [ -d "$directory/de_DE.UTF-8" ] || { mkdir -p "$directory" &&
        localedef --no-archive -i de_DE -f UTF-8 "$directory/de_DE.UTF-8" >&2; }
    echo "$directory"
}

# Runs a command once for each processor, each with its share of a GoogleTest runner's tests.
in_shares() { # COMMAND...
    local share shares outputs=() good=() bad=() processes=() status=0
    shares=$(nproc)
    for ((share = 0; share < shares; ++share)); do
        outputs+=("$(mktemp)")
        GTEST_TOTAL_SHARDS=$shares GTEST_SHARD_INDEX=$share "$@" >"${outputs[share]}" 2>&1 &
        processes+=($!)
    done
    for share in "${!processes[@]}"; do
        if wait "${processes[share]}"; then
            good+=("${outputs[share]}")
        else
            status=$?
            bad+=("${outputs[share]}")
        fi
    done
    cat "${good[@]}" "${bad[@]}" # what failed comes last, where it is looked for
    rm -f "${outputs[@]}"
    return $status
}

# Runs a GoogleTest runner and counts its tests.
check_tests() { # NAME COMMAND...
    local name=$1 start=$SECONDS passes bad skipped status=0
    shift
    LOCPATH=$(comma_locale) in_shares "$@" --gtest_brief=1 >"$log" 2>&1 || status=$?
    passes=$(awk '/^\[  PASSED  \] [0-9]+ test/ { sum += $4 } END { print sum + 0 }' "$log")
    bad=$(grep -c '^\[  FAILED  \] .* ([0-9]* ms)$' "$log")
    skipped=$(awk '/^\[  SKIPPED \] [0-9]+ test/ { sum += $4 } END { if (sum) print ", " sum " skipped" }' "$log")
    pass "$passes"
    if [ "$status" = 0 ] && [ "$passes" -gt 0 ]; then
        good "$name: $passes tests$skipped ($((SECONDS - start)) s)"
    else
        # A runner that dies, or leaks, fails although no test may have: one failure.
        fail "$name" $((bad > 0 ? bad : 1))
    fi
}

# Runs what says how many tests it ran: Python's unittest, or cram.
check_counted() { # NAME COMMAND...
    local name=$1 start=$SECONDS count
    shift
    if "$@" >"$log" 2>&1; then
        count=$(sed -nE 's/^(# )?Ran ([0-9]+) tests?.*/\2/p' "$log")
        pass "${count:-0}"
        good "$name: ${count:-0} tests ($((SECONDS - start)) s)"
    else
        fail "$name"
    fi
}

check_inspector() { # NETPARAM
    local file path
    path=$(dirname "$top/$1"):$PATH
    # What came instead of what was expected is left beside a transcript that fails, in NAME.t.err.
    check_counted "inspector, transcripts" env PATH="$path" cram3 --shell=/bin/bash tests/transcripts
    for file in tests/netparam*_test.py; do
        # Debian's Python, for whose packages packages.sh asks.
        check_counted "inspector, ${file#tests/}" /usr/bin/python3 "$file" "$1"
    done
}

sources() {
    local directories=() directory
    for directory in netpublic host tools tests fuzz bench; do
        [ -d "$directory" ] && directories+=("$directory")
    done
    find "${directories[@]}" \( -name '*.cpp' -o -name '*.h' -o -name '*.c' -o -name '*.inc' \) -print
}

configured=" "
configure() { # PRESET
    local options=(-DNETPUBLIC_BUILD_TESTS=ON)
    [ "$1" = fuzz ] && options=(-DNETPUBLIC_BUILD_TESTS=OFF)
    [ "$1" = armhf ] && options+=(-DNETPUBLIC_BUILD_TOOLS=OFF) # the packages build them for ARM, too
    [[ $configured == *" $1 "* ]] && return
    check "configure $1" cmake --preset "$1" "${options[@]}" && configured+="$1 "
}

build() { # PRESET TARGET...; no target: all
    local preset=$1 target targets=()
    shift
    configure "$preset" || return 1
    for target in "$@"; do
        targets+=(--target "$target")
    done
    check "build $preset${1:+: $*}" cmake --build "build/$preset" "${targets[@]}"
}

# What the installation takes from a build.
installables() {
    echo netpublic netpublic_host
    ! has tools/netparam || echo netparam
}

has() { # a directory that takes part in the build
    [ -f "$1/CMakeLists.txt" ]
}

section_format() {
    # shellcheck disable=SC2046 # no blanks in the tree's file names
    check "formatting" clang-format-14 --dry-run -Werror $(sources)
}

section_structure() {
    check "shell scripts" shellcheck -x demo.sh test.sh .ci/run packaging/*.sh $gates/*.sh
    check "promises are named by tests and fuzzers" python3 $gates/promises.py docs/security.md tests fuzz
    check "what breaks a promise stands in the sources" python3 $gates/promise_mutants.py --list
    check "includes never point up" python3 $gates/floors.py docs/architecture.md
    check "no message walks the XML itself" python3 $gates/domains.py docs/architecture.md
    check "limits, words and capacities as they were typed apart from the code" python3 $gates/limits.py tests/limits.txt $golden/tables.txt
    check "share of tests in the code" python3 $gates/share.py --most $most_tests
}

section_build() {
    build release
}

section_release() {
    build release && check_tests "tests (release)" build/release/tests/netpublic_tests
}

section_inspector() {
    local netparam=build/release/tools/netparam/netparam
    build release netparam || return
    check_inspector $netparam
    check "every example both ways and back, without uninitialised reads" reads_nothing_uninitialised $netparam
}

# 5: some files are no message's alone.
reads_nothing_uninitialised() { # NETPARAM
    valgrind -q --error-exitcode=9 "$1" check examples
    [ $? = 5 ]
}

section_asan() {
    ASAN_OPTIONS=detect_leaks=1:strict_string_checks=1:detect_stack_use_after_return=1:check_initialization_order=1
    UBSAN_OPTIONS=print_stacktrace=1
    export ASAN_OPTIONS UBSAN_OPTIONS
    build asan-ubsan netpublic_tests &&
        check_tests "tests (address, leak and undefined-behaviour sanitizers)" build/asan-ubsan/tests/netpublic_tests
    unset ASAN_OPTIONS UBSAN_OPTIONS
}

# What one thread could spoil for another: the tests that run threads.
section_tsan() {
    build tsan netpublic_thread_tests &&
        check_tests "tests (thread sanitizer)" build/tsan/tests/netpublic_thread_tests
}

# Uninitialised reads, in all tests. What replaces operator new, and what only runs for long, is left out.
section_memcheck() {
    local out='FaultTest.*:*Thread*:*Allocate*:HeaderTest.TheLibrary*:*NoBudget*:FloatText.*:*EveryCut'
    out+=":TruthTest.ValuesStand*:TruthTest.WrittenTrees" # the latter writes daylight saving as its initialiser leaves it: as the allocator gave the payload
    build release netpublic_tests && check_tests "tests (memcheck)" valgrind -q --error-exitcode=9 \
        build/release/tests/netpublic_tests --gtest_filter="-$out"
}

# Work grows as the input does: counted, not timed.
section_growth() {
    build release netpublic_growth && measure "linear growth" python3 $gates/growth.py build/release/tests/netpublic_growth
}

# Each promise of the security page, broken once: its check must notice.
section_promises() {
    measure "a mutant of each promise" python3 $gates/promise_mutants.py --work build/promises
}

section_armhf() {
    build armhf netpublic_tests && check_tests "tests (armhf, emulated)" qemu-arm build/armhf/tests/netpublic_tests
}

update=no
# Compares a command's output with a golden file, or writes the file. A name with a slash is one from the top.
check_golden() { # FILE COMMAND...
    local file=$golden/$1 fresh status=0
    [[ $1 != */* ]] || file=$1
    shift
    fresh=$(mktemp)
    if ! "$@" >"$fresh" 2>"$log"; then
        fail "golden $file: cannot be made"
    elif [ "$update" = yes ]; then
        mkdir -p "$(dirname "$file")" && cp "$fresh" "$file" && echo "written $file"
    else
        check "golden $file" diff -u "$file" "$fresh" || status=1
    fi
    rm -f "$fresh"
    return $status
}

installed_tree() {
    local tmp
    tmp=$(mktemp -d)
    DESTDIR=$tmp cmake --install "$1" --prefix /usr >/dev/null && (cd "$tmp" && find . ! -type d -printf '%P %y %l\n' | sed 's/ f $//; s/ l / -> /' | LC_ALL=C sort)
    rm -rf "$tmp"
}

section_golden() {
    # shellcheck disable=SC2046 # names without blanks
    build release $(installables) || return
    check_golden symbols.txt python3 $gates/exports.py --list build/release/libnetpublic.so
    if has tools/netparam; then
        local netparam=build/release/tools/netparam/netparam generated=tools/netparam/generated
        check_golden $generated/netparam.1 $netparam manual
        check_golden $generated/netparam.bash $netparam completion bash
        check_golden $generated/_netparam $netparam completion zsh
    fi
    check_golden installed.txt installed_tree build/release
    check_golden examples.txt python3 $gates/examples.py build/release/tools/netparam/netparam examples
    check_golden tables.txt build/release/tools/netparam/netparam describe --all --rows
    check_golden docs/messages.md build/release/tools/netparam/netparam describe --all --markdown --examples examples
    check_golden layout-x86_64.txt python3 $gates/layout.py x86_64-linux-gnu netpublic/include
    check_golden layout-armhf.txt python3 $gates/layout.py arm-linux-gnueabihf netpublic/include
}

library_size() {
    local stripped size
    stripped=$(mktemp)
    arm-linux-gnueabihf-strip --strip-unneeded -o "$stripped" "$1"
    size=$(stat -c %s "$stripped")
    rm -f "$stripped"
    echo "$size bytes stripped on armhf, $size_limit allowed, $size_goal wanted"
    [ "$size" -le "$size_limit" ]
}

section_budgets() {
    build armhf netpublic || return
    local objects=build/armhf/CMakeFiles/netpublic.dir
    measure "exports are what the headers declare" python3 $gates/exports.py build/armhf/libnetpublic.so netpublic/include
    measure "size" library_size build/armhf/libnetpublic.so
    measure "stack" python3 $gates/stack.py arm-linux-gnueabihf-readelf $objects $gates/stack_rules.txt $stack_limit
    measure "no static constructors, no writable data" python3 $gates/writable.py arm-linux-gnueabihf-objdump build/armhf/libnetpublic.so $objects
}

section_consumer() {
    # shellcheck disable=SC2046 # names without blanks
    build release $(installables) && check "consumer projects" $gates/consumer.sh build/release
    build armhf netpublic netpublic_host && check "consumer projects (armhf, emulated)" $gates/consumer.sh build/armhf armhf
    measure "ten messages in a static firmware" $gates/static.sh "$static_limit" "$static_goal"
    check "inside another project, shared and static" $gates/subproject.sh
    check "both layouts of TinyXML, and every mixture refused" $gates/tinyxml_layout.sh build/release
}

section_packages() {
    configure hardened && check "hardening, compiler lines" $gates/hardening.sh build/hardened
    build armhf-hardened netpublic && check "hardening (armhf)" $gates/hardening.sh build/armhf-hardened armhf
    check "Debian packages" packaging/test_packages.sh &&
        check "Debian packages (armhf, emulated)" packaging/test_packages.sh armhf
    check "Buildroot and Yocto recipes" packaging/test_recipes.sh
}

# The reference page in a browser.
section_page() {
    local axe=build/axe
    install_packages "${page_packages[@]}" && build release netparam || return
    if [ ! -f $axe/node_modules/axe-core/axe.min.js ]; then
        command -v npm >/dev/null || install_packages npm || return
        check "axe-core" npm install --silent --ignore-scripts --no-audit --no-fund --prefix $axe axe-core@4.14.1 || return
    fi
    # The system's own Python has the packages of Debian.
    check_counted "reference page" /usr/bin/python3 tests/page_test.py build/release/tools/netparam/netparam $axe/node_modules/axe-core/axe.min.js
}

# Each benchmark once: they assert what they time. bench/run.sh is for figures.
section_bench() {
    configure release || return
    cmake --build build/release --target help 2>/dev/null | grep '^netpublic_bench:' >/dev/null ||
        { echo "skipped: no Google Benchmark"; return; }
    build release netpublic_bench &&
        check "benchmarks, each once" build/release/bench/netpublic_bench --benchmark_min_time=0.0001
}

section_analysis() {
    mkdir -p build/cppcheck build/doc
    check "API documentation" doxygen docs/Doxyfile
    check "cppcheck" cppcheck --quiet --error-exitcode=1 --std=c++17 --inline-suppr -j "$(nproc)" --cppcheck-build-dir=build/cppcheck \
        --enable=warning,portability,performance --suppressions-list=$gates/cppcheck_suppressions.txt \
        -I netpublic/include -I netpublic/src -DNETPUBLIC_DESCRIBED=1 netpublic/src host
    check "configure analysis" cmake --preset release -B build/analysis -DNETPUBLIC_TOOLS_UNITY=OFF || return
    check "clang-tidy" $gates/clang_tidy.sh build/analysis netpublic/src host tools
}

section_coverage() {
    build coverage netpublic_tests || return
    find build/coverage -name '*.gcda' -delete
    check_tests "tests (coverage)" build/coverage/tests/netpublic_tests
    measure "coverage" python3 $gates/coverage.py build/coverage $gates/coverage_exceptions.txt "$least_lines" "$least_branches"
}

section_fuzz() {
    has fuzz || { echo "skipped: no fuzz targets yet"; return; }
    build fuzz fuzz_programs || return
    local state
    state=$(mktemp -d)
    measure "fuzzing, all targets in turns" env FUZZ_STATE="$state" FUZZ_MERGE=no fuzz/long.sh "$fuzz_seconds" "$(nproc)"
    # What was found is kept; a crash becomes an input in fuzz/regressions/TARGET.
    [ -z "$(ls -A "$state/found" 2>/dev/null)" ] || cp "$state"/found/* build/fuzz/
    rm -rf "$state"
}

sections=()
for argument in "$@"; do
    if [ "$argument" = --update ]; then
        update=yes
    elif [ "$argument" = full ]; then
        sections+=("${quick_sections[@]}" "${more_sections[@]}")
    elif [[ " ${quick_sections[*]} ${more_sections[*]} ${other_sections[*]} " == *" $argument "* ]]; then
        sections+=("$argument")
    else
        echo "No such section: $argument. There are: full, ${quick_sections[*]} ${more_sections[*]} ${other_sections[*]}" >&2
        exit 2
    fi
done
if [ ${#sections[@]} = 0 ]; then
    sections=("${quick_sections[@]}")
    each_check=no
fi

install_packages "${test_packages[@]}" || exit 1
if command -v ccache >/dev/null; then
    export CMAKE_CXX_COMPILER_LAUNCHER=ccache
fi

for section in "${sections[@]}"; do
    [ $each_check = no ] || echo "== $section"
    failed_before=$failed passed_before=$passed start=$SECONDS
    "section_$section"
    [ $each_check = yes ] || [ "$failed" != "$failed_before" ] ||
        printf 'ok      %s: %d checks (%d s)\n' "$section" $((passed - passed_before)) $((SECONDS - start))
done

if [ "$failed" -gt 0 ]; then
    echo "Failed:"
    printf '  %s\n' "${failures[@]}"
fi
echo "$passed passed, $failed failed ($SECONDS s)"
[ "$failed" = 0 ]
