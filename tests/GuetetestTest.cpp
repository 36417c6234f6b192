#include "NECKern/Guetetest.hpp"
#include "NECKern/Ausdruck.hpp"
#include "NECKern/Rechenkerne/Nec2cKern.hpp"

#include "TestHilfen.hpp"

#include <cmath>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <numbers>

using namespace NECKern;
using testing::HasSubstr;

namespace {

// Ein Gitter in 5°-Schritten; gewinn(θ, φ) in dBi.
template <typename F> std::vector<Richtung> gitter(double thetaBis, double phiBis, F&& gewinn) {
    std::vector<Richtung> r;
    for (double t = 0; t <= thetaBis; t += 5)
        for (double p = 0; p <= phiBis; p += 5)
            r.push_back({t, p, 0, 0, gewinn(t, p)});
    return r;
}

std::vector<Richtung> gitter(double thetaBis, double phiBis, double dbi) {
    return gitter(thetaBis, phiBis, [=](double, double) { return dbi; });
}

// Die Karten nach „CE“.
std::string karten(const std::string& deck) {
    return deck.substr(deck.find("CE\n") + 3);
}

constexpr const char* dipol = "GW 1 21 0 0 -0.25 0 0 0.25 0.001\nGE 0\nEX 0 1 11 0 1 0\n";

Segment senkrecht(double zMitte, double laenge) {
    Segment s;
    s.z = zMitte;
    s.laenge = laenge;
    s.alpha = 90;
    return s;
}

} // namespace

TEST(MittlererGewinn, EinsFuerJedeVerlustloseAntenne) {
    EXPECT_NEAR(*Guetetest::mittlererGewinn(gitter(180, 355, 0.0)), 1.0, 1e-3);
    // Kurzer Dipol: g = 1,5 sin²θ.
    const auto kurz = gitter(180, 355, [](double t, double) {
        const double s = std::sin(t * std::numbers::pi / 180);
        return s == 0 ? -999.99 : 10 * std::log10(1.5 * s * s);
    });
    EXPECT_NEAR(*Guetetest::mittlererGewinn(kurz), 1.0, 2e-3);
    // Über Boden verteilt sich die Leistung auf den halben Raumwinkel: 2 (3,01 dBi) überall.
    EXPECT_NEAR(*Guetetest::mittlererGewinn(gitter(90, 355, 10 * std::log10(2.0))), 1.0, 2e-3);
    // Keine Strahlung für φ ≥ 180°: nur die halbe Kugel trägt bei.
    const auto halb = gitter(180, 355, [](double, double p) { return p >= 180 ? -999.99 : 0.0; });
    EXPECT_NEAR(*Guetetest::mittlererGewinn(halb), 0.5, 2e-3);
}

TEST(MittlererGewinn, KeinWertOhneGeschlossenesGitter) {
    EXPECT_FALSE(Guetetest::mittlererGewinn(gitter(180, 350, 0.0))); // eine Lücke im Kreis
    EXPECT_FALSE(Guetetest::mittlererGewinn(gitter(5, 355, 0.0)));   // zwei θ
    auto kaputt = gitter(180, 355, 0.0);
    kaputt[7].theta = std::nan("");
    EXPECT_FALSE(Guetetest::mittlererGewinn(kaputt));
}

TEST(GuetetestDeck, VerlustbehafteterBodenWirdIdealLastenUndSteuerkartenFallenWeg) {
    const auto m = Modell::lesen(
        std::string(dipol) + "LD 5 1 0 0 5.8e7\nLD 0 1 11 11 10 1e-6\nGN 2 0 0 0 13 0.005\nFR 0 3 0 0 7 0.1\n"
                             "NE 0 1 1 1 0 0 0\nNH 0 1 1 1 0 0 0\nRP 0 1 1 1000 90 0 0 0\nXQ 0\nEN\n",
        "x");
    // Über Boden nur der obere Halbraum.
    EXPECT_EQ(karten(*Guetetest::deck(m, 14.2)),
              "GW 1 21 0 0 -0.25 0 0 0.25 0.001\nGE 0\nEX 0 1 11 0 1 0 0 0 0 0\nGN 1 0 0 0 0 0 0 0 0 0\n"
              "FR 0 1 0 0 14.2 0\nRP 0 19 72 1000 0 0 5 5 0 0\nEN\n");
}

TEST(GuetetestDeck, FreierRaumBleibtUndRechnetDieKugel) {
    struct Fall {
        const char* boden;
        const char* gnZeile; // leer: keine GN-Zeile im Deck
    };
    for (const auto& f : std::vector<Fall>{
             {"", ""},
             {"GN -1\n", "GN -1 0 0 0 0 0 0 0 0 0"},
             {"SY t=-1\nGN t\n", "GN -1 0 0 0 0 0 0 0 0 0"}, // auch als Formel
             {"GN 1\nGN -1\n", "GN 1 0 0 0 0 0 0 0 0 0"},    // die letzte GN-Karte gilt
         }) {
        const auto deck = *Guetetest::deck(Modell::lesen(std::string(dipol) + f.boden, "x"), 7);
        EXPECT_THAT(deck, HasSubstr("\nRP 0 37 72 1000 0 0 5 5 0 0\nEN\n")) << f.boden;
        if (*f.gnZeile) {
            EXPECT_THAT(deck, HasSubstr(std::string("\n") + f.gnZeile + "\n")) << f.boden;
        }
    }
}

TEST(GuetetestDeck, StrukturUnterDemBodenTaugtNichtFuerDenTest) {
    const auto ueberBoden = Modell::lesen(std::string(dipol) + "GN 2 0 0 0 13 0.005\n", "x");
    const auto freierRaum = Modell::lesen(dipol, "x");
    // Segmente von 0,1 m: berührend heisst näher an z = 0 als 1 mm.
    const std::vector<Segment> darunter{senkrecht(0.5, 0.1), senkrecht(0.05 - 0.0011, 0.1)};
    EXPECT_FALSE(Guetetest::deck(ueberBoden, 7, darunter));
    EXPECT_THAT(*Guetetest::deck(freierRaum, 7, darunter), HasSubstr("RP 0 37 "));
    const std::vector<Segment> beruehrt{senkrecht(0.5, 0.1), senkrecht(0.05 - 0.0009, 0.1)};
    EXPECT_THAT(*Guetetest::deck(ueberBoden, 7, beruehrt), HasSubstr("RP 0 19 "));
}

TEST(GuetetestDeck, Nec2cErgibtEinsImFreienRaumUndUeberBoden) {
    TestHilfen::PrivaterTemp temp;
    const Nec2cKern nec2c(TestHilfen::nec2c);
    const std::string hoch = "GW 1 21 0 -5.2 10 0 5.2 10 0.001\nGE 0\nEX 0 1 11 0 1 0\n";
    for (const auto& boden : {"", "GN 2 0 0 0 13 0.005\n"}) {
        const auto m = Modell::lesen(hoch + std::string(boden) + "LD 5 1 0 0 1e6\n", "x");
        const auto e = nec2c.rechnen(*Guetetest::deck(m, 14.2));
        ASSERT_EQ(e.frequenzen.size(), 1u) << boden;
        EXPECT_NEAR(*Guetetest::mittlererGewinn(e.frequenzen[0].diagramm), 1.0, 0.01) << boden;
    }
}

TEST(GuetetestDeck, FehlerDesRechendecksGehenDurch) {
    const auto typ = Modell::lesen(std::string(dipol) + "GN t\n", "x");
    EXPECT_THAT([&] { Guetetest::deck(typ, 7); },
                testing::ThrowsMessage<Ausdruck::Fehler>("Variable 't' unbekannt"));
}
