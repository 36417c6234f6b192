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
std::string karten(const Modell& m, const std::optional<Karte>& fr = std::nullopt, bool ohneRP = false) {
    auto deck = m.deck({}, fr, ohneRP);
    return deck.substr(deck.find("CE\n") + 3);
}

std::string deckFehler(const Modell& m, const std::optional<Karte>& fr = std::nullopt) {
    try {
        m.deck({}, fr);
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
    auto m = modell("CM Dipol\nSY n=11, l=10\nGW 1 n 0 0 -l/2 0 0 l/2 1mm\nGE 0\nEX 0 1 (n+1)/2 0 1\n"
                    "FR 0 1 0 0 c0/20 0\nEN\n");
    EXPECT_EQ(m.deck(), "CM Dipol\nCE\nGW 1 11 0 0 -5 0 0 5 0.001\nGE 0\nEX 0 1 6 0 1 0 0 0 0 0\n"
                        "FR 0 1 0 0 14.9896229 0\nXQ 0\nEN\n");
    // Fehlende und leere Felder gelten als 0, überzählige fallen weg; CM, CE und SY kommen nicht mit.
    Modell roh;
    roh.karten = {Karte("GW", {"1"}, {"1", "2", "3", "4", "5", "6", "7", "8"}),
                  Karte("EX", {"", "1"}, {"", "2"}), Karte("SY", {"a"}, {}), Karte("CM", {}, {}),
                  Karte("EN", {"9"}, {"9"})};
    EXPECT_EQ(karten(roh), "GW 1 0 1 2 3 4 5 6 7\nEX 0 1 0 0 0 2 0 0 0 0\nXQ 0\nEN\n");
}

TEST(ModellDeck, GanzzahlfelderRundenHalbVonNullWeg) {
    std::vector<std::pair<std::string, std::string>> faelle{
        {"-0.5", "-1"}, {"-0.4", "0"}, {"-2^63", "-9223372036854775808"}};
    for (const auto& [feld, text] : faelle) {
        Modell m;
        m.karten = {Karte("GE", {feld}, {})};
        EXPECT_EQ(karten(m), "GE " + text + "\nXQ 0\nEN\n") << feld;
    }
}

TEST(ModellDeck, GanzzahlfeldAusserhalbVon64BitIstAuswertungsfehler) {
    std::vector<std::pair<std::string, std::string>> faelle{
        {"2^63", "9.22337e+18"}, {"-1/0", "-inf"}, {"0/0", "nan"}};
    for (const auto& [feld, wert] : faelle) {
        Modell m;
        m.karten = {Karte("GE", {feld}, {})};
        EXPECT_EQ(deckFehler(m),
                  "Ganzzahlfeld mit dem Wert " + wert + " ist keine ganze Zahl im gültigen Bereich.");
    }
}

TEST(ModellDeck, ZahlformatDerReellfelder) {
    std::vector<std::pair<double, std::string>> faelle{
        {-0.0, "0"}, {-0.5, "-0.5"}, {0.001, "0.001"}, {1e7, "1.000000000E+07"}, {1.0 / 3, "0.333333333"}};
    for (const auto& [x, text] : faelle)
        EXPECT_EQ(Modell::zahl(x), text) << x;
}

TEST(ModellDeck, ErgaenzungUmXqUndEnNurWoNoetig) {
    std::vector<std::pair<std::string, std::string>> faelle{
        {"GE 0\nXQ 0\n", "GE 0\nXQ 0\nEN\n"},
        {"GE 0\nEN\nXQ 1\n", "GE 0\nEN\nXQ 1\n"},
        {"GE 0\nEN\nGE 1\nEN\n", "GE 0\nXQ 0\nEN\nGE 1\nEN\n"},
        {"GE 0\nRP 0 1 1 1000\nEN\n", "GE 0\nRP 0 1 1 1000 0 0 0 0 0 0\nEN\n"}};
    for (const auto& [text, erwartet] : faelle)
        EXPECT_EQ(karten(modell(text)), erwartet) << text;
    EXPECT_EQ(karten(modell("GE 0\nRP 0 1 1 1000\nEN\n"), std::nullopt, true), "GE 0\nXQ 0\nEN\n");
}

TEST(ModellDeck, ErsatzFrStehtAnStelleDerErstenFrKarte) {
    auto m = modell("SY f=14\nGE 0\nFR 0 1 0 0 f 0\nEX 0 1 1 0 1\nFR 0 3 0 0 7 1\nEN\n");
    Karte ersatz("FR", {"0", "1", "0", "0"}, {"f*2", "0"});
    EXPECT_EQ(karten(m, ersatz), "GE 0\nFR 0 1 0 0 28 0\nEX 0 1 1 0 1 0 0 0 0 0\nXQ 0\nEN\n");
    EXPECT_EQ(karten(modell("GE 0\n"), ersatz), "GE 0\nXQ 0\nEN\n");
    EXPECT_EQ(deckFehler(m, Karte("FR", {"0", "1"}, {"g"})), "Variable 'g' unbekannt");
}

TEST(ModellDeck, UeberschreibenNachGenauemNamenOhneAuswertung) {
    EXPECT_EQ(modell("SY L=10\n").variablenWerte({{"L", 2}}), (Werte{{"l", 2}}));
    EXPECT_EQ(modell("SY l=10\n").variablenWerte({{"L", 2}}), (Werte{{"l", 10}}));
    EXPECT_EQ(modell("SY a=1/, b=a*2\n").variablenWerte({{"a", 3}}), (Werte{{"a", 3}, {"b", 6}}));
    EXPECT_NE(modell("SY L=10\nGE L\n").deck({{"L", 2}}).find("\nGE 2\n"), std::string::npos);
}

TEST(ModellDeck, VariablenSehenNurVorherigeUndSpaetereErsetzen) {
    EXPECT_EQ(modell("SY a=1, A=a+1, Höhe=A*2\n").variablenWerte(), (Werte{{"a", 2}, {"höhe", 4}}));
    EXPECT_EQ(deckFehler(modell("SY b=a*2, a=1\n")), "Variable 'a' unbekannt");
}

TEST(ModellDeck, Frequenzplan) {
    using Plan = Modell::Frequenzplan;
    EXPECT_EQ(modell("FR 0 5 0 0 144 0.5\n").frequenzen(), (Plan{144, 0.5, 5}));
    EXPECT_EQ(modell("FR 0 0 0 0 144 0.5\n").frequenzen(), (Plan{144, 0.5, 1}));
    EXPECT_EQ(modell("SY n=2.9, f=3.5\nFR 0 n 0 0 f f/10\nFR 0 9 0 0 50 1\n").frequenzen(),
              (Plan{3.5, 0.35, 2}));
    EXPECT_EQ(modell("FR 0\n").frequenzen(), (Plan{14, 0, 1}));
    EXPECT_EQ(modell("GE 0\n").frequenzen(), (Plan{14, 0, 1}));
    EXPECT_THROW(modell("FR 0 1e12 0 0 14 0\n").frequenzen(), Ausdruck::Fehler);
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
