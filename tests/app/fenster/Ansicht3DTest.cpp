#include "Fenster/Ansicht3D/Ansicht3D.hpp"
#include "Ansicht3DAufzeichner.hpp"
#include "Fenster/Ansicht3D/Farbskala.hpp"
#include "NECKern/Beispiele.hpp"
#include "NECKern/Rechenkerne/Nec2cKern.hpp"

#include <QCoreApplication>
#include <QImage>
#include <QMouseEvent>
#include <QPainter>
#include <QWheelEvent>
#include <cmath>
#include <gtest/gtest.h>
#include <limits>
#include <string>
#include <vector>

namespace {

// Ein Dipol aus drei Segmenten längs y, mit Strömen und einem θ/φ-Schnitt.
NECKern::FrequenzErgebnis dipol(double laenge = 1) {
    NECKern::FrequenzErgebnis e;
    e.mhz = 145;
    e.stroemeGeliefert = true;
    for (int i = 0; i < 3; ++i) {
        const double strom = i == 1 ? 0.01 : 0.004, l = laenge / 3;
        e.segmente.push_back({i + 1, 1, 0, (i - 1) * l, 0, l, 0, 90, 0.002, {strom, 0}, {}, {}});
    }
    e.quellen.push_back({1, 2, {1, 0}, {0.01, 0}, {73, 0}});
    for (int p = 0; p < 360; p += 10)
        e.diagramm.push_back({90, double(p), 0, 0, 2});
    return e;
}

QImage gemalt(const Ansicht3D& ansicht, const QRectF& rahmen) {
    QImage bild(rahmen.size().toSize(), QImage::Format_ARGB32);
    QPainter maler(&bild);
    ansicht.malen(maler, rahmen);
    maler.end();
    return bild;
}

void rad(Ansicht3D& ansicht, int winkel) {
    QWheelEvent e(QPointF(100, 100), QPointF(100, 100), {}, {0, winkel}, Qt::NoButton, Qt::NoModifier,
                  Qt::NoScrollPhase, false);
    QCoreApplication::sendEvent(&ansicht, &e);
}

} // namespace

TEST(Ansicht3D, YagiDraehteLiegenWoDieProjektionSagt) {
    const auto& beispiel = NECKern::Beispiele::alle()[2];
    ASSERT_EQ(beispiel.name, "3-Element-Yagi 20 m");
    const auto e = NECKern::Nec2cKern().rechnen(beispiel.modell().deck()).frequenzen.at(0);
    ASSERT_EQ(e.segmente.size(), 63u);
    Ansicht3D ansicht;
    ansicht.resize(700, 400);
    ansicht.setStrom(false);
    ansicht.zeigen(e, NECKern::Modell{});
    const QRectF rahmen(0, 0, 1000, 600); // grösser als die Ansicht, wie beim Export
    const QImage bild = gemalt(ansicht, rahmen);
    const auto p = ansicht.projektion(rahmen);
    auto dunkel = [&](const QPointF& punkt) { return bild.pixelColor(punkt.toPoint()).lightness() < 110; };
    for (const auto& s : e.segmente) {
        if (s.nummer == 32) continue; // Speisemarke
        const auto mitte = p.bild({s.x, s.y, s.z});
        ASSERT_TRUE(rahmen.contains(mitte));
        EXPECT_TRUE(dunkel(mitte)) << "Segment " << s.nummer;
    }
    const auto& speise = e.segmente[31];
    EXPECT_EQ(bild.pixelColor(p.bild({speise.x, speise.y, speise.z}).toPoint()).red(), 220);
    // Zwischen Reflektor und Strahler ist nichts.
    const auto& r = e.segmente[5];
    const auto& s = e.segmente[26];
    EXPECT_FALSE(dunkel((p.bild({r.x, r.y, r.z}) + p.bild({s.x, s.y, s.z})) / 2));
}

TEST(Ansicht3D, StromfarbenLinearUndInDb) {
    Ansicht3D ansicht;
    ansicht.resize(600, 400);
    ansicht.zeigen(dipol(), NECKern::Modell{});
    ansicht.blick(Raumbild::Blick::oben); // der Draht steht senkrecht im Bild
    const QRectF rahmen(0, 0, 600, 400);
    const QPointF aussen = ansicht.projektion(rahmen).bild({0, -1.0 / 3, 0});
    const QPoint bildpunkt(static_cast<int>(std::floor(aussen.x())),
                           static_cast<int>(std::floor(aussen.y())));
    for (bool db : {false, true}) {
        ansicht.setStromInDb(db);
        // Aussen fliessen 4 mA, in der Mitte 10 mA: 0,4 des Höchstwerts oder −8 dB.
        const QColor erwartet = Raumbild::Farbskala::strom(db ? 20 * std::log10(0.4) / 30 + 1 : 0.4);
        const QColor farbe = gemalt(ansicht, rahmen).pixelColor(bildpunkt);
        EXPECT_NEAR(farbe.red(), erwartet.red(), 2) << db;
        EXPECT_NEAR(farbe.green(), erwartet.green(), 2) << db;
        EXPECT_NEAR(farbe.blue(), erwartet.blue(), 2) << db;
    }
}

TEST(Ansicht3D, HinweiseImBild) {
    struct Fall {
        std::string name;
        std::optional<NECKern::FrequenzErgebnis> ergebnis;
        bool koerper;
        QString erwartet;
        QString nicht;
    };
    auto ohneStroeme = dipol();
    ohneStroeme.stroemeGeliefert = false;
    auto mitKoerper = dipol();
    mitKoerper.diagramm = {{0, 0, 0, 0, 1}, {0, 90, 0, 0, 1}, {90, 0, 0, 0, 3}, {90, 90, 0, 0, 2}};
    const QString keinStrom = "Dieser Kern liefert keine Segmentströme";
    const QString schnitt = "Das Diagramm ist nur ein Schnitt; der Körper braucht ein Raster aus θ und φ.";
    const std::vector<Fall> faelle{
        {"vor dem ersten Ergebnis", std::nullopt, false, "Noch nicht gerechnet", "MHz"},
        {"ohne Ströme", ohneStroeme, false, keinStrom, "Noch nicht gerechnet"},
        {"mit Strömen", dipol(), false, "145 MHz", keinStrom},
        {"Schnitt mit Körper", dipol(), true, schnitt, "Gewinn in dBi"},
        {"Körper", mitKoerper, true, "Gewinn in dBi", schnitt},
        {"Schnitt ohne Körper", dipol(), false, "|I| in mA/V", schnitt},
    };
    for (const auto& f : faelle) {
        Ansicht3D ansicht;
        ansicht.setDiagramm3D(f.koerper);
        ansicht.zeigen(f.ergebnis, NECKern::Modell{});
        Textaufzeichner geraet({800, 500});
        QPainter maler(&geraet);
        ansicht.malen(maler, QRectF(0, 0, 800, 500));
        const auto text = geraet.texte();
        EXPECT_TRUE(text.contains(f.erwartet)) << f.name << ": " << text.toStdString();
        EXPECT_FALSE(text.contains(f.nicht)) << f.name << ": " << text.toStdString();
    }
}

TEST(Ansicht3D, AnimationLaeuftNurSichtbarUndEingeschaltet) {
    Ansicht3D ansicht;
    ansicht.zeigen(dipol(), NECKern::Modell{});
    ansicht.setAnimation(true);
    EXPECT_FALSE(ansicht.animationLaeuft());
    ansicht.show();
    EXPECT_TRUE(ansicht.animationLaeuft());
    ansicht.hide();
    EXPECT_FALSE(ansicht.animationLaeuft());
    ansicht.show();
    EXPECT_TRUE(ansicht.animationLaeuft());
    auto ohneStroeme = dipol();
    ohneStroeme.stroemeGeliefert = false;
    ansicht.zeigen(ohneStroeme, NECKern::Modell{});
    EXPECT_FALSE(ansicht.animationLaeuft());
    ansicht.zeigen(dipol(), NECKern::Modell{});
    ansicht.setAnimation(false);
    EXPECT_FALSE(ansicht.animationLaeuft());
}

TEST(Ansicht3D, KameraBleibtBeiNeuberechnungNichtBeiNeuerAntenne) {
    Ansicht3D ansicht;
    ansicht.resize(600, 400);
    ansicht.zeigen(dipol(), NECKern::Modell{});
    rad(ansicht, 240);
    const auto gezoomt = ansicht.kamera();
    ASSERT_FALSE(gezoomt.eingepasst());
    ansicht.zeigen(dipol(1.05), NECKern::Modell{});
    EXPECT_EQ(ansicht.kamera(), gezoomt);
    ansicht.zeigen(dipol(20), NECKern::Modell{});
    EXPECT_TRUE(ansicht.kamera().eingepasst());
}

TEST(Ansicht3D, UnsinnigeWerteUndExtremerZoomMalenOhneAbsturz) {
    constexpr double nan = std::numeric_limits<double>::quiet_NaN();
    constexpr double unendlich = std::numeric_limits<double>::infinity();
    auto e = dipol();
    e.mitBoden = true;
    e.segmente[0].x = 1e300;
    e.segmente[0].laenge = 1e300;
    e.segmente[1].radius = nan;
    e.segmente[1].strom = {unendlich, nan};
    e.segmente[2].y = nan;
    e.diagramm = {{0, 0, 0, 0, unendlich}, {nan, 0, 0, 0, 1}, {90, 0, 0, 0, nan}, {90, 90, 0, 0, 1},
                  {0, 90, 0, 0, 1},        {180, 0, 0, 0, 1}, {180, 90, 0, 0, 1}};
    Ansicht3D ansicht;
    ansicht.resize(400, 300);
    ansicht.setDiagramm3D(true);
    ansicht.zeigen(e, NECKern::Modell{});
    for (int i = 0; i < 60; ++i)
        rad(ansicht, i < 30 ? 600 : -1200);
    QMouseEvent zeiger(QEvent::MouseMove, QPointF(200, 150), QPointF(200, 150), Qt::NoButton, Qt::NoButton,
                       Qt::NoModifier);
    QCoreApplication::sendEvent(&ansicht, &zeiger);
    gemalt(ansicht, QRectF(0, 0, 400, 300));
    EXPECT_TRUE(ansicht.kamera().ziel().endlich());
}
