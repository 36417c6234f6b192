// Was der nec2c-Kern über den blossen Start von nec2c hinaus kostet (Ordner,
// ASCII-Deck, Datei schreiben und lesen, Bericht lesen, aufräumen); Ziel:
// höchstens 1,5 ms je Lauf über dem blossen Lauf. Deck: Dipol mit 21 Segmenten.
// Wo rmdir teuer ist (ext4 mit discard: gut 3 ms je Ordner), bestimmt das Aufräumen
// den Abstand; mit TMPDIR auf einem tmpfs zeigt sich der Kern selbst.
#include "NECKern/Rechenkerne/Datei.hpp"
#include "NECKern/Rechenkerne/Nec2cKern.hpp"
#include "NECKern/Rechenkerne/Prozess.hpp"

#include <benchmark/benchmark.h>
#include <fstream>
#include <sstream>

using namespace NECKern;

namespace {

const std::filesystem::path nec2c = "/usr/bin/nec2c";

std::string deck() {
    std::ifstream datei(std::filesystem::path(WW_BENCHDATEN) / "dipol21.nec");
    std::ostringstream inhalt;
    inhalt << datei.rdbuf();
    return inhalt.str();
}

void BlossesNec2c(benchmark::State& state) {
    Prozess::Arbeitsordner ordner;
    Datei::schreibenAtomar(ordner.pfad() / "a.nec", deck());
    for (auto _ : state) {
        auto ende = Prozess::ausfuehren(nec2c, {"-i", "a.nec", "-o", "a.out"}, ordner.pfad(), 300);
        benchmark::DoNotOptimize(ende);
    }
}
BENCHMARK(BlossesNec2c)->UseRealTime()->Unit(benchmark::kMicrosecond)->MinTime(3);

void Nec2cKernRechnen(benchmark::State& state) {
    const Nec2cKern kern(nec2c);
    const std::string text = deck();
    for (auto _ : state) {
        auto ergebnis = kern.rechnen(text);
        benchmark::DoNotOptimize(ergebnis);
    }
}
BENCHMARK(Nec2cKernRechnen)->UseRealTime()->Unit(benchmark::kMicrosecond)->MinTime(3);

} // namespace
