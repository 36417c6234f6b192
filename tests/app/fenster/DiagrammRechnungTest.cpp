// Die Abbildungen hinter den Diagrammen, als Funktionen ohne Fenster.
#include "Fenster/Diagramme/Feldraster.hpp"
#include "Fenster/Diagramme/Polar.hpp"
#include "Fenster/Diagramme/Smith.hpp"

#include <cmath>
#include <gmock/gmock.h>
#include <limits>
#include <numbers>
#include <tuple>

using NECKern::Komplex;

TEST(Smith, BildetImpedanzenAufDenEinheitskreisAb) {
    const double inf = std::numeric_limits<double>::infinity();
    // Impedanz und erwarteter Punkt x, y.
    const std::tuple<Komplex, double, double> faelle[] = {
        {{50, 0}, 0, 0},   {{0, 0}, -1, 0},        {{inf, 0}, 1, 0}, {{0, 50}, 0, 1},
        {{0, -50}, 0, -1}, {{100, 0}, 1.0 / 3, 0}, {{-50, 0}, 1, 0}};
    for (const auto& [z, x, y] : faelle) {
        const auto g = Smith::abbilden(z, 50);
        ASSERT_TRUE(g) << z.re << " " << z.im;
        EXPECT_NEAR(g->x, x, 1e-12) << z.re << " " << z.im;
        EXPECT_NEAR(g->y, y, 1e-12) << z.re << " " << z.im;
    }
    EXPECT_FALSE(Smith::abbilden({std::nan(""), 0}, 50));
    EXPECT_FALSE(Smith::abbilden({50, 0}, 0));
}

TEST(Smith, GitterkreiseGehenDurchDieAbgebildetenPunkte) {
    for (double r : {0.2, 1.0, 5.0})
        for (double x : {-2.0, -0.5, 0.5, 1.0}) {
            const auto g = *Smith::abbilden({r * 50, x * 50}, 50);
            for (const auto& k : {Smith::widerstandskreis(r), Smith::blindkreis(x)})
                EXPECT_NEAR(std::hypot(g.x - k.mitte.x, g.y - k.mitte.y), k.radius, 1e-12) << r << " " << x;
        }
    EXPECT_DOUBLE_EQ(Smith::gammaBetrag(2), 1.0 / 3);
}

namespace {

// Obere Halbkugel θ 0…90, φ 0…355 in 5°-Schritten; Maximum bei φ = 35°, θ = 70°.
NECKern::FrequenzErgebnis schraeg() {
    NECKern::FrequenzErgebnis f;
    f.mitBoden = true;
    for (int t = 0; t <= 90; t += 5)
        for (int p = 0; p < 360; p += 5) {
            const double dt = t - 70.0, dp = std::remainder(p - 35.0, 360.0);
            f.diagramm.push_back({double(t), double(p), 0, 0, 10.0 - 0.01 * (dt * dt + dp * dp)});
        }
    return f;
}

Polar::Schnittdaten azimut(const std::vector<std::pair<double, double>>& punkte, bool geschlossen) {
    Polar::Schnittdaten s;
    for (const auto& [w, g] : punkte)
        s.punkte.push_back({w, g});
    s.geschlossen = geschlossen;
    return s;
}

} // namespace

TEST(Polar, SchneidetDurchDasMaximumAbseitsDerAchsen) {
    const auto f = schraeg();
    const auto az = Polar::schnitt(f, Polar::Schnitt::azimut);
    ASSERT_TRUE(az);
    EXPECT_EQ(Polar::titel(*az), "Azimut bei Elevation 20°");
    EXPECT_EQ(az->punkte.size(), 72u);
    EXPECT_TRUE(az->geschlossen);
    EXPECT_EQ(az->punkte[7], (Polar::Punkt{35, 10}));

    const auto el = Polar::schnitt(f, Polar::Schnitt::elevation);
    ASSERT_TRUE(el);
    EXPECT_EQ(Polar::titel(*el), "Elevation bei Azimut 35°");
    // Vorn (φ 35°) Elevation 0…90°, hinten (φ 215°) 90…180°; der Zenit nur einmal.
    EXPECT_EQ(el->punkte.size(), 37u);
    EXPECT_FALSE(el->geschlossen);
    EXPECT_EQ(el->punkte.front().winkel, 0);
    EXPECT_EQ(el->punkte.back().winkel, 180);
    EXPECT_NEAR(el->punkte[4].gewinn, 10, 1e-12); // Elevation 20°
}

TEST(Polar, SagtWennDerSchnittFehlt) {
    NECKern::FrequenzErgebnis f;
    EXPECT_EQ(Polar::fehlt(f, Polar::Schnitt::azimut),
              "Das Ergebnis enthält kein Richtdiagramm; eine RP-Karte verlangt es.");
    // Nur ein Azimut je Elevation: kein Azimutschnitt, aber ein Elevationsschnitt.
    for (int t = 0; t <= 90; t += 10)
        f.diagramm.push_back({double(t), 30, 0, 0, double(-t)});
    EXPECT_FALSE(Polar::schnitt(f, Polar::Schnitt::azimut));
    EXPECT_EQ(Polar::fehlt(f, Polar::Schnitt::azimut),
              "Das Richtdiagramm enthält keinen Azimutschnitt bei Elevation 90°.");
    EXPECT_TRUE(Polar::schnitt(f, Polar::Schnitt::elevation));
}

TEST(Polar, RadiusVonBodenBisMaximum) {
    EXPECT_DOUBLE_EQ(Polar::radius(-28, 12, 40), 0.0);
    EXPECT_DOUBLE_EQ(Polar::radius(2, 12, 40), 0.75);
    EXPECT_DOUBLE_EQ(Polar::radius(20, 12, 0), 0.0);
    EXPECT_DOUBLE_EQ(Polar::radius(14, 12, 40), 1.0);
    EXPECT_DOUBLE_EQ(Polar::radius(14, 12, 40, 1.08), 1.05);
}

TEST(Polar, BeschriftungWirdBeiKleinemKreisDuenner) {
    // Zahlen 30 px breit brauchen 34 px Sehne: bei 30° ab 59,7 px Radius, bei 45° ab 38,4 px.
    for (const auto& [radius, schritt] :
         {std::pair{120.0, 30.0}, {60.0, 30.0}, {59.0, 45.0}, {39.0, 45.0}, {38.0, 90.0}, {0.0, 90.0}})
        EXPECT_EQ(Polar::strahlSchritt(radius, 30), schritt) << radius;

    EXPECT_EQ(Polar::ringzahlSchritt(20, 13), 1);
    EXPECT_EQ(Polar::ringzahlSchritt(13, 13), 1);
    EXPECT_EQ(Polar::ringzahlSchritt(8, 13), 2);
    EXPECT_EQ(Polar::ringzahlSchritt(4, 13), 4);
    EXPECT_EQ(Polar::ringzahlSchritt(0, 13), 1000);
    EXPECT_EQ(Polar::ringzahlSchritt(std::nan(""), 13), 1000);
}

TEST(Polar, OeffnungswinkelUeberNullGrad) {
    // Keule um 0°, 1 dB je 5°: −3 dB bei ±15°.
    std::vector<std::pair<double, double>> keule;
    for (int w = 0; w < 360; w += 5) {
        const double ab = std::min(w, 360 - w);
        keule.push_back({double(w), -0.2 * ab});
    }
    EXPECT_NEAR(*Polar::oeffnungswinkel(azimut(keule, true)), 30.0, 1e-9);
    // Eingepasst zwischen Nachbarn: Maximum bei 355°, −3 dB bei 7,5° und 343⅓°.
    const auto schief =
        azimut({{340, -5}, {345, -2}, {350, -1}, {355, 0}, {0, -1}, {5, -2}, {10, -4}, {15, -8}}, false);
    EXPECT_NEAR(*Polar::oeffnungswinkel(schief), 22.5 + 5.0 / 3, 1e-9);
    // Offen und ohne Abfall auf einer Seite: kein Wert; rundum gleich: kein Wert.
    EXPECT_FALSE(Polar::oeffnungswinkel(azimut({{0, 0}, {5, -1}, {10, -2}, {15, -4}}, false)));
    EXPECT_FALSE(Polar::oeffnungswinkel(azimut({{0, 0}, {120, 0}, {240, 0}}, true)));
}

TEST(Feldraster, ZellenNachKoordinatenUndKlassen) {
    namespace FS = NECKern::Feldstaerke;
    // 14 MHz: Referenz 28 V/m. Bei pNEC = P ist E_eff = Spitzenwert / √2. Raster 3 × 3, vier Punkte belegt.
    const double verhaeltnisse[] = {0.1, 0.3, 0.7, 1.5};
    FeldErgebnis feld{14, 4, 4, 2, {}, {}, 3};
    const double orte[][2] = {{1, -1}, {-1, -1}, {1, 1}, {0, 0}}; // absichtlich nicht zeilenweise
    for (int i = 0; i < 4; ++i) {
        const double spitze = verhaeltnisse[i] * 28 * std::numbers::sqrt2;
        feld.e.push_back({orte[i][0], orte[i][1], 2, {spitze, 0, 0}, {0, 0, 0}});
        feld.h.push_back({orte[i][0], orte[i][1], 2, {0, 0.1 * std::numbers::sqrt2, 0}, {0, 0, 0}});
    }
    const auto r = Feldraster::rechnen(feld);
    ASSERT_EQ(r.zellen.size(), 4u);
    const FS::Klasse klassen[] = {FS::Klasse::gruen, FS::Klasse::gelb, FS::Klasse::orange, FS::Klasse::rot};
    const int spalten[] = {2, 0, 2, 1}, zeilen[] = {0, 0, 2, 1};
    for (int i = 0; i < 4; ++i) {
        const auto& z = r.zellen[i];
        EXPECT_EQ(z.spalte, spalten[i]) << i;
        EXPECT_EQ(z.zeile, zeilen[i]) << i;
        EXPECT_NEAR(z.verhaeltnis, verhaeltnisse[i], 1e-12) << i;
        EXPECT_NEAR(z.hEff, 0.1, 1e-12) << i;
        EXPECT_EQ(z.klasse, klassen[i]) << i;
    }
    // Ohne Referenz (100 kHz) kein Verhältnis und keine Klasse, aber E_eff.
    feld.mhz = 0.1;
    const auto ohne = Feldraster::rechnen(feld);
    EXPECT_FALSE(ohne.referenz);
    EXPECT_FALSE(ohne.zellen[0].klasse);
    EXPECT_NEAR(ohne.eMax, 1.5 * 28, 1e-9);
}
