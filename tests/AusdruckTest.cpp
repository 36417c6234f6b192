#include "NECKern/Ausdruck.hpp"

#include <cmath>
#include <gtest/gtest.h>
#include <limits>

using namespace NECKern;

namespace {

struct Wertfall {
    std::string text;
    double erwartet;
};

struct Fehlerfall {
    std::string text;
    std::string meldung;
};

const Werte variablen{{"l", 10.0}, {"höhe", 3.0}, {"_a1", 7.0}, {"pi", 99.0}, {"ä", 0.0}};

std::string meldung(const std::string& text, const Werte& werte = variablen) {
    try {
        Ausdruck::auswerten(text, werte);
    } catch (const Ausdruck::Fehler& f) {
        EXPECT_STREQ(f.what(), f.description().c_str());
        return f.description();
    }
    return "kein Fehler";
}

void pruefeWerte(const std::vector<Wertfall>& faelle, const std::string& anhang = "") {
    for (const auto& f : faelle) {
        auto text = f.text + anhang;
        EXPECT_DOUBLE_EQ(Ausdruck::auswerten(text, variablen), f.erwartet) << text;
    }
}

void pruefeMeldungen(const std::vector<Fehlerfall>& faelle) {
    for (const auto& f : faelle)
        EXPECT_EQ(meldung(f.text), f.meldung) << f.text;
}

const std::vector<Wertfall> rangUndVorzeichen{
    {"2+3*4", 14}, {"(2+3)*4", 20}, {"2*3^2", 18},   {"2^3^2", 512}, {"-2^2", 4},
    {"2*-3", -6},  {"-2*3", -6},    {"2--3", 5},     {"+-+3", -3},   {"1-2-3", -4},
    {"8/4/2", 1},  {"2^-1", 0.5},   {"-(1+1)^2", 4}, {"2^3*2", 16},  {"1 + 2 * 3", 7}};

const std::vector<Wertfall> zahlenUndEinheiten{
    {"3 mm", 0.003}, {"3MM", 0.003}, {"2in", 0.0508}, {"5 ft", 1.524}, {"2cm", 0.02},
    {"1e-3", 0.001}, {"1E3", 1000},  {"1.5e+2", 150}, {".5", 0.5},     {"5.", 5},
    {"1e5mm", 100},  {"007", 7},     {"2 m m", 0.002}};

} // namespace

TEST(Ausdruck, VorrangUndVorzeichenbindung) {
    pruefeWerte(rangUndVorzeichen);
}

TEST(Ausdruck, ZahlenMitExponentUndEinheit) {
    pruefeWerte(zahlenUndEinheiten);
}

// Ein Nicht-ASCII-Zeichen im Text führt über die Zerlegung in Graphem-Cluster; das Ergebnis ist dasselbe.
TEST(Ausdruck, UnicodeWegRechnetWieAsciiWeg) {
    pruefeWerte(rangUndVorzeichen, "+ä");
    pruefeWerte(zahlenUndEinheiten, "+Ä");
}

TEST(Ausdruck, FunktionenUndKonstanten) {
    constexpr double pi = 3.141592653589793;
    pruefeWerte({{"SIN(PI/2)", 1},
                 {"cos(0)", 1},
                 {"tan(pi/4)", std::tan(pi / 4)},
                 {"atn(1)", pi / 4},
                 {"atan(1)", pi / 4},
                 {"cosd(60)", std::cos(60 * pi / 180)},
                 {"tand(45)", std::tan(45 * pi / 180)},
                 {"sqr(16)", 4},
                 {"sqrt(2)", std::sqrt(2.0)},
                 {"log(exp(2))", 2},
                 {"ln(1)", 0},
                 {"log10(1000)", 3},
                 {"abs(-3)", 3},
                 {"int(-2.7)", -2},
                 {"int(2.7)", 2},
                 {"sqr(abs(int(-16.9)))", 4},
                 {"c0", 299.792458},
                 {"Pi", pi}});
    EXPECT_NEAR(Ausdruck::auswerten("sind(30)", {}), 0.5, 1e-15);
    EXPECT_NEAR(Ausdruck::auswerten("c0/14.2/4", {}), 5.2780, 1e-4);
}

TEST(Ausdruck, VariablenOhneRuecksichtAufGrossschreibung) {
    pruefeWerte({{"L/2", 5}, {"Höhe*2", 6}, {"HÖHE", 3}, {"_A1", 7}, {"l^2", 100}});
}

TEST(Ausdruck, EinheitenNurDirektNachZahlen) {
    pruefeMeldungen({
        {"2mmx", "Unerwartet: 'mmx' in '2mmx'"},
        {"2inch", "Unerwartet: 'inch' in '2inch'"},
        {"2mmä", "Unerwartet: 'mmä' in '2mmä'"},
        {"2m", "Unerwartet: 'm' in '2m'"},
        {"2mm5", "Unerwartet: '5' in '2mm5'"},
        {"2in_", "Unerwartet: '_' in '2in_'"},
        {"(2)mm", "Unerwartet: 'mm' in '(2)mm'"},
        {"l mm", "Variable 'lmm' unbekannt"},
        {"pi ft", "Variable 'pift' unbekannt"},
    });
}

TEST(Ausdruck, JedeMeldungWoertlich) {
    pruefeMeldungen({
        {"", "Ausdruck endet zu frueh"},
        {"   ", "Ausdruck endet zu frueh"},
        {"2+", "Ausdruck endet zu frueh"},
        {"-", "Ausdruck endet zu frueh"},
        {"sin()", "Unerwartetes Zeichen ')'"},
        {"(1+2", "')' fehlt"},
        {"((1)", "')' fehlt"},
        {"sqr(4", "')' fehlt nach sqr"},
        {"SQR(4", "')' fehlt nach sqr"},
        {"foo(1)", "Funktion 'foo' unbekannt"},
        {"FOO(1)", "Funktion 'foo' unbekannt"},
        {"pi(1)", "Funktion 'pi' unbekannt"},
        {"foo(x)", "Variable 'x' unbekannt"},
        {"L/2*Breite", "Variable 'breite' unbekannt"},
        {"sin 2", "Variable 'sin2' unbekannt"},
        {"e5", "Variable 'e5' unbekannt"},
        {"1.2.3", "Zahl '1.2.3'"},
        {".", "Zahl '.'"},
        {"1e+", "Zahl '1e+'"},
        {"1e-x", "Zahl '1e-'"},
        {"2e", "Unerwartet: 'e' in '2e'"},
        {"2 X", "Unerwartet: 'x' in '2 X'"},
        {"1,5", "Unerwartet: ',5' in '1,5'"},
        {"(1))", "Unerwartet: ')' in '(1))'"},
        {"2×3", "Unerwartetes Zeichen '×'"},
        {"2−3", "Unerwartetes Zeichen '−'"},
        {"−3", "Unerwartetes Zeichen '−'"},
        {"(1 · 2)", "Unerwartetes Zeichen '·'"},
        {"sqr(8÷2)", "Unerwartetes Zeichen '÷'"},
        {"2^3–1", "Unerwartetes Zeichen '–'"},
        {"\t1", "Unerwartetes Zeichen '\t'"},
        {"1\t+2", "Unerwartet: '\t+2' in '1\t+2'"},
        {"#", "Unerwartetes Zeichen '#'"},
    });
}

// Der Leser arbeitet auf Zeichen im Sinne des Benutzers, nicht auf Bytes.
TEST(Ausdruck, ZeichenSindGraphemCluster) {
    pruefeMeldungen({
        {"2\u0301", "Zahl '2\u0301'"},
        {"1+\u00e9", "Variable '\u00e9' unbekannt"},
        {"e\u0301+1", "Variable 'e\u0301' unbekannt"},
        {"🇩🇪", "Unerwartetes Zeichen '🇩🇪'"},
        {"1\r\n", "Unerwartet: '\r\n' in '1\r\n'"},
        {"\r\n", "Unerwartetes Zeichen '\r\n'"},
    });
    // Ungültiges UTF-8 erscheint in Meldungen repariert.
    EXPECT_EQ(meldung("2\xff"), "Unerwartet: '\xEF\xBF\xBD' in '2\xEF\xBF\xBD'");
}

TEST(Ausdruck, KonstantenVorVariablen) {
    EXPECT_DOUBLE_EQ(Ausdruck::auswerten("pi", variablen), 3.141592653589793);
}

// Wie bei der Zahlumwandlung der C-Bibliothek; Division durch null gibt kein Fehler.
TEST(Ausdruck, GleitkommaregelnStattFehler) {
    constexpr double unendlich = std::numeric_limits<double>::infinity();
    pruefeWerte({{"1e400", unendlich},
                 {"-1e400", -unendlich},
                 {"1000e306", unendlich},
                 {"0.0001e-321", 0},
                 {"1e-400", 0},
                 {"0e99999999999999999999", 0},
                 {"1e99999999999999999999", unendlich},
                 {"1/0", unendlich}});
    EXPECT_TRUE(std::isnan(Ausdruck::auswerten("0/0", {})));
    EXPECT_TRUE(std::isnan(Ausdruck::auswerten("sqr(-1)", {})));
    EXPECT_DOUBLE_EQ(Ausdruck::auswerten("1e-310", {}), 1e-310);
}

TEST(Ausdruck, TiefeVerschachtelungWirdAbgelehnt) {
    auto klammern = [](int n) { return std::string(n, '(') + "1" + std::string(n, ')'); };
    EXPECT_DOUBLE_EQ(Ausdruck::auswerten(klammern(200), {}), 1);
    EXPECT_EQ(meldung(klammern(201)), "Ausdruck zu tief verschachtelt");
    EXPECT_EQ(meldung(std::string(100000, '(')), "Ausdruck zu tief verschachtelt");
    EXPECT_EQ(meldung(std::string(100000, '-') + "1"), "Ausdruck zu tief verschachtelt");
    std::string potenzen;
    for (int i = 0; i < 100000; ++i)
        potenzen += "1^";
    EXPECT_EQ(meldung(potenzen + "1"), "Ausdruck zu tief verschachtelt");
    std::string funktionen;
    for (int i = 0; i < 100000; ++i)
        funktionen += "abs(";
    EXPECT_EQ(meldung(funktionen), "Ausdruck zu tief verschachtelt");
    // Lange, aber flache Ausdrücke sind erlaubt.
    std::string summe = "0";
    for (int i = 0; i < 10000; ++i)
        summe += "+1";
    EXPECT_DOUBLE_EQ(Ausdruck::auswerten(summe, {}), 10000);
}

TEST(Ausdruck, LeserLiestJeStufeNurSeinenTeil) {
    Werte leer;
    Ausdruck::Leser produkt("2*3+1", leer);
    EXPECT_DOUBLE_EQ(produkt.produkt(), 6);
    EXPECT_EQ(produkt.rest(), "+1");
    Ausdruck::Leser potenz("2^3*2", leer);
    EXPECT_DOUBLE_EQ(potenz.potenz(), 8);
    EXPECT_EQ(potenz.rest(), "*2");
    Ausdruck::Leser einheit("-3mm^2", leer);
    EXPECT_DOUBLE_EQ(einheit.einheit(), -0.003);
    EXPECT_EQ(einheit.rest(), "^2");
    Werte mitUmlaut{{"ä", 2}};
    Ausdruck::Leser summe("1+ä", mitUmlaut);
    EXPECT_DOUBLE_EQ(summe.summe(), 3);
    EXPECT_TRUE(summe.amEnde());
}
