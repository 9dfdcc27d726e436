#!/usr/bin/env bash
# The test command: installs what is missing, builds with AddressSanitizer + UBSan, runs every
# test under a private X server, then proves the installed CMake package with a consumer build.
set -euo pipefail
cd "$(dirname "$0")/.."
root=$(pwd)
jobs=${RK_JOBS:-2}

scripts/install-deps.sh

# --- sanitizer build and test run ---------------------------------------------------------
# -g1 keeps the line tables a sanitizer report needs and halves the compile time of full debug
# information, which dominates a build from a clean clone.
cmake -S . -B build/asan -G Ninja -DCMAKE_BUILD_TYPE=Debug -DRK_SANITIZE=ON \
      -DCMAKE_CXX_FLAGS_DEBUG="-g1 -O1" -DRK_BUILD_BENCH=ON >/dev/null
cmake --build build/asan -j"$jobs"

xvfb_pid=""
cleanup() {
  if [ -n "$xvfb_pid" ]; then kill "$xvfb_pid" 2>/dev/null || true; wait "$xvfb_pid" 2>/dev/null || true; fi
  return 0
}
trap cleanup EXIT
# Xvfb picks a free display and writes its number to fd 3.
display_file=$(mktemp)
Xvfb -displayfd 3 -screen 0 1280x1024x24 -nolisten tcp 3>"$display_file" 2>/dev/null &
xvfb_pid=$!
for _ in $(seq 1 100); do [ -s "$display_file" ] && break; sleep 0.1; done
[ -s "$display_file" ] || { echo "run-tests: Xvfb did not start" >&2; exit 1; }
export DISPLAY=":$(head -n1 "$display_file")"
rm -f "$display_file"

# No strict_string_checks: libxkbcommon-x11 hands strndup a bounded buffer without a NUL, which
# that option reports as an overflow inside the X keyboard set-up of every GUI test.
export ASAN_OPTIONS="detect_leaks=1:abort_on_error=0:detect_stack_use_after_return=1"
export LSAN_OPTIONS="suppressions=$root/scripts/lsan.supp:print_suppressions=0"
export UBSAN_OPTIONS="print_stacktrace=1:halt_on_error=1"
export LIBGL_ALWAYS_SOFTWARE=1
export QT_QPA_PLATFORM=xcb

# --- the installed package, moved after installing to prove it is relocatable ------------------
pkg_status=0
(
  set -e
  unset ASAN_OPTIONS LSAN_OPTIONS UBSAN_OPTIONS
  # This build proves the install and its relocation, not the code: unoptimised, it costs a
  # third of the time.
  cmake -S . -B build/pkg -G Ninja -DCMAKE_BUILD_TYPE=Release -DCMAKE_CXX_FLAGS_RELEASE="-O0 -DNDEBUG" \
        -DRK_BUILD_TESTS=OFF -DRK_BUILD_BENCH=OFF -DRK_BUILD_EXAMPLES=OFF >/dev/null
  cmake --build build/pkg -j"$jobs"
  pkg_tmp=$(mktemp -d)
  cmake --install build/pkg --prefix "$pkg_tmp/first" >/dev/null
  mv "$pkg_tmp/first" "$pkg_tmp/moved"
  cmake -S tests/package -B "$pkg_tmp/consumer" -G Ninja -DCMAKE_PREFIX_PATH="$pkg_tmp/moved" >/dev/null
  cmake --build "$pkg_tmp/consumer" -j"$jobs" >/dev/null
  LD_LIBRARY_PATH="$pkg_tmp/moved/lib:${LD_LIBRARY_PATH:-}" "$pkg_tmp/consumer/rk_package_consumer"
  rm -rf "$pkg_tmp"
  echo "run-tests: installed package found, built against and run from a moved prefix"
) || pkg_status=$?
if [ "$pkg_status" -ne 0 ]; then
  echo "run-tests: the installed package did not build or run a consumer" >&2
fi

# The test run comes last so that its summary closes the output.
ctest_status=0
ctest --test-dir build/asan -j"$jobs" --output-on-failure --timeout 600 || ctest_status=$?

if [ "$ctest_status" -ne 0 ] || [ "$pkg_status" -ne 0 ]; then
  exit 1
fi
exit 0
