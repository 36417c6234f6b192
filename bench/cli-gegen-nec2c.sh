#!/usr/bin/env bash
# Misst mit hyperfine, was „wellenwerk-cli rechnen“ gegenüber dem blossen
# „nec2c -i … -o …“ auf demselben Zahlendeck kostet, für jedes eingebaute Beispiel.
# Ziel: höchstens 5 % langsamer, wo nec2c mindestens 0,2 s braucht, sonst höchstens 10 ms.
#
#   bench/cli-gegen-nec2c.sh [PFAD/ZU/wellenwerk-cli]   (Vorgabe: build/release/cli/wellenwerk-cli)
set -euo pipefail
cd "$(dirname "$0")/.."
cli="$(realpath "${1:-build/release/cli/wellenwerk-cli}")"
nec2c="$(command -v nec2c)"
ordner="$(mktemp -d)"
trap 'rm -rf "$ordner"' EXIT

printf '%-44s %10s %10s %10s %8s  %s\n' "Beispiel" "nec2c/ms" "cli/ms" "Abstand/ms" "in %" "Ziel"
nr=0
while IFS= read -r name; do
    nr=$((nr + 1))
    deck="$ordner/$nr.nec"
    "$cli" deck --beispiel "$name" > "$deck"
    hyperfine --shell=none --warmup 2 --min-runs 10 --style none --export-json "$ordner/$nr.json" \
        "$nec2c -i $deck -o $ordner/$nr.out" \
        "$cli rechnen --beispiel '$name'" > /dev/null 2>&1
    jq -r --arg name "$name" '
        (.results[0].mean) as $n | (.results[1].mean) as $c |
        (($c - $n) * 1000) as $d | (100 * ($c - $n) / $n) as $p |
        (if $n >= 0.2 then ($p <= 5) else ($d <= 10) end) as $ok |
        [$name, ($n * 1000), ($c * 1000), $d, $p, (if $ok then "erfüllt" else "VERFEHLT" end)] |
        @tsv' "$ordner/$nr.json" |
    while IFS=$'\t' read -r n tn tc d p ok; do
        printf '%-44s %10.1f %10.1f %10.1f %8.1f  %s\n' "$n" "$tn" "$tc" "$d" "$p" "$ok"
    done
done < <("$cli" beispiel)
