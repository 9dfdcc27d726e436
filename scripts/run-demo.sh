#!/usr/bin/env bash
# The main job: build the demo host and run it on the bundled sample well.
# With a display it opens the window; without one it prints the sheet summary and renders the
# window to build/demo/demo_host.png instead (extra arguments go to the host, e.g. --data F.csv).
set -euo pipefail
cd "$(dirname "$0")/.."
scripts/install-deps.sh
cmake -S . -B build/demo -G Ninja -DCMAKE_BUILD_TYPE=Release -DRK_BUILD_TESTS=OFF -DRK_BUILD_BENCH=OFF >/dev/null
cmake --build build/demo -j2 --target rk_demo_host rk_sheet_summary
if [ -n "${DISPLAY:-}" ]; then
  exec build/demo/examples/rk_demo_host "$@"
fi
build/demo/examples/rk_sheet_summary examples/data/sample_well.csv
QT_QPA_PLATFORM=offscreen build/demo/examples/rk_demo_host --screenshot build/demo/demo_host.png "$@" 2>/dev/null
echo "No display: the analyser window was rendered to build/demo/demo_host.png"
