#!/usr/bin/env bash
# Builds everything and runs every test. Exit status is non-zero on any failure.
set -euo pipefail
root="$(cd "$(dirname "$0")/.." && pwd)"
build="${BUILD_DIR:-$root/build}"
"$root/scripts/build.sh"
ctest --test-dir "$build" --output-on-failure -j "$(nproc)" "$@"
