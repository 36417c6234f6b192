// Ein Bild der 3D-Ansicht in 1200 × 500: 2000 Segmente mit Stromfarben und ein
// Körper aus 37 × 73 Richtungen (Ziel ≤ 16 ms), ohne Körper (Ziel ≤ 5 ms).
// Mit „--bilder ORDNER“ schreibt das Programm stattdessen Ansichten der Beispiele
// als PNG, zum Anschauen.
#include "Fenster/Ansicht3D/Ansicht3D.hpp"
#include "Fenster/Erscheinung.hpp"
#include "NECKern/Beispiele.hpp"
#include "NECKern/Rechenkerne/Nec2cKern.hpp"

#include <QApplication>
#include <QElapsedTimer>
#include <QImage>
#include <QMouseEvent>
#include <QPainter>
#include <benchmark/benchmark.h>
#include <cmath>
#include <filesystem>
#include <fmt/format.h>
#include <iostream>
#include <numbers>
#include <string_view>

namespace {

constexpr double pi = std::numbers::pi;

// Eine Wendel aus 2000 Segmenten mit stehender Welle und ein volles Raster 5° × 5°.
NECKern::FrequenzErgebnis grossesErgebnis() {
    NECKern::FrequenzErgebnis e;
    e.mhz = 145;
    e.stroemeGeliefert = true;
    constexpr int anzahl = 2000;
    for (int i = 0; i < anzahl; ++i) {
        const double w = i * 2 * pi / 50;
        NECKern::Segment s;
        s.nummer = i + 1;
        s.tag = 1 + i / 100;
        s.x = 0.3 * std::cos(w);
        s.y = 0.3 * std::sin(w);
        s.z = i * 0.002;
        s.laenge = 2 * pi * 0.3 / 50;
        s.beta = w * 180 / pi + 90;
        s.radius = 0.002;
        s.strom = {0.01 * std::sin(i * 0.05), 0.004 * std::cos(i * 0.03)};
        e.segmente.push_back(s);
    }
    e.quellen.push_back({1, 1, {1, 0}, {0.01, 0}, {50, 0}});
    for (int t = 0; t <= 180; t += 5)
        for (int p = 0; p <= 360; p += 5) {
            const double th = t * pi / 180, ph = p * pi / 180;
            const double g = std::pow(std::sin(th), 2) * (1.2 + std::cos(ph)) + 1e-4;
            e.diagramm.push_back({double(t), double(p), 0, 0, 10 * std::log10(g)});
        }
    return e;
}

void Bild(benchmark::State& state) {
    Ansicht3D ansicht;
    ansicht.resize(1200, 500);
    ansicht.setStrom(true);
    ansicht.setDiagramm3D(state.range(0) != 0);
    ansicht.zeigen(grossesErgebnis(), NECKern::Modell{});
    QImage bild(1200, 500, QImage::Format_ARGB32_Premultiplied);
    for (auto _ : state) {
        QPainter maler(&bild);
        ansicht.malen(maler, QRectF(0, 0, 1200, 500));
    }
}
BENCHMARK(Bild)->ArgName("koerper")->Arg(0)->Arg(1)->Unit(benchmark::kMillisecond)->MinTime(2);

void ziehen(Ansicht3D& ansicht, QPointF um) {
    const QPointF a(300, 300);
    QMouseEvent druck(QEvent::MouseButtonPress, a, a, Qt::LeftButton, Qt::LeftButton, Qt::NoModifier);
    QMouseEvent zug(QEvent::MouseMove, a + um, a + um, Qt::NoButton, Qt::LeftButton, Qt::NoModifier);
    QMouseEvent los(QEvent::MouseButtonRelease, a + um, a + um, Qt::LeftButton, Qt::NoButton, Qt::NoModifier);
    QApplication::sendEvent(&ansicht, &druck);
    QApplication::sendEvent(&ansicht, &zug);
    QApplication::sendEvent(&ansicht, &los);
}

int bilderSchreiben(const std::filesystem::path& ordner) {
    std::filesystem::create_directories(ordner);
    const NECKern::Nec2cKern kern;
    int nummer = 0;
    for (const auto& beispiel : NECKern::Beispiele::alle()) {
        const auto modell = beispiel.modell();
        const auto ergebnis = kern.rechnen(modell.deck());
        if (ergebnis.frequenzen.empty()) continue;
        Ansicht3D ansicht;
        ansicht.resize(1000, 560);
        ansicht.zeigen(ergebnis.frequenzen.back(), modell);
        auto schreiben = [&](std::string_view art) {
            auto pfad = ordner / fmt::format("{:02}-{}.png", nummer, art);
            ansicht.grab().save(QString::fromStdString(pfad.string()));
        };
        schreiben("start");
        ansicht.setDiagramm3D(true);
        schreiben("koerper");
        ziehen(ansicht, {-150, 60});
        schreiben("koerper-gedreht");
        ansicht.setDiagramm3D(false);
        for (auto [blick, name] : {std::pair{Raumbild::Blick::oben, "oben"},
                                   {Raumbild::Blick::vorne, "vorne"},
                                   {Raumbild::Blick::seite, "seite"}}) {
            ansicht.blick(blick);
            schreiben(name);
        }
        ansicht.setStromInDb(true);
        ansicht.hervorheben(1);
        schreiben("seite-db-tag1");
        ansicht.setStromInDb(false);
        ansicht.hervorheben(std::nullopt);
        ansicht.show();
        ansicht.setAnimation(true);
        for (int bild = 0; bild < 3; ++bild) {
            QElapsedTimer uhr;
            uhr.start();
            while (uhr.elapsed() < 170)
                QApplication::processEvents(QEventLoop::AllEvents, 20);
            schreiben(fmt::format("animation{}", bild));
        }
        ++nummer;
    }
    std::cout << nummer << " Beispiele nach " << ordner << " geschrieben\n";
    return 0;
}

} // namespace

int main(int argc, char** argv) {
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication anwendung(argc, argv);
    Erscheinung::anwenden(anwendung);
    if (argc == 3 && std::string_view(argv[1]) == "--bilder") return bilderSchreiben(argv[2]);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}
