// Wanduhrzeit des Selbsttests mit nec2c: fünf Läufe strikt nacheinander,
// davon einer mit dem Diagramm über die ganze Kugel.
#include "NECKern/Guetetest.hpp"
#include "NECKern/Rechenkerne/Nec2cKern.hpp"
#include "NECKern/Selbsttest.hpp"

#include <benchmark/benchmark.h>
#include <cmath>

using namespace NECKern;

namespace {

const std::filesystem::path nec2c = "/usr/bin/nec2c";

void SelbsttestNec2c(benchmark::State& state) {
    const Nec2cKern kern(nec2c);
    for (auto _ : state) {
        auto zeilen = Selbsttest::laufen(kern);
        benchmark::DoNotOptimize(zeilen);
    }
}
BENCHMARK(SelbsttestNec2c)->UseRealTime()->Unit(benchmark::kMillisecond)->MinTime(3);

// Die Integration allein, auf dem Gitter des Gütetests (37 × 72 Richtungen).
void MittlererGewinn(benchmark::State& state) {
    std::vector<Richtung> gitter;
    for (int t = 0; t <= 180; t += 5)
        for (int p = 0; p < 360; p += 5)
            gitter.push_back({double(t), double(p), 0, 0, std::sin(t * 0.01745)});
    for (auto _ : state) {
        auto g = Guetetest::mittlererGewinn(gitter);
        benchmark::DoNotOptimize(g);
    }
}
BENCHMARK(MittlererGewinn)->Unit(benchmark::kMicrosecond);

} // namespace
