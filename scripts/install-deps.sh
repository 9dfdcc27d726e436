#!/usr/bin/env bash
# The one list of Debian packages this project needs, installed only when missing.
#   scripts/install-deps.sh          build + test packages
#   scripts/install-deps.sh --fuzz   also clang's libFuzzer runtime
set -euo pipefail

packages=(
  # toolchain
  cmake ninja-build g++ pkg-config ccache
  # Qt 5 (Core, Gui, Widgets, OpenGL, Test) and the code generators uic/moc/rcc
  qtbase5-dev qtbase5-dev-tools libqt5opengl5-dev
  # boost::dynamic_bitset row sets, boost::shared_ptr unit managers
  libboost-dev
  # Enhanced Metafile records; SVG export of charts in the demo host
  libuemf-dev libqt5svg5-dev
  # benchmarks
  libbenchmark-dev
  # toolbar and menu icons
  famfamfam-silk
  # headless GUI tests: X server, software OpenGL, a font
  xvfb xauth libgl1-mesa-dri fonts-dejavu-core
  # a chart's metafile drawn by an office suite (headless, to PDF) and rasterised, in the
  # plots_tst_emf_libreoffice test (label libreoffice)
  libreoffice-draw-nogui poppler-utils
)
if [ "${1:-}" = "--fuzz" ]; then
  packages+=(clang libclang-rt-14-dev)
fi

missing=()
for p in "${packages[@]}"; do
  if [ "$(dpkg-query -W -f='${Status}' "$p" 2>/dev/null)" != "install ok installed" ]; then
    missing+=("$p")
  fi
done
if [ ${#missing[@]} -eq 0 ]; then
  echo "install-deps: all ${#packages[@]} packages present"
  exit 0
fi
echo "install-deps: installing ${missing[*]}"
SUDO=""
[ "$(id -u)" -eq 0 ] || SUDO="sudo"
export DEBIAN_FRONTEND=noninteractive
$SUDO apt-get -o DPkg::Lock::Timeout=300 update -qq || true
$SUDO apt-get -o DPkg::Lock::Timeout=300 install -y -qq --no-install-recommends "${missing[@]}"
