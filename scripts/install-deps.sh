#!/usr/bin/env bash
# Installs the Debian packages a build profile needs, and only those missing.
#
#   scripts/install-deps.sh [base|bench|32]
#
#   base   the libraries, their tests and the zylconv tool
#   bench  base + Google Benchmark and the peer libraries compared side by side
#   32     base + the multilib compiler for 32-bit x86 builds (GoogleTest is
#          rebuilt 32-bit from the sources the googletest package ships)
#
# Silent when everything is present; apt-get update runs only when something
# has to be installed. Uses sudo only when not root.
set -euo pipefail

profile=${1:-base}

base=(g++ make cmake ninja-build pkg-config binutils file
      libhwy-dev libgtest-dev libgmock-dev googletest libpng-dev)
case "$profile" in
  base) wanted=("${base[@]}") ;;
  bench) wanted=("${base[@]}" libbenchmark-dev libyuv-dev libopencv-dev) ;;
  32) wanted=("${base[@]}" g++-multilib) ;;
  *)
    echo "usage: $0 [base|bench|32]" >&2
    exit 2
    ;;
esac

missing=()
for pkg in "${wanted[@]}"; do
  status=$(dpkg-query -W -f='${Status}' "$pkg" 2>/dev/null || true)
  if [[ "$status" != "install ok installed" ]]; then
    missing+=("$pkg")
  fi
done
((${#missing[@]} == 0)) && exit 0

if ! command -v apt-get >/dev/null 2>&1; then
  echo "install-deps: missing packages: ${missing[*]} (no apt-get here; install them by hand)" >&2
  exit 1
fi

as_root=()
if [[ $(id -u) -ne 0 ]]; then
  if ! command -v sudo >/dev/null 2>&1; then
    echo "install-deps: need root or sudo to install: ${missing[*]}" >&2
    exit 1
  fi
  as_root=(sudo -n)
  # Interactive users may be asked for a password; CI has no terminal.
  [[ -t 0 ]] && as_root=(sudo)
fi

echo "install-deps ($profile): installing ${missing[*]}"
export DEBIAN_FRONTEND=noninteractive
"${as_root[@]}" env DEBIAN_FRONTEND=noninteractive apt-get update -qq
"${as_root[@]}" env DEBIAN_FRONTEND=noninteractive \
  apt-get install -y -qq --no-install-recommends "${missing[@]}" >/dev/null
