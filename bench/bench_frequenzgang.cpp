// Frequenzgang über 40 Frequenzen eines Modells mit 202 Segmenten (etwa 60 ms
// je Frequenz in nec2c): in zwei Stücken parallel gegen einen einzigen nec2c-Lauf.
#include "NECKern/Analyse.hpp"
#include "NECKern/Rechenkerne/Nec2cKern.hpp"

#include <benchmark/benchmark.h>

namespace {

using namespace NECKern;

constexpr int punkte = 40;
constexpr double von = 14.0, schritt = 0.02;

Modell zweiDraehte() {
    Modell m;
    m.name = "Zwei Drähte, 202 Segmente";
    m.variablen = {Variable("l", "10"), Variable("h", "10")};
    m.karten = {Karte("GW", {"1", "101"}, {"0", "-l/2", "h", "0", "l/2", "h", "1mm"}),
                Karte("GW", {"2", "101"}, {"1.5", "-l/2", "h", "1.5", "l/2", "h", "1mm"}),
                Karte("GE", {"1"}, {}),
                Karte("GN", {"2", "0", "0", "0"}, {"13", "0.005"}),
                Karte("EX", {"0", "1", "51", "0"}, {"1", "0"}),
                Karte("FR", {"0", "1", "0", "0"}, {"14", "0"}),
                Karte("RP", {"0", "1", "73", "1000"}, {"80", "0", "0", "5"}),
                Karte("EN", {}, {})};
    return m;
}

void EinNec2cLaufFuerAlle(benchmark::State& zustand) {
    auto m = zweiDraehte();
    for (auto& k : m.karten)
        if (k.typ == "FR") k = Karte("FR", {"0", std::to_string(punkte), "0", "0"}, {"14", "0.02"});
    const Nec2cKern kern;
    auto deck = m.deck();
    for (auto _ : zustand) {
        auto e = kern.rechnen(deck);
        if (e.frequenzen.size() != punkte) zustand.SkipWithError("nec2c lieferte nicht alle Frequenzen");
    }
}

void Frequenzgang(benchmark::State& zustand) {
    auto m = zweiDraehte();
    const Nec2cKern kern;
    auto parallel = static_cast<int>(zustand.range(0));
    for (auto _ : zustand) {
        auto gang = Analyse::frequenzgang(m, kern, von, von + (punkte - 1) * schritt, punkte, true, parallel);
        if (gang.size() != punkte) zustand.SkipWithError("Frequenzgang unvollständig");
    }
}

} // namespace

BENCHMARK(EinNec2cLaufFuerAlle)->Unit(benchmark::kMillisecond)->UseRealTime()->Iterations(3);
BENCHMARK(Frequenzgang)->Arg(1)->Arg(2)->Unit(benchmark::kMillisecond)->UseRealTime()->Iterations(3);
