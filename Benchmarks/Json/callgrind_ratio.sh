#!/usr/bin/env bash
# Our Json layer's round trip against bare RapidJSON's, in instructions rather than time: a figure
# that other work on the machine cannot move. Usage:
#
#   Benchmarks/Json/callgrind_ratio.sh [path/to/JsonBenchmark] [rounds]
#
# Each side runs its round trip `rounds` times (3 by default) under callgrind, which collects only
# inside RunCountedRoundTrips, after a warm-up round trip outside it.
set -euo pipefail

Benchmark=${1:-build/Benchmarks/JsonBenchmark}
Rounds=${2:-3}
Work=$(mktemp -d)
trap 'rm -rf "$Work"' EXIT

count() {
	valgrind --tool=callgrind --collect-atstart=no --toggle-collect='*RunCountedRoundTrips*' \
		--callgrind-out-file="$Work/$1.cg" "$Benchmark" --count="$1" --rounds="$Rounds" >/dev/null 2>"$Work/$1.log" \
		|| { cat "$Work/$1.log" >&2; exit 1; }
	awk '/^totals:/ { print $2 }' "$Work/$1.cg"
}

Ours=$(count ours)
Bare=$(count bare)
Bare16=$(count bare16)
awk -v Ours="$Ours" -v Bare="$Bare" -v Bare16="$Bare16" -v Rounds="$Rounds" 'BEGIN {
	printf "instructions per round trip: ours %.1f M, bare RapidJSON %.1f M (UTF-8), %.1f M (UTF-16)\n",
		Ours / Rounds / 1e6, Bare / Rounds / 1e6, Bare16 / Rounds / 1e6
	printf "instruction ratio against UTF-16 RapidJSON: %.2f\n", Ours / Bare16
	printf "instruction ratio parse+serialise: %.2f\n", Ours / Bare
}'
