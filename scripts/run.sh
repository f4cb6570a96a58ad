#!/usr/bin/env bash
# Builds calvorn-bp and runs one of its commands; with none, the demo on the embedded sample project.
#   bash scripts/run.sh                                 # the demo: a scripted MCP session
#   bash scripts/run.sh serve                           # the MCP server on a temporary sample project
#   bash scripts/run.sh serve --project ~/MyProject     # the MCP server on a project folder you keep
# Everything the build prints goes to standard error, so an MCP client may start the server through
# this script: standard output carries nothing but the protocol.
set -euo pipefail
root="$(cd "$(dirname "$0")/.." && pwd)"
build="${BUILD_DIR:-$root/build}"
"$root/scripts/build.sh" --target calvorn-bp 1>&2
[ $# -eq 0 ] && set -- demo
exec "$build/Host/calvorn-bp" "$@"
