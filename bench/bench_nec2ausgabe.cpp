// Durchsatz des Berichtslesers auf einem Bericht von gut 21 MB, den nec2c zu
// bench/gross.nec schreibt (Ziel: mindestens 250 MB/s), und der Speicher beim
// Lesen (Ziel: Spitze samt Text unter dem Doppelten der Berichtsgrösse).
#include "NECKern/NEC2Ausgabe.hpp"
#include "NECKern/Rechenkerne/Datei.hpp"
#include "NECKern/Rechenkerne/Prozess.hpp"

#include <benchmark/benchmark.h>
#include <filesystem>
#include <stdexcept>
#include <sys/resource.h>

using namespace NECKern;

namespace {

// Der Bericht wird einmal gerechnet und liegt dann als Datei bereit.
const std::filesystem::path& bericht() {
    static Prozess::Arbeitsordner ordner;
    static const std::filesystem::path pfad = [] {
        std::filesystem::copy_file(std::filesystem::path(WW_BENCHDATEN) / "gross.nec",
                                   ordner.pfad() / "a.nec");
        const auto ende =
            Prozess::ausfuehren("/usr/bin/nec2c", {"-i", "a.nec", "-o", "a.out"}, ordner.pfad(), 600);
        if (ende.status != 0) throw std::runtime_error("nec2c: " + ende.fehlerausgabe);
        return ordner.pfad() / "a.out";
    }();
    return pfad;
}

double spitzeMB() {
    rusage r{};
    getrusage(RUSAGE_SELF, &r);
    return static_cast<double>(r.ru_maxrss) / 1024.0; // ru_maxrss in KiB
}

// Läuft zuerst, solange der Prozess noch klein ist: so misst der Anstieg der
// Spitze, was Text und Lesen zusammen brauchen.
void Speicher(benchmark::State& state) {
    const auto& pfad = bericht();
    for (auto _ : state) {
        const double vorher = spitzeMB();
        const std::string text = Datei::lesenAscii(pfad);
        const double mitText = spitzeMB();
        const auto ergebnis = NEC2Ausgabe::lesen(text);
        const double danach = spitzeMB();
        benchmark::DoNotOptimize(ergebnis);
        const double mb = static_cast<double>(text.size()) / (1024.0 * 1024.0);
        state.counters["Bericht_MiB"] = mb;
        state.counters["Lesen_MiB"] = danach - mitText;
        state.counters["Spitze_durch_Bericht"] = (danach - vorher) / mb;
    }
}
BENCHMARK(Speicher)->Iterations(1)->Unit(benchmark::kMillisecond);

void Durchsatz(benchmark::State& state) {
    const std::string text = Datei::lesenAscii(bericht());
    std::size_t frequenzen = 0;
    for (auto _ : state) {
        auto ergebnis = NEC2Ausgabe::lesen(text);
        frequenzen = ergebnis.frequenzen.size();
        benchmark::DoNotOptimize(ergebnis);
    }
    state.SetBytesProcessed(static_cast<std::int64_t>(state.iterations() * text.size()));
    state.counters["Frequenzen"] = static_cast<double>(frequenzen);
}
BENCHMARK(Durchsatz)->Unit(benchmark::kMillisecond);

} // namespace
