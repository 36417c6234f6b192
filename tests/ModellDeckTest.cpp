#include "NECKern/Ausdruck.hpp"
#include "NECKern/Modell.hpp"

#include <clocale>
#include <gtest/gtest.h>

using namespace NECKern;

namespace {

Modell modell(const std::string& text) {
    return Modell::lesen(text, "Test");
}

// Die Zeilen des Rechendecks nach "CE".
std::string karten(const std::string& deck) {
    return deck.substr(deck.find("CE\n") + 3);
}

std::string deckFehler(const Modell& m, const Werte& ueberschreiben = {},
                       const std::optional<Karte>& fr = std::nullopt) {
    try {
        m.deck(ueberschreiben, fr);
    } catch (const Ausdruck::Fehler& f) {
        return f.description();
    }
    return "kein Fehler";
}

} // namespace

TEST(ModellDeck, LeeresModellBekommtXqUndEn) {
    EXPECT_EQ(Modell().deck(), "CM Neue Antenne\nCE\nXQ 0\nEN\n");
}

TEST(ModellDeck, FelderWerdenZuZahlen) {
    auto m = modell("CM Dipol\nCM zweite Zeile\nSY n=11, l=10\nGW 1 n 0 0 -l/2 0 0 l/2 1mm\nGE 0\n"
                    "EX 0 1 (n+1)/2 0 1 0\nFR 0 1 0 0 c0/20 0\nEN\n");
    EXPECT_EQ(m.deck(), "CM Dipol\nCM zweite Zeile\nCE\n"
                        "GW 1 11 0 0 -5 0 0 5 0.001\nGE 0\nEX 0 1 6 0 1 0 0 0 0 0\n"
                        "FR 0 1 0 0 14.9896229 0\nXQ 0\nEN\n");
}

TEST(ModellDeck, FehlendeUndUeberzaehligeFelder) {
    Modell m;
    m.karten = {Karte("GW", {"1"}, {"1", "2", "3", "4", "5", "6", "7", "8", "9"}), Karte("GE", {}, {}),
                Karte("EX", {"", "1"}, {"", "2"}), Karte("EN", {"9"}, {"9"})};
    EXPECT_EQ(karten(m.deck()), "GW 1 0 1 2 3 4 5 6 7\nGE 0\nEX 0 1 0 0 0 2 0 0 0 0\nXQ 0\nEN\n");
}

TEST(ModellDeck, GanzzahlfelderRundenHalbVonNullWeg) {
    struct Fall {
        const char* feld;
        const char* text;
    };
    for (const auto& f : std::vector<Fall>{{"10.5", "11"},
                                           {"-0.5", "-1"},
                                           {"2.5", "3"},
                                           {"-2.5", "-3"},
                                           {"0.49", "0"},
                                           {"-0.4", "0"},
                                           {"1e15", "1000000000000000"},
                                           {"-2^63", "-9223372036854775808"},
                                           {"2^62", "4611686018427387904"}}) {
        Modell m;
        m.karten = {Karte("GE", {f.feld}, {})};
        EXPECT_EQ(karten(m.deck()), std::string("GE ") + f.text + "\nXQ 0\nEN\n") << f.feld;
    }
}

TEST(ModellDeck, GanzzahlfeldAusserhalbDesBereichsIstAuswertungsfehler) {
    struct Fall {
        const char* feld;
        const char* wert;
    };
    for (const auto& f : std::vector<Fall>{{"1e300", "1e+300"},
                                           {"2^63", "9.22337e+18"},
                                           {"-1e19", "-1e+19"},
                                           {"1/0", "inf"},
                                           {"-1/0", "-inf"},
                                           {"0/0", "nan"}}) {
        Modell m;
        m.karten = {Karte("GE", {f.feld}, {})};
        EXPECT_EQ(deckFehler(m), std::string("Ganzzahlfeld mit dem Wert ") + f.wert +
                                     " ist keine ganze Zahl im gültigen Bereich.")
            << f.feld;
    }
}

TEST(ModellDeck, ZahlformatDerReellfelder) {
    struct Fall {
        double x;
        const char* text;
    };
    for (const auto& f : std::vector<Fall>{{0, "0"},
                                           {-0.0, "0"},
                                           {0.5, "0.5"},
                                           {-0.5, "-0.5"},
                                           {14.2, "14.2"},
                                           {0.001, "0.001"},
                                           {0.00099, "9.900000000E-04"},
                                           {0.0001, "1.000000000E-04"},
                                           {9999999.99, "9999999.99"},
                                           {10000000, "1.000000000E+07"},
                                           {2.5e7, "2.500000000E+07"},
                                           {1.0 / 3, "0.333333333"},
                                           {-123456.789012, "-123456.789"}})
        EXPECT_EQ(Modell::zahl(f.x), f.text) << f.x;
}

TEST(ModellDeck, RpUndEnBleibenOhneRpStehtXqVorEn) {
    auto m = modell("GW 1 3 0 0 0 0 0 1 0.001\nGE 0\nRP 0 1 1 1000 90 0 0 0\nEN\n");
    EXPECT_EQ(karten(m.deck()), "GW 1 3 0 0 0 0 0 1 0.001\nGE 0\nRP 0 1 1 1000 90 0 0 0 0 0\nEN\n");
    EXPECT_EQ(karten(m.deck({}, std::nullopt, true)), "GW 1 3 0 0 0 0 0 1 0.001\nGE 0\nXQ 0\nEN\n");
}

TEST(ModellDeck, ErgaenzungNurWoNoetig) {
    struct Fall {
        const char* karten;
        const char* erwartet;
    };
    for (const auto& f : std::vector<Fall>{
             {"GE 0\n", "GE 0\nXQ 0\nEN\n"},
             {"GE 0\nXQ 0\n", "GE 0\nXQ 0\nEN\n"},
             {"GE 0\nEN\nXQ 1\n", "GE 0\nEN\nXQ 1\n"},
             {"GE 0\nEN\nGE 1\nEN\n", "GE 0\nXQ 0\nEN\nGE 1\nEN\n"},
             {"RP 0 1 1 1000\nGE 0\n", "RP 0 1 1 1000 0 0 0 0 0 0\nGE 0\nEN\n"},
         }) {
        EXPECT_EQ(karten(modell(f.karten).deck()), f.erwartet) << f.karten;
    }
}

TEST(ModellDeck, KommentarUndSymbolkartenFallenWeg) {
    Modell m;
    m.name = "Ohne Kommentar";
    m.karten = {Karte("CM", {}, {"x"}), Karte("CE", {}, {}), Karte("SY", {"a=1"}, {}), Karte("GE", {}, {})};
    EXPECT_EQ(m.deck(), "CM Ohne Kommentar\nCE\nGE 0\nXQ 0\nEN\n");
    m.kommentar = {std::string(100, 'x')};
    EXPECT_EQ(m.deck(),
              "CM " + std::string(70, 'x') + "\nCM " + std::string(30, 'x') + "\nCE\nGE 0\nXQ 0\nEN\n");
}

TEST(ModellDeck, ErsatzFrStehtAnStelleDerErstenFrKarte) {
    auto m = modell("SY f=14\nGE 0\nFR 0 1 0 0 f 0\nEX 0 1 1 0 1 0\nFR 0 3 0 0 7 1\nEN\n");
    Karte ersatz("FR", {"0", "1", "0", "0"}, {"f*2", "0"});
    EXPECT_EQ(karten(m.deck({}, ersatz)), "GE 0\nFR 0 1 0 0 28 0\nEX 0 1 1 0 1 0 0 0 0 0\nXQ 0\nEN\n");
    // Ohne FR-Karte im Modell bleibt der Ersatz unbenutzt.
    EXPECT_EQ(karten(modell("GE 0\n").deck({}, ersatz)), "GE 0\nXQ 0\nEN\n");
    EXPECT_EQ(deckFehler(m, {}, Karte("FR", {"0", "1"}, {"g"})), "Variable 'g' unbekannt");
}

TEST(ModellDeck, UeberschreibenNachGenauemNamen) {
    auto gross = modell("SY L=10\nGW 1 1 0 0 0 0 0 l 0.001\n");
    auto klein = modell("SY l=10\nGW 1 1 0 0 0 0 0 l 0.001\n");
    EXPECT_EQ(gross.variablenWerte({{"L", 2}}), (Werte{{"l", 2}}));
    EXPECT_EQ(klein.variablenWerte({{"L", 2}}), (Werte{{"l", 10}}));
    EXPECT_NE(gross.deck({{"L", 2}}).find("GW 1 1 0 0 0 0 0 2 0.001\n"), std::string::npos);
    // Eine überschriebene Formel wird nie ausgewertet.
    auto kaputt = modell("SY a=1/, b=a*2\n");
    EXPECT_EQ(kaputt.variablenWerte({{"a", 3}}), (Werte{{"a", 3}, {"b", 6}}));
    EXPECT_THROW(kaputt.variablenWerte(), Ausdruck::Fehler);
}

TEST(ModellDeck, VariablenSehenNurVorherigeUndSpaetereErsetzen) {
    EXPECT_EQ(modell("SY a=1, A=a+1, Höhe=A*2\n").variablenWerte(), (Werte{{"a", 2}, {"höhe", 4}}));
    try {
        modell("SY b=a*2, a=1\n").variablenWerte();
        ADD_FAILURE() << "Fehler erwartet";
    } catch (const Ausdruck::Fehler& f) {
        EXPECT_STREQ(f.what(), "Variable 'a' unbekannt");
    }
}

TEST(ModellDeck, ErsterFehlerEndetDieErzeugung) {
    EXPECT_EQ(deckFehler(modell("SY a=foo(1)\nGE 0\n")), "Funktion 'foo' unbekannt");
    EXPECT_EQ(deckFehler(modell("GE 0\nGW 1 1 0 0 0 0 0 1 2x\n")), "Unerwartet: 'x' in '2x'");
    EXPECT_EQ(deckFehler(modell("GW 1 (1 0 0 0 0 0 1 1\n")), "')' fehlt");
}

TEST(ModellDeck, Frequenzplan) {
    using Plan = Modell::Frequenzplan;
    EXPECT_EQ(modell("FR 0 5 0 0 144 0.5\n").frequenzen(), (Plan{144, 0.5, 5}));
    EXPECT_EQ(modell("FR 0 0 0 0 144 0.5\n").frequenzen(), (Plan{144, 0.5, 1}));
    EXPECT_EQ(modell("FR 0 -3 0 0 7\n").frequenzen(), (Plan{7, 0, 1}));
    EXPECT_EQ(modell("SY n=2.9, f=3.5\nFR 0 n 0 0 f f/10\nFR 0 9 0 0 50 1\n").frequenzen(),
              (Plan{3.5, 0.35, 2}));
    EXPECT_EQ(modell("FR 0\n").frequenzen(), (Plan{14, 0, 1}));
    EXPECT_EQ(modell("GE 0\n").frequenzen(), (Plan{14, 0, 1}));
    Modell leer;
    leer.karten = {Karte("FR", {"0", ""}, {""})};
    EXPECT_EQ(leer.frequenzen(), (Plan{14, 0, 1}));
    EXPECT_THROW(modell("FR 0 1e12 0 0 14 0\n").frequenzen(), Ausdruck::Fehler);
    EXPECT_THROW(modell("FR 0 0/0 0 0 14 0\n").frequenzen(), Ausdruck::Fehler);
    EXPECT_THROW(modell("SY x=?\nFR 0 1 0 0 14 0\n").frequenzen(), Ausdruck::Fehler);
}

// Eine deutsche Umgebung darf weder Dezimalpunkt noch Ganzzahlen verändern.
TEST(ModellDeck, DeckGleichUnterDeutscherUmgebung) {
    auto m = modell("SY l=10.25, d=0.5mm\nGW 1 21 0 0 -l/2 0 0 l/2 d\nGE 0\nEX 0 1 11 0 1.5 0\n"
                    "FR 0 3 0 0 14.2 0.05\nRP 0 1 1 1000 90 0 0 0 1e7\nEN\n");
    auto vorher = m.deck();
    if (std::setlocale(LC_ALL, "de_DE.UTF-8") == nullptr) GTEST_SKIP() << "Umgebung de_DE.UTF-8 fehlt";
    auto deutsch = m.deck();
    auto plan = m.frequenzen();
    std::setlocale(LC_ALL, "C");
    EXPECT_EQ(deutsch, vorher);
    EXPECT_NE(deutsch.find("GW 1 21 0 0 -5.125 0 0 5.125 5.000000000E-04\n"), std::string::npos);
    EXPECT_EQ(plan, (Modell::Frequenzplan{14.2, 0.05, 3}));
}
