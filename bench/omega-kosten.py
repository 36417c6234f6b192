#!/usr/bin/env python3
"""Was ein Ω im Kommentar kostet: jedes eingebaute Beispiel mit Ω gegen dieselbe Deckdatei mit
„Ohm“ statt Ω und mit „Ж“ statt Ω (ein Zeichen, das die eigene Umschrifttabelle nicht kennt und
das darum an ICUs Umschreiber geht). Gemessen wird die Rechenzeit (Benutzer + System) von
„wellenwerk-cli rechnen“ samt seiner nec2c-Läufe, im Median über viele Läufe abwechselnd – so
stört ein ausgelasteter Rechner die Messung weit weniger als die Wanduhr.
Ziel: ein Ω kostet höchstens 3 ms.

    bench/omega-kosten.py [PFAD/ZU/wellenwerk-cli] [LÄUFE]   (Vorgabe: build/release/cli/wellenwerk-cli, 40)
"""
import os, resource, statistics, subprocess, sys, tempfile

wurzel = os.path.dirname(os.path.dirname(os.path.abspath(__file__)))
cli = os.path.abspath(sys.argv[1]) if len(sys.argv) > 1 else os.path.join(wurzel, "build/release/cli/wellenwerk-cli")
laeufe = int(sys.argv[2]) if len(sys.argv) > 2 else 40
varianten = {"Ω": "Ω", "Ohm": "Ohm", "Ж (ICU)": "Ж"}


def rechenzeit(datei):
    vorher = resource.getrusage(resource.RUSAGE_CHILDREN)
    subprocess.run([cli, "rechnen", datei], stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
    nachher = resource.getrusage(resource.RUSAGE_CHILDREN)
    return 1000 * (nachher.ru_utime - vorher.ru_utime + nachher.ru_stime - vorher.ru_stime)


print(f"{'Beispiel mit Ω':44} {'Ω/ms':>8} {'Ohm/ms':>8} {'Ж/ms':>8} {'Ω kostet/ms':>12}  Ziel")
with tempfile.TemporaryDirectory() as ordner:
    for name in subprocess.run([cli, "beispiel"], capture_output=True, text=True).stdout.splitlines():
        deck = subprocess.run([cli, "beispiel", "--beispiel", name], capture_output=True, text=True).stdout
        if "Ω" not in deck:
            continue
        dateien = {}
        for v, zeichen in varianten.items():
            dateien[v] = os.path.join(ordner, f"{len(dateien)}.nec")
            with open(dateien[v], "w", encoding="utf-8") as f:
                f.write(deck.replace("Ω", zeichen))
        zeiten = {v: [] for v in varianten}
        for _ in range(laeufe):
            for v in varianten:
                zeiten[v].append(rechenzeit(dateien[v]))
        m = {v: statistics.median(z) for v, z in zeiten.items()}
        kosten = m["Ω"] - m["Ohm"]
        print(f"{name:44} {m['Ω']:8.1f} {m['Ohm']:8.1f} {m['Ж (ICU)']:8.1f} {kosten:12.1f}  "
              f"{'erfüllt' if kosten <= 3 else 'VERFEHLT'}")
