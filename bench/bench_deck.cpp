// Rechendeck eines Modells mit 2000 Karten und 100 verketteten Variablen, und die
// Vorprüfung, die es vor jedem Lauf erzeugt und abflacht, um den Umfang zu zählen.
#include "NECKern/Modell.hpp"
#include "NECKern/Modellpruefung.hpp"

#include <benchmark/benchmark.h>
#include <fmt/format.h>

namespace {

// Jede Variable baut auf der vorigen auf; die Karten rechnen mit ihnen in Formeln.
// praefix wählt die Namen: "v" bleibt ASCII, "höhe" führt über den Unicode-Weg.
NECKern::Modell grossesModell(const std::string& praefix) {
    std::string text = "CM Benchmark\nCE\nSY " + praefix + "0=c0/14.2/4\n";
    for (int i = 1; i < 100; ++i)
        text += fmt::format("SY {0}{1}={0}{2}*1.001+1mm\n", praefix, i, i - 1);
    for (int i = 0; i < 1996; ++i) {
        auto v = fmt::format("{}{}", praefix, i % 100);
        text += fmt::format("GW {} 11 {}*0.1 -{}/2 10 {}*0.1 {}/2 10 1mm\n", i + 1, i, v, i, v);
    }
    text += "GE 0\nEX 0 1 6 0 1 0\nFR 0 1 0 0 14.2 0\nRP 0 37 73 1000 -90 0 5 5\nEN\n";
    return NECKern::Modell::lesen(text, "Benchmark");
}

void DeckAscii(benchmark::State& zustand) {
    auto m = grossesModell("v");
    for (auto _ : zustand)
        benchmark::DoNotOptimize(m.deck());
}

void DeckMitUmlautnamen(benchmark::State& zustand) {
    auto m = grossesModell("höhe");
    for (auto _ : zustand)
        benchmark::DoNotOptimize(m.deck());
}

void Variablenwerte(benchmark::State& zustand) {
    auto m = grossesModell("v");
    for (auto _ : zustand)
        benchmark::DoNotOptimize(m.variablenWerte());
}

void Vorpruefung(benchmark::State& zustand) {
    auto m = grossesModell("v");
    for (auto _ : zustand)
        benchmark::DoNotOptimize(NECKern::Modellpruefung::vorpruefen(m));
}

} // namespace

BENCHMARK(DeckAscii)->Unit(benchmark::kMillisecond);
BENCHMARK(DeckMitUmlautnamen)->Unit(benchmark::kMillisecond);
BENCHMARK(Variablenwerte)->Unit(benchmark::kMicrosecond);
BENCHMARK(Vorpruefung)->Unit(benchmark::kMillisecond);
