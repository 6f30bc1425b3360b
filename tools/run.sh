#!/usr/bin/env bash
# The main job: installs what is missing, builds, and opens Zendrite on the
# bundled example pattern.
set -euo pipefail
cd "$(dirname "$0")/.."
tools/install-deps.sh
tools/build.sh
example=examples/hrpt_ndni4mgdx.sim
if [ -x build/app/zendrite ]; then
  if [ -n "${DISPLAY:-}${WAYLAND_DISPLAY:-}" ]; then
    exec build/app/zendrite "$example"
  fi
  echo "No display: the example is drawn into zendrite-example.png"
  exec build/app/zendrite --render zendrite-example.png "$example"
fi
exec build/app/zendrite-batch info "$example"
