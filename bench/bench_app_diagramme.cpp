// Malen der Diagramme bei 800 × 500 Bildpunkten: Polardiagramm eines 5°-Diagramms,
// Smith-Diagramm und Frequenzgang mit 1001 Punkten, Feldstärkekarte 61 × 61.
// Nur das Malen wird gemessen; zeigen() läuft einmal vorher.
#include "Fenster/Diagramme/FeldKarte.hpp"
#include "Fenster/Diagramme/GangDiagramm.hpp"
#include "Fenster/Diagramme/PolarDiagramm.hpp"
#include "Fenster/Diagramme/SmithDiagramm.hpp"
#include "Fenster/Erscheinung.hpp"

#include <QApplication>
#include <QImage>
#include <QPainter>
#include <benchmark/benchmark.h>
#include <cmath>
#include <numbers>

namespace {

using NECKern::Komplex;

const QSize groesse(800, 500);

double bogen(double grad) {
    return grad * std::numbers::pi / 180.0;
}

// Ganze Kugel in 5°-Schritten mit einer Hauptkeule bei φ = 20°, θ = 75°.
NECKern::FrequenzErgebnis muster() {
    NECKern::FrequenzErgebnis f;
    for (int t = 0; t <= 180; t += 5)
        for (int p = 0; p < 360; p += 5) {
            const double g = 0.5 + 0.5 * std::sin(bogen(t)) * std::cos(bogen(p - 20));
            f.diagramm.push_back({double(t), double(p), 0, 0, 10 * std::log10(std::max(g * g, 1e-6)) + 9});
        }
    return f;
}

// Serienschwingkreis um 14,2 MHz mit Gewinn und Vor-Rück.
std::vector<NECKern::Frequenzpunkt> gang() {
    std::vector<NECKern::Frequenzpunkt> punkte;
    for (int i = 0; i <= 1000; ++i) {
        const double f = 13.7 + i * 0.001;
        const Komplex z{40 + 20 * (f - 13.7), 400 * (f - 14.2)};
        const double gamma = std::hypot(z.re - 50, z.im) / std::hypot(z.re + 50, z.im);
        punkte.push_back({f, z, (1 + gamma) / (1 - gamma), 7 + 0.5 * (f - 14), 20 - 8 * std::fabs(f - 14.1)});
    }
    return punkte;
}

FeldErgebnis feld() {
    FeldErgebnis e{14.2, 0.01, 100, 2, {}, {}, 61};
    for (int j = 0; j < 61; ++j)
        for (int i = 0; i < 61; ++i) {
            const double x = -15 + i * 0.5, y = -15 + j * 0.5;
            const double r = std::hypot(x, y - 2) + 0.3;
            e.e.push_back({x, y, 2, {60 / r, 20 / r, 5 / r}, {0, 0, 0}});
            e.h.push_back({x, y, 2, {0.2 / r, 0.1 / r, 0}, {0, 0, 0}});
        }
    return e;
}

void malen(benchmark::State& zustand, const Diagramm& d) {
    QImage bild(groesse, QImage::Format_ARGB32_Premultiplied);
    for (auto _ : zustand) {
        QPainter p(&bild);
        d.malen(p, QRectF(QPointF(0, 0), QSizeF(groesse)));
    }
}

void Polar(benchmark::State& zustand) {
    PolarDiagramm d(PolarDiagramm::Schnitt::azimut);
    d.zeigen(muster());
    malen(zustand, d);
}

void Smith(benchmark::State& zustand) {
    SmithDiagramm d;
    const auto g = gang();
    d.zeigen(g, 50, 14.2, g[500].impedanz);
    malen(zustand, d);
}

void Frequenzgang(benchmark::State& zustand) {
    GangDiagramm d;
    d.zeigen(gang(), 50);
    malen(zustand, d);
}

void Feldkarte(benchmark::State& zustand) {
    FeldKarte d;
    d.zeigen(feld(), {});
    malen(zustand, d);
}

BENCHMARK(Polar)->Unit(benchmark::kMillisecond);
BENCHMARK(Smith)->Unit(benchmark::kMillisecond);
BENCHMARK(Frequenzgang)->Unit(benchmark::kMillisecond);
BENCHMARK(Feldkarte)->Unit(benchmark::kMillisecond);

} // namespace

int main(int argc, char** argv) {
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication anwendung(argc, argv);
    Erscheinung::anwenden(anwendung);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}
