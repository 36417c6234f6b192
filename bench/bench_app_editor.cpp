// Die zwei Seiten, auf die der Nutzer den ganzen Tag schaut, müssen sofort antworten:
// ein Zeichen in einer Zelle eines Modells mit 2000 Karten, bis die Tabelle neu
// gezeichnet ist (Ziel ≤ 8 ms), und die Ergebnisseite mit einem neuen Ergebnis über
// 201 Frequenzen, bis sie neu gezeichnet ist (Ziel ≤ 10 ms). Ohne Bildschirm (offscreen).
#include "Fenster/Editor/EditorSeite.hpp"
#include "Fenster/Ergebnis/ErgebnisSeite.hpp"
#include "Fenster/Erscheinung.hpp"

#include "Modell/AppModell.hpp"

#include "NECKern/Rechenkerne/KernFehler.hpp"
#include "NECKern/Rechenkerne/Rechenkern.hpp"

#include <QApplication>
#include <QKeyEvent>
#include <QLineEdit>
#include <QTableView>

#include <atomic>
#include <benchmark/benchmark.h>
#include <chrono>
#include <cmath>
#include <filesystem>
#include <numbers>
#include <string>

namespace {

using namespace NECKern;
using Uhr = std::chrono::steady_clock;

// Zählt Zeichenereignisse eines Widgets und seiner Kinder.
class Maler : public QObject {
  public:
    int bilder = 0;
    bool eventFilter(QObject*, QEvent* e) override {
        if (e->type() == QEvent::Paint) ++bilder;
        return false;
    }
};

// Liefert abwechselnd zwei fertige Ergebnisse; das Gütedeck lehnt er sofort ab, damit
// nur die Ergebnisseite gemessen wird.
class FesterKern final : public Rechenkern {
  public:
    FesterKern(NECErgebnis a, NECErgebnis b) : ergebnisse_{std::move(a), std::move(b)} {}
    std::string kennung() const override { return "nec2c"; }
    std::string name() const override { return "Fest"; }
    std::string beschreibung() const override { return "Für Messungen"; }
    bool verfuegbar() const override { return true; }
    using Rechenkern::rechnen;
    NECErgebnis rechnen(std::string_view deck, std::stop_token) const override {
        if (deck.find("RP 0 19 72") != std::string_view::npos ||
            deck.find("RP 0 37 72") != std::string_view::npos)
            throw KernFehler("Kein Gütetest in der Messung.");
        return ergebnisse_[static_cast<std::size_t>(n_++ % 2)];
    }

  private:
    NECErgebnis ergebnisse_[2];
    mutable std::atomic<int> n_{0};
};

AppModell::Umgebung umgebung(KernZeiger kern) {
    AppModell::Umgebung u;
    u.kerneFinden = [kern] { return Kerne{kern}; };
    u.nec2c = [kern] { return kern; };
    u.datenOrdner = std::filesystem::temp_directory_path() / "ww-bench-app" / "Wellenwerk";
    return u;
}

Modell zweitausendKarten() {
    Modell m;
    m.name = "2000 Karten";
    m.variablen = {Variable("h", "10"), Variable("rad", "1mm"), Variable("l", "c0/14.2/2")};
    for (int i = 1; i <= 1996; ++i) {
        const auto x = std::to_string(i * 0.5);
        m.karten.emplace_back("GW", std::vector<std::string>{std::to_string(i), "11"},
                              std::vector<std::string>{x, "-l/2", "h", x, "l/2", "h", "rad"});
    }
    m.karten.emplace_back("GE", std::vector<std::string>{"1"}, std::vector<std::string>{});
    m.karten.emplace_back("EX", std::vector<std::string>{"0", "1", "6", "0"},
                          std::vector<std::string>{"1", "0"});
    m.karten.emplace_back("FR", std::vector<std::string>{"0", "1", "0", "0"},
                          std::vector<std::string>{"14.2", "0"});
    m.karten.emplace_back("EN", std::vector<std::string>{}, std::vector<std::string>{});
    return m;
}

void taste(QWidget* ziel, int taste, const QString& text = {}) {
    QKeyEvent druck(QEvent::KeyPress, taste, Qt::NoModifier, text);
    QKeyEvent los(QEvent::KeyRelease, taste, Qt::NoModifier, text);
    QApplication::sendEvent(ziel, &druck);
    QApplication::sendEvent(ziel, &los);
}

void ZeichenInZelleVon2000Karten(benchmark::State& zustand) {
    auto kern = std::make_shared<FesterKern>(NECErgebnis{}, NECErgebnis{});
    AppModell app(umgebung(kern));
    app.setAutomatisch(false); // gemessen wird der Editor, nicht der Kern
    app.setModell(zweitausendKarten());
    EditorSeite seite(app);
    seite.resize(440, 800);
    seite.show();
    QApplication::processEvents();
    auto* tabelle = seite.findChild<QTableView*>("karten");
    Maler maler;
    tabelle->viewport()->installEventFilter(&maler);
    const auto zelle = tabelle->model()->index(1000, 4); // Y1 von Draht 1001: "-l/2"
    tabelle->scrollTo(zelle, QAbstractItemView::PositionAtCenter);
    QApplication::processEvents();

    bool anhaengen = true;
    for (auto _ : zustand) {
        tabelle->setCurrentIndex(zelle);
        tabelle->edit(zelle);
        auto* feld = tabelle->viewport()->findChild<QLineEdit*>();
        if (!feld) {
            zustand.SkipWithError("Kein Zelleditor offen");
            break;
        }
        taste(feld, Qt::Key_End);
        maler.bilder = 0;
        const auto anfang = Uhr::now();
        if (anhaengen)
            taste(feld, Qt::Key_0, "0");
        else
            taste(feld, Qt::Key_Backspace);
        taste(feld, Qt::Key_Return);
        while (maler.bilder == 0)
            QApplication::processEvents();
        zustand.SetIterationTime(std::chrono::duration<double>(Uhr::now() - anfang).count());
        anhaengen = !anhaengen;
    }
    const auto& feldText = app.modell().karten[1000].reell[1];
    if (feldText != "-l/2" && feldText != "-l/20") zustand.SkipWithError("Die Eingabe kam nicht ins Modell");
}

NECErgebnis ergebnis201(double verschiebung) {
    NECErgebnis e;
    e.kern = "Fest";
    e.dauer = 1.5;
    for (int i = 0; i < 201; ++i) {
        FrequenzErgebnis f;
        f.mhz = 13.9 + i * 0.005;
        f.impedanz = Komplex{25 + i * 0.1 + verschiebung, -20 + i * 0.2};
        f.quellen = {{2, 32, {1, 0}, {0.03, 0.01}, *f.impedanz}};
        for (int s = 0; s < 63; ++s)
            f.segmente.push_back(
                {s + 1, s / 21 + 1, 0, (s % 21 - 10) * 0.5, 15, 0.5, 0, 90, 0.015, {}, {}, {}});
        for (int t = 0; t < 19; ++t)
            for (int p = 0; p < 73; ++p)
                f.diagramm.push_back(
                    {t * 5.0, p * 5.0, 0, 0, 10 * std::cos(p * 5.0 * std::numbers::pi / 180) - t * 0.2});
        f.leistungEingang = 0.015;
        f.leistungAbgestrahlt = 0.015;
        f.wirkungsgrad = 100;
        f.mitBoden = true;
        e.frequenzen.push_back(std::move(f));
    }
    return e;
}

void NeuesErgebnisMit201Frequenzen(benchmark::State& zustand) {
    auto kern = std::make_shared<FesterKern>(ergebnis201(0), ergebnis201(0.5));
    AppModell app(umgebung(kern));
    app.setAutomatisch(false);
    // Zuerst verbunden: die Uhr läuft, sobald das Ergebnis im Modell steht.
    Uhr::time_point anfang{};
    bool neu = false;
    QObject::connect(&app, &AppModell::ergebnisGeaendert, [&] {
        anfang = Uhr::now();
        neu = true;
    });
    ErgebnisSeite seite(app);
    seite.resize(520, 1200);
    seite.show();
    Maler maler;
    seite.installEventFilter(&maler);
    app.setFrequenzIndex(100);
    QApplication::processEvents();

    for (auto _ : zustand) {
        neu = false;
        maler.bilder = 0;
        app.rechnen(false);
        while (!neu)
            QApplication::processEvents(QEventLoop::WaitForMoreEvents);
        while (maler.bilder == 0)
            QApplication::processEvents();
        zustand.SetIterationTime(std::chrono::duration<double>(Uhr::now() - anfang).count());
        while (app.rechnetGerade() || app.gueteLaeuft())
            QApplication::processEvents(QEventLoop::WaitForMoreEvents);
    }
}

} // namespace

// Der Verlauf hält bis zu 500 ganze Modelle; mehr Schritte messen nichts Neues.
BENCHMARK(ZeichenInZelleVon2000Karten)->UseManualTime()->Unit(benchmark::kMillisecond)->Iterations(300);
BENCHMARK(NeuesErgebnisMit201Frequenzen)->UseManualTime()->Unit(benchmark::kMillisecond)->Iterations(50);

int main(int argc, char** argv) {
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication anwendung(argc, argv);
    Erscheinung::anwenden(anwendung);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}
