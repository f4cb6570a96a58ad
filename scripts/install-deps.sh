#!/usr/bin/env bash
# Installs the Debian packages the build needs, only those that are missing.
set -euo pipefail

packages=(cmake ninja-build g++ ccache rapidjson-dev libgtest-dev libgmock-dev libbenchmark-dev git python3 nodejs)
missing=()
for p in "${packages[@]}"; do
  dpkg-query -W -f='${Status}' "$p" 2>/dev/null | grep -q "install ok installed" || missing+=("$p")
done
# The MCP end-to-end test installs its client with npm: Debian ships it apart from nodejs, other node builds bundle it.
command -v npm >/dev/null 2>&1 || missing+=(npm)
[ ${#missing[@]} -eq 0 ] && exit 0

echo "Installing: ${missing[*]}"
SUDO=""
[ "$(id -u)" -ne 0 ] && SUDO="sudo"
export DEBIAN_FRONTEND=noninteractive
$SUDO apt-get update -qq
$SUDO apt-get install -y -qq --no-install-recommends "${missing[@]}"
