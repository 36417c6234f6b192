#include "NECKern/Ausdruck.hpp"
#include "NECKern/Modell.hpp"

#include <clocale>
#include <gtest/gtest.h>

using namespace NECKern;
using Liste = std::vector<std::string>;

namespace {

Modell modell(const std::string& text) {
    return Modell::lesen(text, "Test");
}

Karte fr(const std::string& start, const std::string& anzahl = "1") {
    return Karte("FR", Liste{"0", anzahl, "0", "0"}, Liste{start, "0"});
}

} // namespace

TEST(Deck, LeeresModellBekommtXqUndEn) {
    EXPECT_EQ(Modell().deck(), "CM Neue Antenne\nCE\nXQ 0\nEN\n");
}

TEST(Deck, FelderWerdenAusgewertetUndAufgefuellt) {
    auto m = modell("CM Dipol\nSY n=11, l=10\nGW 1 n 0 0 -l/2 0 0 l/2 1mm\nGE\nEX 0 1 6 0 1\n");
    EXPECT_EQ(m.deck(), "CM Dipol\nCE\n"
                        "GW 1 11 0 0 -5 0 0 5 0.001\n"
                        "GE 0\n"
                        "EX 0 1 6 0 1 0 0 0 0 0\n"
                        "XQ 0\nEN\n");
}

TEST(Deck, GanzzahlenRundenHaelftenVonNullWeg) {
    struct Fall {
        const char* feld;
        const char* text;
    };
    for (auto f : std::initializer_list<Fall>{{"10.5", "11"},
                                              {"-0.5", "-1"},
                                              {"2.5", "3"},
                                              {"-2.5", "-3"},
                                              {"2.49", "2"},
                                              {"1e15", "1000000000000000"}}) {
        Modell m;
        m.karten.emplace_back("GE", Liste{f.feld}, Liste{});
        EXPECT_EQ(m.deck(), std::string("CM Neue Antenne\nCE\nGE ") + f.text + "\nXQ 0\nEN\n") << f.feld;
    }
}

TEST(Deck, GanzzahlAusserhalbDes64BitBereichsIstEinAuswertungsfehler) {
    for (const char* feld : {"1e300", "1/0", "0/0", "9223372036854775808", "-1e19"}) {
        Modell m;
        m.karten.emplace_back("GE", Liste{feld}, Liste{});
        EXPECT_THROW(m.deck(), Ausdruck::Fehler) << feld;
    }
    Modell m;
    m.karten.emplace_back("GE", Liste{"1e300"}, Liste{});
    try {
        m.deck();
    } catch (const Ausdruck::Fehler& e) {
        EXPECT_STREQ(e.what(),
                     "Der Wert 1e+300 in einem Ganzzahlfeld ist keine ganze Zahl im 64-Bit-Bereich.");
    }
}

TEST(Deck, RpUndEnBleibenOhneRpStehtXqVorEn) {
    auto m = modell("GW 1 1 0 0 0 0 0 1 1\nRP 0 1 1 1000 90 0 0 0\nEN\n");
    EXPECT_EQ(m.deck(), "CM Test\nCE\nGW 1 1 0 0 0 0 0 1 1\nRP 0 1 1 1000 90 0 0 0 0 0\nEN\n");
    EXPECT_EQ(m.deck({}, std::nullopt, true), "CM Test\nCE\nGW 1 1 0 0 0 0 0 1 1\nXQ 0\nEN\n");
    // Ein vorhandenes XQ genügt; EN wird angehängt.
    EXPECT_EQ(modell("XQ\n").deck(), "CM Test\nCE\nXQ 0\nEN\n");
}

TEST(Deck, ErsatzFrStehtAnStelleDerErstenUndErsetztAlle) {
    auto m = modell("FR 0 1 0 0 7 0\nGE 0\nFR 0 1 0 0 14 0\n");
    EXPECT_EQ(m.deck({}, fr("144.5", "3")), "CM Test\nCE\nFR 0 3 0 0 144.5 0\nGE 0\nXQ 0\nEN\n");
    EXPECT_EQ(modell("GE 0\n").deck({}, fr("1")), "CM Test\nCE\nGE 0\nXQ 0\nEN\n");
    EXPECT_THROW(m.deck({}, fr("x")), Ausdruck::Fehler);
}

TEST(Deck, UeberschreibenNachGenauemNamen) {
    auto m = modell("SY L=1\nSY l2=kaputt(\nKH L+l2\n");
    // Der überschriebene Wert ersetzt die Formel, die deshalb nie ausgewertet wird.
    EXPECT_EQ(m.deck({{"L", 2}, {"l2", 3}}), "CM Test\nCE\nKH 5\nXQ 0\nEN\n");
    // Der Schlüssel l trifft die Variable L nicht.
    EXPECT_THROW(modell("SY L=kaputt(\n").deck({{"l", 2}}), Ausdruck::Fehler);
}

TEST(Variablen, ReihenfolgeUndSpaetereGewinnen) {
    auto m = modell("SY a=1, b=a*2, A=5, c=a+b\n");
    auto w = m.variablenWerte();
    EXPECT_EQ(w, (Werte{{"a", 5}, {"b", 2}, {"c", 7}}));
    try {
        modell("SY a=b, b=1\n").variablenWerte();
        FAIL();
    } catch (const Ausdruck::Fehler& e) {
        EXPECT_STREQ(e.what(), "Variable 'b' unbekannt");
    }
}

TEST(Frequenzen, PlanAusDerErstenFrKarte) {
    EXPECT_EQ(modell("FR 0 5 0 0 144 0.5\nFR 0 1 0 0 7 0\n").frequenzen(),
              (Modell::Frequenzplan{144, 0.5, 5}));
    EXPECT_EQ(modell("FR 0 0 0 0 144 0.5\n").frequenzen().anzahl, 1);
    EXPECT_EQ(modell("SY n=3.9\nFR 0 n 0 0 f\nSY f=7\n").frequenzen().anzahl, 3);
    EXPECT_EQ(modell("FR 0\n").frequenzen(), (Modell::Frequenzplan{14, 0, 1}));
    EXPECT_EQ(modell("GE 0\n").frequenzen(), (Modell::Frequenzplan{14, 0, 1}));
    EXPECT_EQ(modell("FR 0 1e12 0 0 1 1\n").frequenzen().anzahl, 2147483647);
}

TEST(Zahl, FormatJeGroessenordnung) {
    struct Fall {
        double x;
        const char* text;
    };
    for (auto f : std::initializer_list<Fall>{{0, "0"},
                                              {0.5, "0.5"},
                                              {14.2, "14.2"},
                                              {0.001, "0.001"},
                                              {0.00099, "9.900000000E-04"},
                                              {0.0001, "1.000000000E-04"},
                                              {10000000, "1.000000000E+07"},
                                              {9999999, "9999999"},
                                              {2.5e7, "2.500000000E+07"},
                                              {-0.25, "-0.25"},
                                              {1.0 / 3, "0.333333333"}}) {
        EXPECT_EQ(Modell::zahl(f.x), f.text) << f.x;
    }
}

TEST(Deck, GleichUnterDeutscherLocale) {
    auto m = modell("SY l=10.25, r=1mm\nGW 1 21 0 -l/2 10 0 l/2 10 r\nGE 1\nFR 0 1 0 0 14.175 0\n"
                    "LD 5 0 0 0 5.8e7\nKH 0.0001\n");
    auto inC = m.deck();
    if (!std::setlocale(LC_ALL, "de_DE.UTF-8")) GTEST_SKIP() << "Locale de_DE.UTF-8 fehlt";
    auto inDeutsch = m.deck();
    auto plan = m.frequenzen();
    std::setlocale(LC_ALL, "C");
    EXPECT_EQ(inDeutsch, inC);
    EXPECT_NE(inC.find("GW 1 21 0 -5.125 10 0 5.125 10 0.001"), std::string::npos);
    EXPECT_EQ(plan.start, 14.175);
}
