#include "NECKern/Geometrie.hpp"

#include <algorithm>
#include <array>
#include <cmath>
#include <gtest/gtest.h>
#include <numbers>
#include <string>
#include <vector>

using namespace NECKern;

namespace {

struct Gw {
    double tag, segmente;
    std::array<double, 3> a, b;
    double radius;
};

// Die GW-Zeilen eines Decks als Zahlen.
std::vector<Gw> drahtZeilen(std::string_view deck) {
    std::vector<Gw> ergebnis;
    for (std::size_t anfang = 0; anfang < deck.size();) {
        auto ende = std::min(deck.find('\n', anfang), deck.size());
        auto zeile = deck.substr(anfang, ende - anfang);
        anfang = ende + 1;
        if (!zeile.starts_with("GW ")) continue;
        std::vector<std::string_view> woerter;
        for (std::size_t i = 3, j = 0; i <= zeile.size(); i = j + 1) {
            j = std::min(zeile.find(' ', i), zeile.size());
            woerter.push_back(zeile.substr(i, j - i));
        }
        auto x = Geometrie::zahlen(woerter);
        EXPECT_EQ(x.size(), 9u) << zeile;
        if (x.size() == 9) ergebnis.push_back({x[0], x[1], {x[2], x[3], x[4]}, {x[5], x[6], x[7]}, x[8]});
    }
    return ergebnis;
}

void erwartePunkt(const std::array<double, 3>& p, double x, double y, double z) {
    EXPECT_NEAR(p[0], x, 1e-8);
    EXPECT_NEAR(p[1], y, 1e-8);
    EXPECT_NEAR(p[2], z, 1e-8);
}

std::string deckMit(const std::string& geometrie, const std::string& rest = "EX 0 1 1 0 1 0") {
    return "CM Test\nCE\n" + geometrie + "\nGE 0\n" + rest + "\nEN\n";
}

} // namespace

TEST(Geometrie, ReineDrahtdecksBehaltenIhreDraehteMitNeuemZahlenformat) {
    std::string deck = "CM Dipol\nCE\n\nGW 1 11 0 0 -1.5 0 0 1.50 0.0005\nGE 0\nFR 0 1 0 0 14 0\nEN\n";
    EXPECT_EQ(Geometrie::abflachen(deck),
              "CM Dipol\nCE\nGW 1 11 0 0 -1.5 0 0 1.5 5.000000000E-04\nGE 0\nFR 0 1 0 0 14 0\nEN");
}

TEST(Geometrie, BogenWirdInViertelkreisAusEinSegmentDraehtenZerlegt) {
    auto flach = Geometrie::abflachen(deckMit("GA 1 4 1 0 90 0.001"));
    auto d = drahtZeilen(flach);
    ASSERT_EQ(d.size(), 4u);
    for (std::size_t i = 0; i < 4; ++i) {
        EXPECT_EQ(d[i].tag, 1);
        EXPECT_EQ(d[i].segmente, 1);
        EXPECT_EQ(d[i].radius, 0.001);
        double w0 = std::numbers::pi / 8 * static_cast<double>(i),
               w1 = std::numbers::pi / 8 * static_cast<double>(i + 1);
        erwartePunkt(d[i].a, std::cos(w0), 0, std::sin(w0));
        erwartePunkt(d[i].b, std::cos(w1), 0, std::sin(w1));
    }
    auto eindeutig =
        Geometrie::eindeutigeTags(Geometrie::abflachen(deckMit("GA 1 4 1 0 90 0.001", "EX 0 1 3 0 1 0")));
    EXPECT_NE(eindeutig.find("\nEX 0 3 1 0 1 0\n"), std::string::npos) << eindeutig;
}

TEST(Geometrie, RotationssymmetrieErhoehtTagsJeKopieAberNieTagNull) {
    auto d = drahtZeilen(
        Geometrie::abflachen(deckMit("GW 1 3 1 0 0 2 0 0 0.01\nGW 0 1 1 0 1 2 0 1 0.01\nGR 10 4")));
    ASSERT_EQ(d.size(), 8u);
    std::array<double, 4> tags{1, 11, 21, 31};
    for (std::size_t k = 0; k < 4; ++k) {
        double w = std::numbers::pi / 2 * static_cast<double>(k);
        EXPECT_EQ(d[2 * k].tag, tags[k]);
        EXPECT_EQ(d[2 * k + 1].tag, 0);
        erwartePunkt(d[2 * k].a, std::cos(w), std::sin(w), 0);
        erwartePunkt(d[2 * k].b, 2 * std::cos(w), 2 * std::sin(w), 0);
    }
}

TEST(Geometrie, SpiegelnErstInYDannInXMitVerdoppeltemZuwachs) {
    auto d = drahtZeilen(Geometrie::abflachen(deckMit("GW 5 3 1 2 3 4 5 6 0.01\nGX 1 110")));
    ASSERT_EQ(d.size(), 4u);
    EXPECT_EQ(d[0].tag, 5);
    EXPECT_EQ(d[1].tag, 6);
    EXPECT_EQ(d[2].tag, 7);
    EXPECT_EQ(d[3].tag, 8);
    erwartePunkt(d[1].a, 1, -2, 3);
    erwartePunkt(d[2].a, -1, 2, 3);
    erwartePunkt(d[3].b, -4, -5, 6);

    auto nurZ = drahtZeilen(Geometrie::abflachen(deckMit("GW 1 3 1 2 3 4 5 6 0.01\nGX 100 1")));
    ASSERT_EQ(nurZ.size(), 2u);
    EXPECT_EQ(nurZ[1].tag, 101);
    erwartePunkt(nurZ[1].a, 1, 2, -3);
}

TEST(Geometrie, SkalierenRechnetMillimeterInMeterUmSamtRadius) {
    auto d = drahtZeilen(Geometrie::abflachen(deckMit("GW 1 5 0 0 -500 0 0 500 2\nGS 0 0 0.001")));
    ASSERT_EQ(d.size(), 1u);
    erwartePunkt(d[0].a, 0, 0, -0.5);
    erwartePunkt(d[0].b, 0, 0, 0.5);
    EXPECT_DOUBLE_EQ(d[0].radius, 0.002);
}

TEST(Geometrie, VerschiebenOhneKopienFormtNurDieBetroffenenUm) {
    // Drehung erst um x, dann um y: (0,1,0) → (0,0,1) → (1,0,0); dann verschoben.
    auto d = drahtZeilen(Geometrie::abflachen(
        deckMit("GW 1 1 0 0 0 0 1 0 0.01\nGW 3 1 0 0 0 0 1 0 0.01\nGM 100 0 90 90 0 0 0 5 3")));
    ASSERT_EQ(d.size(), 2u);
    EXPECT_EQ(d[0].tag, 1);
    erwartePunkt(d[0].b, 0, 1, 0);
    EXPECT_EQ(d[1].tag, 103);
    erwartePunkt(d[1].a, 0, 0, 5);
    erwartePunkt(d[1].b, 1, 0, 5);
}

TEST(Geometrie, VerschiebenMitKopienBautJedeGenerationAusDerVorigen) {
    auto d = drahtZeilen(Geometrie::abflachen(deckMit("GW 1 1 0 0 0 1 0 0 0.01\nGW 0 1 0 1 0 1 1 0 0.01\n"
                                                      "GM 2 2 0 0 90 0 0 1")));
    ASSERT_EQ(d.size(), 6u);
    std::array<double, 6> tags{1, 0, 3, 0, 5, 0};
    for (std::size_t i = 0; i < 6; ++i)
        EXPECT_EQ(d[i].tag, tags[i]);
    erwartePunkt(d[2].b, 0, 1, 1);
    erwartePunkt(d[4].b, -1, 0, 2);
    erwartePunkt(d[5].a, 0, -1, 2);
}

TEST(Geometrie, WendelrichtungFolgtDemVorzeichenDerLaenge) {
    auto rechts = drahtZeilen(Geometrie::abflachen(deckMit("GH 1 8 1 2 0.5 0.5 0.5 0.5 0.001 0")));
    auto links = drahtZeilen(Geometrie::abflachen(deckMit("GH 1 8 1 -2 0.5 0.5 0.5 0.5 0.001 0")));
    ASSERT_EQ(rechts.size(), 8u);
    ASSERT_EQ(links.size(), 8u);
    // Viertelwindung nach dem ersten Stück: rechtsgängig bei +y, linksgängig bei -y.
    erwartePunkt(rechts[0].a, 0.5, 0, 0);
    erwartePunkt(rechts[0].b, 0, 0.5, 0.25);
    erwartePunkt(links[0].b, 0, -0.5, 0.25);
    erwartePunkt(rechts[7].b, 0.5, 0, 2);
    EXPECT_EQ(rechts[3].radius, 0.001);

    // Ohne Steigung eine Gerade; die Radien wachsen linear.
    auto gerade = drahtZeilen(Geometrie::abflachen(deckMit("GH 1 2 0 4 1 1 3 3 0.001 0")));
    ASSERT_EQ(gerade.size(), 2u);
    erwartePunkt(gerade[0].b, 2, 0, 2);
    erwartePunkt(gerade[1].b, 3, 0, 4);
}

TEST(Geometrie, UnvollstaendigeGeometriekartenFallenWeg) {
    struct Fall {
        const char* karte;
        std::size_t draehte;
    };
    const Fall faelle[] = {
        {"GA 1 4 1 0 90", 1},              // eine Zahl fehlt
        {"GH 1 4 1 2 0.5 0.5 0.5 0.5", 1}, // Drahtradius fehlt
        {"GM 1 0 0 0 0 0 0", 1},           // nur fünf Zahlen
        {"GM 1 x 0 0 0 0 0 1", 1},         // nur eine Ganzzahl
        {"GR 10", 1},
        {"GR 10 x", 1},
        {"GS 0 0", 1},
        {"GW 1 1 0 0 0 0 0", 1},
        {"GA 1 0 1 0 90 0.001", 1}, // keine Segmente
        {"GA 1 -3 1 0 90 0.001", 1},
    };
    for (const auto& f : faelle) {
        auto d =
            drahtZeilen(Geometrie::abflachen(deckMit(std::string("GW 1 1 0 0 0 0 0 1 0.01\n") + f.karte)));
        EXPECT_EQ(d.size(), f.draehte) << f.karte;
        if (!d.empty()) erwartePunkt(d[0].b, 0, 0, 1);
    }
}

TEST(Geometrie, NurDerGeometrieteilBisGeWirdUmgeformt) {
    EXPECT_EQ(Geometrie::abflachen("CM x\nGW 1 1 0 0 0 0 0 1 0.01\nGA 1 4 1 0 90 0.001\nEX 0 1 1 0 1\nEN"),
              "CM x\nEX 0 1 1 0 1\nEN");
    EXPECT_EQ(Geometrie::abflachen("GW 1 1 0 0 0 0 0 1 0.01\nGE 0\nGA 1 4 1 0 90 0.001\nGE 0"),
              "GW 1 1 0 0 0 0 0 1 0.01\nGE 0\nGA 1 4 1 0 90 0.001\nGE 0");
}

TEST(Geometrie, RiesigeKopienzahlenGebenDasDeckUnveraendertZurueck) {
    const char* faelle[] = {"GM 0 1000000000 0 0 0 0 0 1", "GA 1 1000000000 1 0 90 0.001",
                            "GR 0 9223372036854775807", "GH 1 999999999999 1 2 1 1 1 1 0.001 0"};
    for (auto karte : faelle) {
        auto deck = deckMit(std::string("GW 1 1 0 0 0 0 0 1 0.01\n") + karte);
        EXPECT_EQ(Geometrie::abflachen(deck), deck) << karte;
        EXPECT_EQ(Geometrie::struktur(deck).zuGrossBei, std::string(karte).substr(0, 2));
    }
    // Viele Bearbeitungen einer grossen Liste: ebenfalls begrenzt, statt minutenlang zu rechnen.
    std::string viele = "GA 1 150000 1 0 90 0.001";
    for (int i = 0; i < 100; ++i)
        viele += "\nGS 0 0 1";
    auto deck = deckMit(viele);
    EXPECT_EQ(Geometrie::abflachen(deck), deck);
}

TEST(Geometrie, StrukturZaehltSegmenteUndFlaechenSamtKopien) {
    // Zwei Drähte (5 und 3 Segmente), 2·3 + 1 Flächen; GX verdoppelt alles, GR 3 verdreifacht.
    const auto s = Geometrie::struktur("SM 2 3 0 0 0 1 0 0\nSC 0 0 1 1 0\nSP 0 0 2 0 0 90 0 0.1\n"
                                       "GW 1 5 0 0 1 0 0 2 0.001\nGA 2 3 1 0 90 0.001\nGX 1 100\nGR 0 3\n"
                                       "GE 0\nGW 9 99 0 0 0 0 0 1 0.001");
    EXPECT_EQ(s.draehte.size(), 24u);
    EXPECT_EQ(s.segmente(), 48);
    EXPECT_EQ(s.flaechen, 42);
    EXPECT_EQ(s.symmetrie, 3); // GR nach GX: nec2c nutzt nur die Drehung
    EXPECT_EQ(s.zuGrossBei, "");
}

TEST(Geometrie, SymmetrieWieNec2cSieNutzt) {
    const std::string draht = "GW 1 5 1 0 0 1 0 2 0.001\n";
    const std::pair<const char*, std::int64_t> faelle[] = {
        {"", 1},
        {"GR 1 8\n", 8},
        {"GX 1 110\n", 4},
        {"GR 1 8\nGS 0 0 2\n", 8},
        {"GR 1 8\nGM 0 0 0 0 0 0 0 1\n", 8},
        {"GR 1 8\nGM 0 1 0 0 0 0 0 5\n", 1},
        {"GR 1 8\nGA 5 4 1 0 90 0.001\n", 1},
        {"GR 1 8\nGW 9 3 0 0 5 0 0 6 0.001\n", 1},
    };
    for (const auto& [karten, ordnung] : faelle)
        EXPECT_EQ(Geometrie::struktur(draht + karten + "GE 0").symmetrie, ordnung) << karten;
}

TEST(Geometrie, VerweiseWandernUeberDieStueckeDesAltenTags) {
    std::string deck = "GW 1 5 0 0 0 0 0 1 0.01\nGW 2 4 1 0 0 1 0 1 0.01\nGW 1 3 2 0 0 2 0 1 0.01\nGE 0\n";
    struct Fall {
        const char* karte;
        const char* erwartet;
    };
    const Fall faelle[] = {
        {"EX 0 1 3 0 1 0", "EX 0 1 3 0 1 0"},
        {"EX 0 1 7 0 1 0", "EX 0 3 2 0 1 0"},
        {"EX 0 2 4 0 1 0", "EX 0 2 4 0 1 0"},
        {"EX 5 1 99 0 1 0", "EX 5 3 3 0 1 0"}, // jenseits der Summe: letztes Segment
        {"EX 0 1 0 0 1 0", "EX 0 1 1 0 1 0"},  // Segment 0 wird 1
        {"EX 0 0 7 0 1 0", "EX 0 0 7 0 1 0"},  // Tag 0: absolute Nummer
        {"EX 0 9 2 0 1 0", "EX 0 9 2 0 1 0"},  // unbekanntes Tag
        {"EX 1 1 7 0 0 0", "EX 1 1 7 0 0 0"},  // ebene Welle: Winkelanzahlen
        {"TL 1 6 2 1 50 0", "TL 3 1 2 1 50 0"},
        {"NT 1 +8 1 2 0 0", "NT 3 3 1 2 0 0"},
        {"TL 0 6 x 1 50 0", "TL 0 6 x 1 50 0"},
        {"LD 0 1 2 4 10", "LD 0 1 2 4 10"},
        {"LD 0 1 4 7 10", "LD 0 1 4 5 10\nLD 0 3 1 2 10"},
        {"LD 0 1 0 0 10", "LD 0 1 1 5 10\nLD 0 3 1 3 10"},
        {"LD 0 1 6 0 10", "LD 0 3 1 1 10"},
        {"LD -1 1 4 7 10", "LD -1 1 4 7 10"},
    };
    for (const auto& f : faelle) {
        auto aus = Geometrie::eindeutigeTags(deck + f.karte + "\nEN");
        auto erwartet =
            std::string("GW 1 5 0 0 0 0 0 1 0.01\nGW 2 4 1 0 0 1 0 1 0.01\nGW 3 3 2 0 0 2 0 1 0.01\nGE 0\n") +
            f.erwartet + "\nEN";
        EXPECT_EQ(aus, erwartet) << f.karte;
    }
}

TEST(Geometrie, EindeutigeTagsNummeriertAuchTagNullUndDoppelteTags) {
    EXPECT_EQ(
        Geometrie::eindeutigeTags("GW 7 1 0 0 0 0 0 1 0.01\nGW 0 1 1 0 0 1 0 1 0.01\n"
                                  "GW 7 2 2 0 0 2 0 1 0.01\nGE 0\nEX 0 7 2 0 1 0"),
        "GW 1 1 0 0 0 0 0 1 0.01\nGW 2 1 1 0 0 1 0 1 0.01\nGW 3 2 2 0 0 2 0 1 0.01\nGE 0\nEX 0 3 1 0 1 0");
}

TEST(Geometrie, ZahlenNimmtNurVollstaendigLesbareTeile) {
    EXPECT_EQ(Geometrie::zahlen({"1", "+2", "-3.5", "1e3", "x", "+-1", "", "1.5.2", ".5", "2,5", "+", "7m"}),
              (std::vector<double>{1, 2, -3.5, 1000, 0.5}));
    auto unendlich = Geometrie::zahlen({"inf", "+INF", "-inf"});
    ASSERT_EQ(unendlich.size(), 3u);
    EXPECT_TRUE(std::isinf(unendlich[0]) && std::isinf(unendlich[1]) && unendlich[2] < 0);
}
