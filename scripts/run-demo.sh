#!/usr/bin/env bash
# The main job: build the demo and run it on the bundled sample well.
set -euo pipefail
cd "$(dirname "$0")/.."
scripts/install-deps.sh
cmake -S . -B build/demo -G Ninja -DCMAKE_BUILD_TYPE=Release -DRK_BUILD_TESTS=OFF -DRK_BUILD_BENCH=OFF >/dev/null
cmake --build build/demo -j2 --target rk_sheet_summary
exec build/demo/examples/rk_sheet_summary examples/data/sample_well.csv "$@"
