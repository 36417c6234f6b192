#include "NECKern/Geometrie.hpp"

#include <array>
#include <cmath>
#include <gtest/gtest.h>
#include <numbers>
#include <string>
#include <vector>

using namespace NECKern;

namespace {

using Punkt = std::array<double, 3>;

// Die Drähte einer Geometrie, mit allen Kopien ausgeführt.
std::vector<Geometrie::Draht> draehte(const std::string& geometrie) {
    return Geometrie::struktur(geometrie + "\nGE 0\n").draehte;
}

void erwartePunkt(const Punkt& p, const Punkt& soll) {
    for (std::size_t i = 0; i < 3; ++i)
        EXPECT_NEAR(p[i], soll[i], 1e-8) << i;
}

std::string deckMit(const std::string& geometrie, const std::string& rest = "EX 0 1 1 0 1 0") {
    return "CM Test\nCE\n" + geometrie + "\nGE 0\n" + rest + "\nEN\n";
}

} // namespace

TEST(Geometrie, AbflachenSchreibtDieDraehteVorGeUndLaesstDenRestStehen) {
    EXPECT_EQ(
        Geometrie::abflachen("CM Dipol\nCE\n\nGW 1 11 1 2 -1.5 3 4 1.50 0.0005\nGA 2 1 1 0 90 0.001\n"
                             "GE 0\nFR 0 1 0 0 14 0\nEN\n"),
        "CM Dipol\nCE\nGW 1 11 1 2 -1.5 3 4 1.5 5.000000000E-04\nGW 2 1 1 0 0 6.123233996E-17 0 1 0.001\n"
        "GE 0\nFR 0 1 0 0 14 0\nEN");
    // Ohne GE keine Drähte; nach GE wird nichts mehr umgeformt.
    EXPECT_EQ(Geometrie::abflachen("CM x\nGW 1 1 0 0 0 0 0 1 0.01\nGA 1 4 1 0 90 0.001\nEX 0 1 1 0 1\nEN"),
              "CM x\nEX 0 1 1 0 1\nEN");
    EXPECT_EQ(Geometrie::abflachen("GW 1 1 0 0 0 0 0 1 0.01\nGE 0\nGA 1 4 1 0 90 0.001\nGE 0"),
              "GW 1 1 0 0 0 0 0 1 0.01\nGE 0\nGA 1 4 1 0 90 0.001\nGE 0");
}

TEST(Geometrie, BogenWirdInViertelkreisAusEinSegmentDraehtenZerlegt) {
    const auto d = draehte("GA 1 4 1 0 90 0.001");
    ASSERT_EQ(d.size(), 4u);
    for (std::size_t i = 0; i < 4; ++i) {
        EXPECT_EQ(d[i].tag, 1);
        EXPECT_EQ(d[i].segmente, 1);
        EXPECT_EQ(d[i].radius, 0.001);
        const double w0 = std::numbers::pi / 8 * static_cast<double>(i), w1 = w0 + std::numbers::pi / 8;
        erwartePunkt(d[i].a, {std::cos(w0), 0, std::sin(w0)});
        erwartePunkt(d[i].b, {std::cos(w1), 0, std::sin(w1)});
    }
    auto eindeutig =
        Geometrie::eindeutigeTags(Geometrie::abflachen(deckMit("GA 1 4 1 0 90 0.001", "EX 0 1 3 0 1 0")));
    EXPECT_NE(eindeutig.find("\nEX 0 3 1 0 1 0\n"), std::string::npos) << eindeutig;
}

TEST(Geometrie, RotationssymmetrieErhoehtTagsJeKopieAberNieTagNull) {
    const auto d = draehte("GW 1 3 1 0 0 2 0 0 0.01\nGW 0 1 1 0 1 2 0 1 0.01\nGR 10 4");
    ASSERT_EQ(d.size(), 8u);
    for (std::size_t k = 0; k < 4; ++k) {
        const double w = std::numbers::pi / 2 * static_cast<double>(k);
        EXPECT_EQ(d[2 * k].tag, 1 + 10 * static_cast<std::int64_t>(k));
        EXPECT_EQ(d[2 * k + 1].tag, 0);
        erwartePunkt(d[2 * k].b, {2 * std::cos(w), 2 * std::sin(w), 0});
    }
}

TEST(Geometrie, SpiegelnSkalierenUndVerschieben) {
    struct Fall {
        const char* geometrie;
        std::size_t anzahl, index;
        std::int64_t tag;
        Punkt a, b;
    };
    const char* gx = "GW 5 3 1 2 3 4 5 6 0.01\nGX 1 110";
    const char* gm = "GW 1 1 0 0 0 0 1 0 0.01\nGW 3 1 0 0 0 0 1 0 0.01\nGM 100 0 90 90 0 0 0 5 3";
    const char* kopien = "GW 1 1 0 0 0 1 0 0 0.01\nGW 0 1 0 1 0 1 1 0 0.01\nGM 2 2 0 0 90 0 0 1";
    const Fall faelle[] = {
        // Erst in y, dann in x gespiegelt, mit verdoppeltem Zuwachs.
        {gx, 4, 1, 6, {1, -2, 3}, {4, -5, 6}},
        {gx, 4, 3, 8, {-1, -2, 3}, {-4, -5, 6}},
        {"GW 1 3 1 2 3 4 5 6 0.01\nGX 100 1", 2, 1, 101, {1, 2, -3}, {4, 5, -6}},
        // Millimeter in Meter.
        {"GW 1 5 0 0 -500 0 0 500 2\nGS 0 0 0.001", 1, 0, 1, {0, 0, -0.5}, {0, 0, 0.5}},
        // Ohne Kopien nur die Betroffenen; Drehung erst um x, dann um y, dann verschoben.
        {gm, 2, 0, 1, {0, 0, 0}, {0, 1, 0}},
        {gm, 2, 1, 103, {0, 0, 5}, {1, 0, 5}},
        // Mit Kopien entsteht jede Generation aus der vorigen.
        {kopien, 6, 4, 5, {0, 0, 2}, {-1, 0, 2}},
        {kopien, 6, 5, 0, {0, -1, 2}, {-1, -1, 2}},
    };
    for (const auto& f : faelle) {
        SCOPED_TRACE(testing::Message() << f.geometrie << " [" << f.index << "]");
        const auto d = draehte(f.geometrie);
        ASSERT_EQ(d.size(), f.anzahl);
        EXPECT_EQ(d[f.index].tag, f.tag);
        erwartePunkt(d[f.index].a, f.a);
        erwartePunkt(d[f.index].b, f.b);
    }
    EXPECT_DOUBLE_EQ(draehte("GW 1 5 0 0 -500 0 0 500 2\nGS 0 0 0.001")[0].radius, 0.002);
}

TEST(Geometrie, WendelrichtungFolgtDemVorzeichenDerLaenge) {
    const auto rechts = draehte("GH 1 8 1 2 0.5 0.5 0.5 0.5 0.001 0");
    const auto links = draehte("GH 1 8 1 -2 0.5 0.5 0.5 0.5 0.001 0");
    ASSERT_EQ(rechts.size(), 8u);
    ASSERT_EQ(links.size(), 8u);
    // Viertelwindung nach dem ersten Stück: rechtsgängig bei +y, linksgängig bei -y.
    erwartePunkt(rechts[0].a, {0.5, 0, 0});
    erwartePunkt(rechts[0].b, {0, 0.5, 0.25});
    erwartePunkt(links[0].b, {0, -0.5, 0.25});
    erwartePunkt(rechts[7].b, {0.5, 0, 2});
    EXPECT_EQ(rechts[3].radius, 0.001);

    // Ohne Steigung eine Gerade; die Radien wachsen linear.
    const auto gerade = draehte("GH 1 2 0 4 1 1 3 3 0.001 0");
    ASSERT_EQ(gerade.size(), 2u);
    erwartePunkt(gerade[0].b, {2, 0, 2});
    erwartePunkt(gerade[1].b, {3, 0, 4});
}

TEST(Geometrie, UnvollstaendigeGeometriekartenFallenWeg) {
    for (const char* karte :
         {"GA 1 4 1 0 90", "GH 1 4 1 2 0.5 0.5 0.5 0.5", "GM 1 0 0 0 0 0 0", "GM 1 x 0 0 0 0 0 1", "GR 10",
          "GR 10 x", "GS 0 0", "GW 1 1 0 0 0 0 0", "GA 1 0 1 0 90 0.001", "GA 1 -3 1 0 90 0.001"}) {
        const auto d = draehte(std::string("GW 1 1 0 0 0 0 0 1 0.01\n") + karte);
        ASSERT_EQ(d.size(), 1u) << karte;
        erwartePunkt(d[0].b, {0, 0, 1});
    }
}

TEST(Geometrie, RiesigeKopienzahlenGebenDasDeckUnveraendertZurueck) {
    for (std::string karte : {"GM 0 1000000000 0 0 0 0 0 1", "GA 1 1000000000 1 0 90 0.001",
                              "GR 0 9223372036854775807", "GH 1 999999999999 1 2 1 1 1 1 0.001 0"}) {
        auto deck = deckMit("GW 1 1 0 0 0 0 0 1 0.01\n" + karte);
        EXPECT_EQ(Geometrie::abflachen(deck), deck) << karte;
        EXPECT_EQ(Geometrie::struktur(deck).zuGrossBei, karte.substr(0, 2));
    }
    // Viele Bearbeitungen einer grossen Liste: ebenfalls begrenzt, statt minutenlang zu rechnen.
    std::string viele = "GA 1 150000 1 0 90 0.001";
    for (int i = 0; i < 100; ++i)
        viele += "\nGS 0 0 1";
    auto deck = deckMit(viele);
    EXPECT_EQ(Geometrie::abflachen(deck), deck);
}

TEST(Geometrie, StrukturZaehltSegmenteFlaechenUndSymmetrieWieNec2c) {
    // Zwei Drähte (5 und 3 Segmente), 2·3 + 1 Flächen; GX verdoppelt alles, GR 3 verdreifacht.
    const auto s = Geometrie::struktur("SM 2 3 0 0 0 1 0 0\nSC 0 0 1 1 0\nSP 0 0 2 0 0 90 0 0.1\n"
                                       "GW 1 5 0 0 1 0 0 2 0.001\nGA 2 3 1 0 90 0.001\nGX 1 100\nGR 0 3\n"
                                       "GE 0\nGW 9 99 0 0 0 0 0 1 0.001");
    EXPECT_EQ(s.draehte.size(), 24u);
    EXPECT_EQ(s.segmente(), 48);
    EXPECT_EQ(s.flaechen, 42);
    EXPECT_EQ(s.symmetrie, 3); // GR nach GX: nec2c nutzt nur die Drehung

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
    const std::string deck =
        "GW 1 5 0 0 0 0 0 1 0.01\nGW 2 4 1 0 0 1 0 1 0.01\nGW 1 3 2 0 0 2 0 1 0.01\nGE 0\n";
    const std::string neu =
        "GW 1 5 0 0 0 0 0 1 0.01\nGW 2 4 1 0 0 1 0 1 0.01\nGW 3 3 2 0 0 2 0 1 0.01\nGE 0\n";
    struct Fall {
        const char* karte;
        const char* erwartet;
    };
    const Fall faelle[] = {
        {"EX 0 1 3 0 1 0", "EX 0 1 3 0 1 0"},
        {"EX 0 1 7 0 1 0", "EX 0 3 2 0 1 0"},
        {"EX 5 1 99 0 1 0", "EX 5 3 3 0 1 0"}, // jenseits der Summe: letztes Segment
        {"EX 0 1 0 0 1 0", "EX 0 1 1 0 1 0"},  // Segment 0 wird 1
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
    for (const auto& f : faelle)
        EXPECT_EQ(Geometrie::eindeutigeTags(deck + f.karte + "\nEN"), neu + f.erwartet + "\nEN") << f.karte;
    // Auch Tag 0 und doppelte Tags werden durchnummeriert.
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
