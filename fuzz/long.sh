#!/usr/bin/env bash
# A sitting of fuzzing: all targets in turns, or those that are named, for so many seconds altogether.
#
#   fuzz/long.sh SECONDS [JOBS] [TARGET...]
#
# FUZZ_BUILD   where the programs are (default build/fuzz); they are built if they are missing
# FUZZ_STATE   what stays from one sitting to the next (default build/fuzz-state): corpus/, found/ and
#              tally.txt, a line "TARGET EXECUTIONS SECONDS DATE" for each turn
# FUZZ_TURN    longest turn of a target, seconds (default 120)
# FUZZ_MERGE   "no" leaves the corpora as they have grown
#
# Ends cleanly on an interrupt. Any finding is kept in found/ and makes the exit status 1.
set -uo pipefail
top=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
cd "$top" || exit 2
seconds=${1:-}
jobs=${2:-1}
if ! [[ $seconds =~ ^[0-9]+$ && $jobs =~ ^[1-9][0-9]*$ ]]; then
    sed -n '2,/^set/s/^# \{0,1\}//p' "${BASH_SOURCE[0]}" | sed '$d' >&2
    exit 2
fi
shift $(($# > 2 ? 2 : $#))
wanted=" $* "

build=${FUZZ_BUILD:-build/fuzz}
state=${FUZZ_STATE:-build/fuzz-state}
longest_turn=${FUZZ_TURN:-120}
tally=$state/tally.txt
programs=$build/fuzz

if ! [ -x "$programs/fuzz_seeds" ]; then
    { cmake --preset fuzz -B "$build" && cmake --build "$build" --target fuzz_programs; } >&2 || exit 2
fi
mkdir -p "$state/corpus" "$state/found" "$state/seeds" "$state/log"
"$programs/fuzz_seeds" "$state/seeds" || exit 2
touch "$tally"

# A small quarantine and short stacks of allocations make the address sanitizer a good deal faster.
export ASAN_OPTIONS=${ASAN_OPTIONS:-detect_leaks=1:quarantine_size_mb=8:malloc_context_size=4}
export UBSAN_OPTIONS=${UBSAN_OPTIONS:-print_stacktrace=1}

stopping=no
pids=()
stop() {
    stopping=yes
    local pid
    for pid in "${pids[@]}"; do
        kill -TERM "$pid" 2>/dev/null
    done
}
trap stop INT TERM

turn() { # TARGET LONGEST_INPUT SECONDS
    local name=$1 log=$state/log/$1.txt corpus=$state/corpus/$1 status executions fuzzer
    mkdir -p "$corpus"
    local inputs=("$corpus" "$state/seeds/$name")
    [ ! -d "fuzz/regressions/$name" ] || inputs+=("fuzz/regressions/$name")
    "$programs/fuzz_$name" -max_total_time="$3" -max_len="$2" -timeout=20 -rss_limit_mb=1500 -print_final_stats=1 \
        -dict="$state/seeds/names.dict" -artifact_prefix="$state/found/$name-" "${inputs[@]}" >"$log" 2>&1 &
    fuzzer=$!
    # shellcheck disable=SC2064 # this fuzzer
    trap "kill -TERM $fuzzer 2>/dev/null" TERM
    # An interrupted wait is taken up again until the fuzzer has written its figures.
    while kill -0 "$fuzzer" 2>/dev/null; do
        wait "$fuzzer"
        status=$?
    done
    wait "$fuzzer" 2>/dev/null
    executions=$(grep -a -o '^stat::number_of_executed_units: *[0-9]*' "$log" | grep -o '[0-9]*$')
    # A finding ends a turn before its figures: then the last line of progress counts.
    [ -n "$executions" ] || executions=$(grep -a -o '^#[0-9]*' "$log" | tail -n 1 | tr -d '#')
    echo "$name ${executions:-0} $3 $(date +%F)" >>"$tally"
    case $status in
    0 | 72) ;; # 72: interrupted
    *)
        cp "$log" "$state/found/$name-$(date +%s).log"
        echo "FOUND by $name:" >&2
        grep -a -m 5 -E 'is broken|ERROR|runtime error|SUMMARY|Test unit written' "$log" >&2
        ;;
    esac
}

# The corpus shrinks to what still adds something, after a sitting.
merge() { # TARGET LONGEST_INPUT
    local fresh=$state/corpus/.$1
    rm -rf "$fresh" && mkdir -p "$fresh"
    if "$programs/fuzz_$1" -merge=1 -max_len="$2" -timeout=20 "$fresh" "$state/corpus/$1" >"$state/log/merge.txt" 2>&1; then
        rm -rf "${state:?}/corpus/$1" && mv "$fresh" "$state/corpus/$1"
    else
        rm -rf "$fresh"
    fi
}

names=()
lengths=()
while read -r name length; do
    if [ "$wanted" = "  " ] || [[ $wanted == *" $name "* ]]; then
        names+=("$name")
        lengths+=("$length")
    fi
done < <("$programs/fuzz_seeds")
[ "${#names[@]}" -gt 0 ] || { echo "No such target." >&2; exit 2; }

before=$(find "$state/found" -type f | wc -l)
lines=$(wc -l <"$tally")
end=$((SECONDS + seconds))
share=$((seconds * jobs / ${#names[@]}))
slice=$((share < longest_turn ? share : longest_turn))
[ "$slice" -gt 0 ] || slice=1

first_round=yes
while [ "$stopping" = no ] && [ "$SECONDS" -lt "$end" ]; do
    for index in "${!names[@]}"; do
        left=$((end - SECONDS))
        [ "$left" -gt 0 ] || [ "$first_round" = no ] || left=1 # every target has a turn
        { [ "$stopping" = no ] && [ "$left" -gt 0 ]; } || break
        turn "${names[$index]}" "${lengths[$index]}" $((left < slice ? left : slice)) &
        pids+=($!)
        if [ "${#pids[@]}" -ge "$jobs" ]; then
            wait -n "${pids[@]}"
            running=()
            for pid in "${pids[@]}"; do
                kill -0 "$pid" 2>/dev/null && running+=("$pid")
            done
            pids=("${running[@]}")
        fi
    done
    first_round=no
done
for pid in "${pids[@]}"; do
    while kill -0 "$pid" 2>/dev/null; do
        wait "$pid"
    done
done
if [ "$stopping" = no ] && [ "${FUZZ_MERGE:-yes}" = yes ]; then
    for index in "${!names[@]}"; do
        [ "$stopping" = yes ] || merge "${names[$index]}" "${lengths[$index]}"
    done
fi

figures() { # TITLE, lines of the tally on standard input
    awk -v title="$1" '{ runs[$1] += $2; time[$1] += $3; all += $2 }
        END { print title; for (name in runs) printf "  %-10s %12d executions %6d s\n", name, runs[name], time[name] | "sort";
              close("sort"); printf "  %-10s %12d executions\n", "all", all }'
}
tail -n +$((lines + 1)) "$tally" | figures "This sitting:"
figures "All sittings:" <"$tally"
found=$(($(find "$state/found" -type f | wc -l) - before))
[ "$found" = 0 ] || { echo "$found files of findings in $state/found"; exit 1; }
