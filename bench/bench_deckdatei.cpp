// Lesen und Schreiben einer Deckdatei mit 10 000 Karten.
#include "NECKern/Modell.hpp"

#include <benchmark/benchmark.h>
#include <fmt/format.h>

namespace {

std::string grossesDeck() {
    std::string text = "CM Grosses Deck mit Umlauten: Höhe λ/2\nCE\nSY l=10, h=12 ' Notiz\n";
    for (int i = 0; i < 10000; ++i)
        text += fmt::format("GW {} 21 {} -l/2 h {} l/2 h 1mm ' Draht {}\n", i + 1, i * 0.1, i * 0.1, i);
    text += "GE 1\nEN\n";
    return text;
}

void Lesen(benchmark::State& zustand) {
    auto text = grossesDeck();
    for (auto _ : zustand)
        benchmark::DoNotOptimize(NECKern::Modell::lesen(text, "gross"));
    zustand.SetBytesProcessed(static_cast<int64_t>(zustand.iterations()) * static_cast<int64_t>(text.size()));
}

void Schreiben(benchmark::State& zustand) {
    auto m = NECKern::Modell::lesen(grossesDeck(), "gross");
    for (auto _ : zustand)
        benchmark::DoNotOptimize(m.schreiben());
}

} // namespace

BENCHMARK(Lesen)->Unit(benchmark::kMillisecond);
BENCHMARK(Schreiben)->Unit(benchmark::kMillisecond);
