// Das Anwendungsmodell: wie lange die Ereignisschleife höchstens steht, während
// Frequenzgang und Optimierer mit nec2c rechnen, und was ein Rechengang ausser
// seinen Kernläufen kostet.
#include "Modell/AppModell.hpp"

#include "NECKern/Beispiele.hpp"
#include "NECKern/Rechenkerne/Nec2cKern.hpp"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QTimer>

#include <benchmark/benchmark.h>

#include <algorithm>

using namespace NECKern;

namespace {

// Läuft die Ereignisschleife, bis die Bedingung gilt; wartet schlafend auf Ereignisse.
template <typename F> void bis(F&& bedingung) {
    while (!bedingung())
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
}

// Ein Kern, der sofort ein fertiges Ergebnis zurückgibt: was übrig bleibt, ist der Rechengang selbst.
class Konserve final : public Rechenkern {
  public:
    explicit Konserve(NECErgebnis e) : e_(std::move(e)) {}
    std::string kennung() const override { return "nec2c"; }
    std::string name() const override { return "Konserve"; }
    std::string beschreibung() const override { return {}; }
    bool verfuegbar() const override { return true; }
    using Rechenkern::rechnen;
    NECErgebnis rechnen(std::string_view, std::stop_token) const override { return e_; }

  private:
    NECErgebnis e_;
};

AppModell::Umgebung mitKern(KernZeiger kern) {
    auto u = AppModell::Umgebung::standard();
    u.kerneFinden = [kern] { return Kerne{kern}; };
    u.nec2c = [kern] { return kern; };
    return u;
}

Modell dipol() {
    auto m = Beispiele::alle().front().modell();
    for (auto& v : m.variablen)
        if (v.name == "l") {
            v.optimieren = true;
            v.minimum = 9.5;
            v.maximum = 11;
        }
    return m;
}

void HaengerDerEreignisschleife(benchmark::State& state) {
    for (auto _ : state) {
        AppModell app(mitKern(std::make_shared<Nec2cKern>()));
        app.beispiel(dipol());
        bis([&] { return app.ergebnis() && !app.rechnetGerade(); });
        // Unerreichbar, damit die Suche ihre 20 Schritte wirklich macht.
        app.setZiele({Ziel(Ziel::Art::swr, 14.175, 1.0), Ziel(Ziel::Art::gewinn, 14.175, 12.0)});

        QElapsedTimer uhr;
        qint64 letzter = 0, laengster = 0;
        QTimer takt;
        takt.setTimerType(Qt::PreciseTimer);
        QObject::connect(&takt, &QTimer::timeout, [&] {
            const auto jetzt = uhr.nsecsElapsed();
            laengster = std::max(laengster, jetzt - letzter);
            letzter = jetzt;
        });
        uhr.start();
        takt.start(1);
        app.setGangPunkte(41);
        if (state.range(0) & 1) app.frequenzgangRechnen();
        if (state.range(0) & 2) app.optimieren();
        bis([&] {
            if (app.optVerlauf().size() >= 21) app.optimierungAbbrechen();
            return !app.optimierer() && (app.gang().size() == 41 || !(state.range(0) & 1));
        });
        takt.stop();
        // Der Takt ist 1 ms; was darüber liegt, stand die Schleife.
        state.counters["laengsterHaenger_ms"] = std::max(0.0, static_cast<double>(laengster) / 1e6 - 1.0);
        state.counters["schritte"] = std::max(static_cast<double>(app.optVerlauf().size()) - 1, 0.0);
    }
}
BENCHMARK(HaengerDerEreignisschleife)->Unit(benchmark::kMillisecond)->Iterations(3)->Arg(1)->Arg(2)->Arg(3);

void RechengangOhneKernlauf(benchmark::State& state) {
    const auto yagi = Beispiele::alle()[2].modell();
    auto kern = std::make_shared<Konserve>(Nec2cKern().rechnen(yagi.deck()));
    AppModell app(mitKern(kern));
    int beendet = 0;
    QObject::connect(&app, &AppModell::rechnetGeradeGeaendert,
                     [&] { beendet += app.rechnetGerade() ? 0 : 1; });
    for (auto _ : state) {
        const int vorher = beendet;
        app.rechnen(false);
        bis([&] { return beendet > vorher && !app.gueteLaeuft(); });
    }
}
BENCHMARK(RechengangOhneKernlauf)->Unit(benchmark::kMicrosecond);

} // namespace

int main(int argc, char** argv) {
    QCoreApplication anwendung(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}
