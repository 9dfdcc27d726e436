#!/usr/bin/env bash
# Renders what a user sees into docs/gallery/, from the bundled sample well, without a display:
# every tab of the analyser that exists (the demo host with --tab KEY --screenshot, rows
# 1001-1400 selected so that the selection shows), then the pictures of the example programs
# that write gallery pictures. A tab that is not built yet is reported and skipped.
#   scripts/gallery.sh [OUT_DIR]        (default docs/gallery)
set -euo pipefail
cd "$(dirname "$0")/.."
out=${1:-docs/gallery}
mkdir -p "$out"

scripts/install-deps.sh
cmake -S . -B build/gallery -G Ninja -DCMAKE_BUILD_TYPE=Release -DRK_BUILD_TESTS=OFF -DRK_BUILD_BENCH=OFF >/dev/null
examples=(rk_chart_example rk_bar_example rk_rose_example rk_stereo_example rk_tangent_example rk_crossplot_example)
cmake --build build/gallery -j2 --target rk_demo_host "${examples[@]}"

# Off screen, without borrowing anyone's OpenGL, and with first-start settings whatever the user
# of this machine has saved.
export QT_QPA_PLATFORM=offscreen QT_QPA_OFFSCREEN_NO_GLX=1
config=$(mktemp -d)
trap 'rm -rf "$config"' EXIT
export XDG_CONFIG_HOME=$config

host=build/gallery/examples/rk_demo_host
for key in TABLE BARCHART HISTOGRAM CROSSPLOT ROSEPLOT STEREOPLOT TANGENTPLOT WELLLOGPLOT; do
  file="$out/tab_$(echo "$key" | tr '[:upper:]' '[:lower:]').png"
  rc=0
  "$host" --tab "$key" --select 1001-1400 --screenshot "$file" 2>/dev/null || rc=$?
  case $rc in
    0) echo "gallery: $file" ;;
    2) echo "gallery: no $key tab in this build, skipped" ;;
    *) echo "gallery: the demo host failed on $key (exit $rc)" >&2; exit 1 ;;
  esac
done

# Pages inside a chart tab: the stereo panel's report, Woodcock diagram and Fisher fit.
pages=("STEREOPLOT|Statistic Summary|tab_stereoplot_report.png"
       "STEREOPLOT|Woodcock Classification|tab_stereoplot_woodcock.png"
       "STEREOPLOT|Fit of Fisher Distribution|tab_stereoplot_fit.png")
for entry in "${pages[@]}"; do
  IFS='|' read -r key page name <<<"$entry"
  rc=0
  "$host" --tab "$key" --page "$page" --select 1001-1400 --screenshot "$out/$name" 2>/dev/null || rc=$?
  case $rc in
    0) echo "gallery: $out/$name" ;;
    2) echo "gallery: no page \"$page\" on $key in this build, skipped" ;;
    *) echo "gallery: the demo host failed on $key / $page (exit $rc)" >&2; exit 1 ;;
  esac
done

# The pole density of the whole well on the stereo tab (the points hidden, so that nothing covers
# it), filled with contour lines and labels, by
# each counting method on the same 40 x 40 cell grid.
density="m_pqShowPoles=false;m_pqShowAzimuths=false;m_pqContoursForPoles=true;m_pqDiscreteDensityGroupBox=true;m_pqWithContoursRadioButton=true;m_pqShowContourLabels=true;m_pqGridCellsSpinBox=40;m_pqCountingMethodComboBox"
# Tabs set up as a user would set them (--set NAME=VALUE on the tab's controls by object name,
# ';' between settings): the rose classified by an attribute, the histogram with P10, P50 and P90,
# the two-sample test of one horizon's porosity against the whole well's, and the pole density by
# each counting method.
setups=("ROSEPLOT||tab_roseplot_classified.png|m_pqColourMapComboBox=Type"
        "HISTOGRAM||tab_histogram_percentiles.png|m_pqHistogramDataSetComboBox=Porosity;m_pqHistogramTypeComboBox=Relative Frequency;m_pqP10CheckBox=true;m_pqP50CheckBox=true;m_pqP90CheckBox=true"
        "HISTOGRAM|Kolmogorov-Smirnov Two-Sample Test|tab_histogram_ks_test.png|m_pqHistogramDataSetComboBox=Porosity;useDataGroupBox=true;dataGroupAttributeComboBox=Horizon;dataGroupComboBox=Top Gamma;twoSampleTestGroupBox=true"
        "STEREOPLOT||tab_stereoplot_density_grid.png|${density}=Grid Count (%)"
        "STEREOPLOT||tab_stereoplot_density_kamb.png|${density}=Kamb (sigma)"
        "STEREOPLOT||tab_stereoplot_density_exponential_kamb.png|${density}=Exponential Kamb (sigma)")
for entry in "${setups[@]}"; do
  IFS='|' read -r key page name settings <<<"$entry"
  args=(--tab "$key")
  IFS=';' read -r -a assignments <<<"$settings"
  for a in "${assignments[@]}"; do args+=(--set "$a"); done
  [ -n "$page" ] && args+=(--page "$page")
  rc=0
  "$host" "${args[@]}" --screenshot "$out/$name" 2>/dev/null || rc=$?
  case $rc in
    0) echo "gallery: $out/$name" ;;
    2) echo "gallery: no $key tab with those controls in this build, skipped" ;;
    *) echo "gallery: the demo host failed on $name (exit $rc)" >&2; exit 1 ;;
  esac
done

# A well's report (every chart tab with the statistics, as --report writes it) and its page as a
# reader sees it.
report=$(mktemp -d)
"$host" --report "$report" --select 1001-1400 --screenshot "$out/report_page.png" 2>/dev/null
rm -rf "$report"
echo "gallery: $out/report_page.png"

# The SCAT window on the sample well: its tops scenario with coloured stratigraphic domains, the
# fault picked (yellow) in the framed dip track; and the scenario seeded from the well's SCAT rows.
scat=("--scenario examples/data/sample_well_tops.txt --pick 1745|scat_tracks.png"
      "|scat_seeded.png")
for entry in "${scat[@]}"; do
  IFS='|' read -r args name <<<"$entry"
  # shellcheck disable=SC2086 # the arguments are split on purpose
  "$host" --scat $args --screenshot "$out/$name" 2>/dev/null
  echo "gallery: $out/$name"
done

for example in "${examples[@]}"; do
  "build/gallery/examples/$example" "$out"
done
echo "gallery: done, pictures in $out"
