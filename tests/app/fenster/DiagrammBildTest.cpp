// Die Diagramme offscreen gemalt: Bildpunkte, auf die es ankommt, und die Exporte.
#include "Fenster/Diagramme/FeldKarte.hpp"
#include "Fenster/Diagramme/PolarDiagramm.hpp"
#include "Fenster/Diagramme/SmithDiagramm.hpp"

#include <QDir>
#include <QTemporaryDir>
#include <QXmlStreamReader>
#include <gmock/gmock.h>
#include <numbers>

namespace {

const QSize groesse(800, 500);

// Zahl und Schwerpunkt der Bildpunkte in dieser Farbe.
std::pair<int, QPointF> farbflaeche(const QImage& bild, QColor farbe) {
    double sx = 0, sy = 0;
    int n = 0;
    for (int y = 0; y < bild.height(); ++y)
        for (int x = 0; x < bild.width(); ++x)
            if (bild.pixelColor(x, y).rgb() == farbe.rgb()) {
                sx += x;
                sy += y;
                ++n;
            }
    return {n, n ? QPointF(sx / n, sy / n) : QPointF(-1, -1)};
}

} // namespace

TEST(DiagrammBild, AngepassteLastLiegtInDerMitteDesSmithDiagramms) {
    SmithDiagramm d;
    d.resize(groesse);
    const auto kreis = d.flaeche(QRectF(QPointF(), QSizeF(groesse)));
    const QColor rot = Diagrammfarben::marke();

    d.zeigen({}, 50, 14.1, NECKern::Komplex{50, 0});
    auto bild = d.bild(groesse);
    EXPECT_EQ(bild.pixelColor(kreis.mitte.toPoint()).rgb(), rot.rgb());
    // Ein Kurzschluss liegt am linken Rand, die Mitte bleibt frei.
    d.zeigen({}, 50, 14.1, NECKern::Komplex{0, 0});
    bild = d.bild(groesse);
    EXPECT_EQ(bild.pixelColor((kreis.mitte - QPointF(kreis.radius, 0)).toPoint()).rgb(), rot.rgb());
    EXPECT_NE(bild.pixelColor(kreis.mitte.toPoint()).rgb(), rot.rgb());
}

TEST(DiagrammBild, SmithTooltipNenntFrequenzImpedanzUndSwr) {
    SmithDiagramm d;
    d.resize(groesse);
    d.zeigen({{14.0, NECKern::Komplex{25, -10}, 2.1, {}, {}}, {14.2, NECKern::Komplex{60, 15}, 1.4, {}, {}}},
             50, std::nullopt, std::nullopt);
    const auto kreis = d.flaeche(QRectF(d.rect()));
    const QPointF ort = kreis.bild(*Smith::abbilden({60, 15}, 50)) + QPointF(3, -2);
    EXPECT_EQ(d.tipp(ort), "14.2000 MHz\nZ = 60.00 + j15.00 Ω\nSWR 1.40");
    EXPECT_EQ(d.tipp(kreis.mitte), "");
}

TEST(DiagrammBild, FeldkarteFaerbtNachKlassen) {
    namespace FS = NECKern::Feldstaerke;
    // 2 × 2 Zellen bei 14 MHz (Referenz 28 V/m) mit 10, 30, 70 und 150 % der Referenz.
    FeldErgebnis feld{14, 1, 1, 2, {}, {}, 2};
    const double verhaeltnisse[] = {0.1, 0.3, 0.7, 1.5};
    for (int i = 0; i < 4; ++i) {
        const double spitze = verhaeltnisse[i] * 28 * std::numbers::sqrt2;
        feld.e.push_back({double(i % 2) * 10, double(i / 2) * 10, 2, {spitze, 0, 0}, {0, 0, 0}});
        feld.h.push_back({double(i % 2) * 10, double(i / 2) * 10, 2, {0.05, 0, 0}, {0, 0, 0}});
    }
    FeldKarte karte;
    karte.resize(groesse);
    karte.zeigen(feld, {});
    const QImage bild = karte.bild(groesse);
    // Jede Zelle ist gross; die Farbfelder der Legende allein kämen nicht auf diese Zahl.
    for (auto k : {FS::Klasse::gruen, FS::Klasse::gelb, FS::Klasse::orange, FS::Klasse::rot})
        EXPECT_GT(farbflaeche(bild, FeldKarte::farbe(k)).first, 10000) << FS::name(k);
    EXPECT_EQ(karte.tipp(farbflaeche(bild, FeldKarte::farbe(FS::Klasse::rot)).second),
              "x 10.00 m, y 10.00 m\nE_eff 42.0 V/m\nH_eff 0.0354 A/m\n150 % der Referenz");

    // Ohne Referenz (100 kHz) keine Klassenfarben in der Karte.
    feld.mhz = 0.1;
    karte.zeigen(feld, {});
    const QImage neutral = karte.bild(groesse);
    for (auto k : {FS::Klasse::gruen, FS::Klasse::gelb, FS::Klasse::orange, FS::Klasse::rot})
        EXPECT_EQ(farbflaeche(neutral, FeldKarte::farbe(k)).first, 0) << FS::name(k);
}

TEST(DiagrammBild, SvgIstWohlgeformtUndNenntSeineGroesse) {
    PolarDiagramm d(PolarDiagramm::Schnitt::azimut);
    NECKern::FrequenzErgebnis f;
    for (int p = 0; p < 360; p += 5)
        f.diagramm.push_back({80, double(p), 0, 0, 5 * std::cos(p * std::numbers::pi / 180)});
    d.zeigen(f);
    QXmlStreamReader leser(d.svg(groesse));
    ASSERT_TRUE(leser.readNextStartElement());
    EXPECT_EQ(leser.name(), QString("svg"));
    const auto a = leser.attributes();
    EXPECT_EQ(a.value("viewBox"), QString("0 0 800 500"));
    EXPECT_TRUE(a.hasAttribute("width") && a.hasAttribute("height"));
    while (!leser.atEnd())
        leser.readNext();
    EXPECT_FALSE(leser.hasError()) << leser.errorString().toStdString();
}

TEST(DiagrammBild, SichernSchreibtPngUndSvgOderSagtWarumNicht) {
    QTemporaryDir ordner;
    PolarDiagramm d(PolarDiagramm::Schnitt::elevation);
    d.resize(300, 240);
    EXPECT_FALSE(d.sichern(ordner.filePath("e.png")));
    EXPECT_FALSE(d.sichern(ordner.filePath("e.SVG")));
    EXPECT_EQ(QImage(ordner.filePath("e.png")).size(), QSize(600, 480));
    EXPECT_TRUE(QFile(ordner.filePath("e.SVG")).size() > 0);
    const QString fehlt = ordner.filePath("fehlt/e.png");
    EXPECT_EQ(d.sichern(fehlt).value_or("").toStdString(),
              ("Das Bild konnte nicht nach „" + fehlt +
               "“ geschrieben werden (Die Datei oder das Verzeichnis konnte nicht gefunden werden); bitte "
               "einen anderen Ort wählen.")
                  .toStdString());
}
