// Der 20-m-Dipol wird auf Resonanz bei 14,175 MHz abgestimmt (|X| unter 1 Ω):
// Kernläufe und Zeit, nacheinander und mit vorausgerechneten Kandidaten.
#include "NECKern/Beispiele.hpp"
#include "NECKern/Optimierer.hpp"
#include "NECKern/Rechenkerne/Nec2cKern.hpp"

#include <benchmark/benchmark.h>
#include <cmath>

namespace {

using namespace NECKern;

Modell dipol() {
    auto m = Beispiele::alle().front().modell(); // Halbwellendipol 20 m
    for (auto& v : m.variablen)
        v.optimieren = v.name == "l";
    return m;
}

// Argumente: Kernläufe zugleich, vorausrechnen (0/1), Abbruch schon bei |X| < 1 Ω (0/1).
void DipolAufResonanz(benchmark::State& zustand) {
    const auto kern = std::make_shared<Nec2cKern>();
    const Ziel ziel(Ziel::Art::resonanz, 14.175, 0);
    Optimierer::Einstellungen einstellungen{static_cast<int>(zustand.range(0)), zustand.range(1) != 0};
    const bool nurBisEinOhm = zustand.range(2) != 0;
    double laeufe = 0, schritte = 0, x = 0;
    for (auto _ : zustand) {
        Optimierer o(dipol(), kern, {ziel}, einstellungen);
        int letzter = 0;
        o.starten(200, [&](const Optimierer::Stand& s) {
            letzter = s.schritt;
            x = s.kosten * 10; // Resonanzkosten = |X| / 10
            if (nurBisEinOhm && x < 1) o.abbrechen();
        });
        laeufe += static_cast<double>(o.kernlaeufe());
        schritte += letzter;
    }
    zustand.counters["kernlaeufe"] = benchmark::Counter(laeufe, benchmark::Counter::kAvgIterations);
    zustand.counters["schritte"] = benchmark::Counter(schritte, benchmark::Counter::kAvgIterations);
    zustand.counters["X_Ohm"] = x;
}

} // namespace

BENCHMARK(DipolAufResonanz)
    ->ArgsProduct({{1, 2}, {0, 1}, {0, 1}})
    ->ArgNames({"parallel", "voraus", "bisEinOhm"})
    ->Unit(benchmark::kMillisecond)
    ->UseRealTime()
    ->Iterations(5);
