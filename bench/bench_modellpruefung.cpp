// Befunde für ein Drahtgitter mit 20 400 Segmenten: pruefen (mit Längensprung und
// freien Enden) und bodenPruefen, wie nach jedem Rechenlauf. Ziel: unter 100 ms.
#include "NECKern/Modellpruefung.hpp"

#include <benchmark/benchmark.h>
#include <cmath>
#include <numbers>

namespace {

using NECKern::Segment;

struct Gitter {
    std::vector<Segment> segmente;

    // Ein Draht von p nach q in n Segmenten; Enden frei oder mit einem Nachbarn verbunden.
    void draht(std::int64_t tag, NECKern::Punkt3 p, NECKern::Punkt3 q, int n, bool anfangFrei,
               bool endeFrei) {
        const double dx = q[0] - p[0], dy = q[1] - p[1], dz = q[2] - p[2];
        const double l = std::sqrt(dx * dx + dy * dy + dz * dz);
        for (int i = 0; i < n; ++i) {
            Segment s;
            s.nummer = static_cast<std::int64_t>(segmente.size()) + 1;
            s.tag = tag;
            const double u = (i + 0.5) / n;
            s.x = p[0] + u * dx;
            s.y = p[1] + u * dy;
            s.z = p[2] + u * dz;
            s.laenge = l / n;
            s.alpha = std::asin(dz / l) * 180 / std::numbers::pi;
            s.beta = std::atan2(dy, dx) * 180 / std::numbers::pi;
            s.radius = 0.001;
            s.vorher = i > 0 ? s.nummer - 1 : (anfangFrei ? 0 : 1);
            s.nachher = i < n - 1 ? s.nummer + 1 : (endeFrei ? 0 : 1);
            segmente.push_back(s);
        }
    }
};

// 50 × 50 Maschen von 1 m, jede Kante ein Draht aus 4 Segmenten, 2 m über Grund;
// dazu zehn Drähte, die frei auf Gitterkanten enden, und einer mit kurzen Segmenten.
std::vector<Segment> drahtgitter() {
    Gitter g;
    constexpr int maschen = 50;
    std::int64_t tag = 1;
    for (int i = 0; i <= maschen; ++i)
        for (int j = 0; j < maschen; ++j) {
            g.draht(tag++, {double(j), double(i), 2}, {double(j + 1), double(i), 2}, 4, false, false);
            g.draht(tag++, {double(i), double(j), 2}, {double(i), double(j + 1), 2}, 4, false, false);
        }
    for (int k = 0; k < 10; ++k)
        g.draht(tag++, {k + 0.4, 5.0, 0.5}, {k + 0.4, 5.0, 2}, 6, true, true);
    g.draht(tag++, {0, 0, 2}, {0, 0, 1.9}, 10, false, true);
    return g.segmente;
}

void Befunde(benchmark::State& zustand) {
    const auto segmente = drahtgitter();
    std::size_t anzahl = 0;
    for (auto _ : zustand) {
        auto befunde = NECKern::Modellpruefung::pruefen(segmente, 14.2);
        auto boden = NECKern::Modellpruefung::bodenPruefen(segmente, true);
        anzahl = befunde.size() + boden.size();
        benchmark::DoNotOptimize(befunde);
        benchmark::DoNotOptimize(boden);
    }
    zustand.counters["Segmente"] = static_cast<double>(segmente.size());
    // Erwartet drei: kürzestes Segment, Längensprung 25, die zehn frei endenden Drähte.
    zustand.counters["Befunde"] = static_cast<double>(anzahl);
}

void Laengensprung(benchmark::State& zustand) {
    const auto segmente = drahtgitter();
    for (auto _ : zustand)
        benchmark::DoNotOptimize(NECKern::Modellpruefung::laengenSprung(segmente));
}

void FreieEnden(benchmark::State& zustand) {
    const auto segmente = drahtgitter();
    for (auto _ : zustand)
        benchmark::DoNotOptimize(NECKern::Modellpruefung::verbindungenPruefen(segmente));
}

} // namespace

BENCHMARK(Befunde)->Unit(benchmark::kMillisecond);
BENCHMARK(Laengensprung)->Unit(benchmark::kMillisecond);
BENCHMARK(FreieEnden)->Unit(benchmark::kMillisecond);
