#include "NECKern/Analyse.hpp"
#include "NECKern/Json.hpp"

#include "KernAttrappe.hpp"

#include <cmath>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <limits>
#include <nlohmann/json.hpp>

using namespace NECKern;
using namespace std::chrono_literals;
using TestHilfen::KernAttrappe;

namespace {

Modell testmodell() {
    Modell m;
    m.name = "Test";
    m.karten = {Karte("GW", {"1", "5"}, {"0", "0", "0", "0", "0", "1", "0.001"}),
                Karte("GE", {"0"}, {}),
                Karte("EX", {"0", "1", "3", "0"}, {"1", "0"}),
                Karte("FR", {"0", "1", "0", "0"}, {"14", "0"}),
                Karte("RP", {"0", "1", "2", "1000"}, {"90", "0", "0", "180"}),
                Karte("EN", {}, {})};
    return m;
}

} // namespace

TEST(Frequenzgang, ElfPunkteAufVierLaeufenKommenSortiertZurueckWieAuchImmerDieLaeufeEnden) {
    KernAttrappe kern;
    // Die frühen Stücke brauchen am längsten: die Läufe enden rückwärts.
    kern.warten = [](double start) { return start < 10.05 ? 60ms : start < 10.35 ? 40ms : 0ms; };
    auto modell = testmodell();
    modell.z0 = 75; // der Bezug des Modells, nicht 50 Ω
    auto punkte = Analyse::frequenzgang(modell, kern, 10, 11, 11, true, 4);

    auto laeufe = kern.laeufe();
    std::sort(laeufe.begin(), laeufe.end(), [](const auto& a, const auto& b) { return a.start < b.start; });
    ASSERT_EQ(laeufe.size(), 4u);
    const double starts[] = {10, 10.3, 10.6, 10.9};
    const int anzahlen[] = {3, 3, 3, 2};
    for (std::size_t g = 0; g < 4; ++g) {
        EXPECT_DOUBLE_EQ(laeufe[g].start, starts[g]);
        EXPECT_EQ(laeufe[g].anzahl, anzahlen[g]);
        EXPECT_DOUBLE_EQ(laeufe[g].schritt, 0.1);
    }
    EXPECT_GT(kern.hoechstensGleichzeitig(), 1);

    ASSERT_EQ(punkte.size(), 11u);
    for (std::size_t i = 0; i < punkte.size(); ++i)
        EXPECT_NEAR(punkte[i].mhz, 10 + 0.1 * static_cast<double>(i), 1e-9);
    // Die Attrappe meldet bei 10 MHz 60 − j4 Ω und ein Diagramm mit 5 dBi vorn, 0 dBi hinten.
    EXPECT_EQ(punkte[0].swr, KernAttrappe::standard(10, "").swr(75));
    EXPECT_EQ(punkte[0].gewinn, 5.0);
    EXPECT_EQ(punkte[0].vorRueck, 5.0);
}

TEST(Frequenzgang, OhneDiagrammHatKeinDeckEineRpKarteUndKeinPunktGewinn) {
    KernAttrappe kern;
    auto punkte = Analyse::frequenzgang(testmodell(), kern, 14, 14.4, 5, false, 2);
    for (const auto& lauf : kern.laeufe())
        EXPECT_THAT(lauf.deck, testing::Not(testing::HasSubstr("\nRP ")));
    ASSERT_EQ(punkte.size(), 5u);
    for (const auto& p : punkte) {
        EXPECT_TRUE(p.impedanz && p.swr);
        EXPECT_FALSE(p.gewinn || p.vorRueck);
    }
    // Mehr Läufe als Punkte: leere Stücke starten keinen Lauf.
    KernAttrappe acht;
    EXPECT_EQ(Analyse::frequenzgang(testmodell(), acht, 14, 15, 3, true, 8).size(), 3u);
    EXPECT_EQ(acht.laeufe().size(), 3u);
}

TEST(Frequenzgang, ErsetztDieErsteFrKarteUndSetztSieSonstAnDenAnfang) {
    auto zweiFR = testmodell();
    zweiFR.karten.insert(zweiFR.karten.begin() + 4, Karte("FR", {"0", "3"}, {"21", "1"}));
    KernAttrappe kern;
    Analyse::frequenzgang(zweiFR, kern, 7, 8, 2, true, 1);
    const auto deck = kern.laeufe().front().deck;
    EXPECT_EQ(deck.substr(deck.find("CE\n")), "CE\nGW 1 5 0 0 0 0 0 1 0.001\nGE 0\nEX 0 1 3 0 1 0 0 0 0 0\n"
                                              "FR 0 2 0 0 7 1\nRP 0 1 2 1000 90 0 0 180 0 0\nEN\n");

    auto ohneFR = testmodell();
    std::erase_if(ohneFR.karten, [](const Karte& k) { return k.typ == "FR"; });
    KernAttrappe kern2;
    Analyse::frequenzgang(ohneFR, kern2, 7, 8, 2, true, 1);
    EXPECT_THAT(kern2.laeufe().front().deck, testing::HasSubstr("CE\nFR 0 2 0 0 7 1\nGW"));
}

TEST(Frequenzgang, EinFehlerInEinemStueckWirdNachDemEndeAllerLaeufeGeworfen) {
    KernAttrappe kern;
    kern.warten = [](double start) { return start < 10.05 ? 0ms : 50ms; };
    kern.fehler = [](double start, int) { return start < 10.05 ? "nec2c: kaputt" : ""; };
    EXPECT_THAT([&] { Analyse::frequenzgang(testmodell(), kern, 10, 11, 11, true, 4); },
                testing::ThrowsMessage<KernFehler>("nec2c: kaputt"));
    EXPECT_EQ(kern.aktiv(), 0);
    EXPECT_LE(kern.laeufe().size(), 4u);
}

TEST(Frequenzgang, UnbestimmteEingabenGebenEinenSatzStattEinesLaufs) {
    constexpr double nan = std::numeric_limits<double>::quiet_NaN();
    constexpr double inf = std::numeric_limits<double>::infinity();
    struct Fall {
        double von, bis;
        int punkte, parallel;
        const char* text;
    };
    const char* grenzen = "Die Grenzen des Frequenzgangs müssen endliche Zahlen sein.";
    const char* positiv = "Frequenz muss grösser als 0 MHz sein.";
    for (const auto& f :
         {Fall{0, 14, 3, 2, positiv}, Fall{14, -0.5, 3, 2, positiv},
          Fall{14, 15, 1, 2, "Der Frequenzgang braucht mindestens 2 Frequenzen."},
          Fall{14, 15, 11, 0, "Der Frequenzgang braucht mindestens einen Rechenlauf zugleich."},
          Fall{nan, 15, 11, 2, grenzen}, Fall{14, inf, 11, 2, grenzen}, Fall{-1e308, 1e308, 2, 2, grenzen}}) {
        KernAttrappe kern;
        EXPECT_THAT(
            [&] { Analyse::frequenzgang(testmodell(), kern, f.von, f.bis, f.punkte, true, f.parallel); },
            testing::ThrowsMessage<KernFehler>(f.text));
        EXPECT_TRUE(kern.laeufe().empty());
    }
}

TEST(Frequenzpunkt, GespeicherteFormOhneUnendlichkeit) {
    Frequenzpunkt p{14.1, Komplex{50, -3}, std::numeric_limits<double>::infinity(), std::nullopt, 3};
    nlohmann::ordered_json j = p;
    EXPECT_EQ(j.dump(), R"({"mhz":14.1,"impedanz":{"re":50.0,"im":-3.0},"swr":null,"vorRueck":3.0})");
    auto zurueck = j.get<Frequenzpunkt>();
    EXPECT_EQ(zurueck.impedanz, p.impedanz);
    EXPECT_FALSE(zurueck.swr);
    Frequenzpunkt nurFrequenz;
    nurFrequenz.mhz = 7;
    EXPECT_EQ(nlohmann::ordered_json::parse(R"({"mhz":7})").get<Frequenzpunkt>(), nurFrequenz);
    EXPECT_THROW(nlohmann::ordered_json::parse(R"({"swr":1})").get<Frequenzpunkt>(), DatenFehler);
}
