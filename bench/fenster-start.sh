#!/usr/bin/env bash
# Vom Programmstart bis zur gezeichneten, mit nec2c gerechneten Yagi (Ziel ≤ 1 s) und der
# grösste Speicherbedarf des Fensters dabei (Ziel ≤ 150 MB). Release-Build, ohne Bildschirm.
set -euo pipefail
cd "$(dirname "$0")/.."
cmake --preset release >/dev/null
cmake --build --preset release --target wellenwerk >/dev/null
export QT_QPA_PLATFORM=offscreen WELLENWERK_MESSUNG=1
programm=build/release/app/wellenwerk
hyperfine --warmup 2 --runs 10 --style basic "$programm"
"$programm" 2>&1 | grep VmHWM
