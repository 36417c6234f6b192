// Rechendeck eines Modells mit 2 000 Karten und 100 verketteten Variablen.
#include "NECKern/Modell.hpp"

#include <benchmark/benchmark.h>
#include <fmt/format.h>

namespace {

NECKern::Modell grossesModell() {
    NECKern::Modell m;
    m.variablen.emplace_back("v0", "c0/14.2/4");
    for (int i = 1; i < 100; ++i)
        m.variablen.emplace_back(fmt::format("v{}", i), fmt::format("v{}*1.001+sind({})*1mm", i - 1, i));
    for (int i = 0; i < 2000; ++i)
        m.karten.emplace_back(
            "GW", std::vector<std::string>{fmt::format("{}", i + 1), "21"},
            std::vector<std::string>{fmt::format("{}*0.1", i), "-v99/2", "h", "0", "v99/2", "h+v3", "1mm"});
    m.variablen.emplace_back("h", "10");
    m.karten.emplace_back("GE", std::vector<std::string>{"1"}, std::vector<std::string>{});
    return m;
}

void Deck(benchmark::State& zustand) {
    auto m = grossesModell();
    for (auto _ : zustand)
        benchmark::DoNotOptimize(m.deck());
}

} // namespace

BENCHMARK(Deck)->Unit(benchmark::kMillisecond);
