#include "NECKern/Ausdruck.hpp"

#include <cmath>
#include <gtest/gtest.h>
#include <limits>

using namespace NECKern;

namespace {

using Werttabelle = std::vector<std::pair<std::string, double>>;
using Meldungstabelle = std::vector<std::pair<std::string, std::string>>;

const Werte variablen{{"l", 10.0}, {"höhe", 3.0}, {"_a1", 7.0}, {"pi", 99.0}, {"ä", 0.0}};

std::string meldung(const std::string& text) {
    try {
        Ausdruck::auswerten(text, variablen);
    } catch (const Ausdruck::Fehler& f) {
        EXPECT_STREQ(f.what(), f.description().c_str());
        return f.description();
    }
    return "kein Fehler";
}

void pruefeWerte(const Werttabelle& faelle, const std::string& anhang = "") {
    for (const auto& [text, erwartet] : faelle)
        EXPECT_DOUBLE_EQ(Ausdruck::auswerten(text + anhang, variablen), erwartet) << text + anhang;
}

void pruefeMeldungen(const Meldungstabelle& faelle) {
    for (const auto& [text, erwartet] : faelle)
        EXPECT_EQ(meldung(text), erwartet) << text;
}

const Werttabelle grammatik{
    {"2+3*4", 14}, {"2*3^2", 18},   {"2^3^2", 512},   {"-2^2", 4},      {"-(1+1)^2", 4},
    {"2*-3", -6},  {"2--3", 5},     {"+-+3", -3},     {"1-2-3", -4},    {"8/4/2", 1},
    {"2^-1", 0.5}, {"3 mm", 0.003}, {"3MM", 0.003},   {"2in", 0.0508},  {"5 ft", 1.524},
    {"2cm", 0.02}, {"1e5mm", 100},  {"2 m m", 0.002}, {"1e-3", 0.001},  {"1.5E+2", 150},
    {".5", 0.5},   {"5.", 5},       {"L/2", 5},       {"HÖHE*_A1", 21}, {"-3mm^2", 9e-6}};

} // namespace

TEST(Ausdruck, VorrangVorzeichenZahlenUndEinheiten) {
    pruefeWerte(grammatik);
}

// Ein Nicht-ASCII-Zeichen führt über die Zerlegung in Zeichen; gerechnet wird gleich.
TEST(Ausdruck, UnicodeWegRechnetWieAsciiWeg) {
    pruefeWerte(grammatik, "+Ä");
}

TEST(Ausdruck, FunktionenUndKonstanten) {
    constexpr double pi = 3.141592653589793;
    // pi ist auch eine Variable; die Konstante geht vor.
    pruefeWerte({{"SIN(PI/2)", 1},
                 {"cos(0)", 1},
                 {"tan(1)", std::tan(1.0)},
                 {"atn(1) + atan(1)", pi / 2},
                 {"cosd(60)", std::cos(60 * pi / 180)},
                 {"tand(45)", std::tan(45 * pi / 180)},
                 {"sqr(16) + sqrt(4)", 6},
                 {"log(exp(2)) + ln(1)", 2},
                 {"log10(1000)", 3},
                 {"abs(-3)", 3},
                 {"int(-2.7)", -2},
                 {"c0", 299.792458},
                 {"pi", pi}});
    EXPECT_NEAR(Ausdruck::auswerten("sind(30)", {}), 0.5, 1e-15);
}

TEST(Ausdruck, EinheitenNurDirektNachZahlen) {
    pruefeMeldungen({{"2mmx", "Unerwartet: 'mmx' in '2mmx'"},
                     {"2mmä", "Unerwartet: 'mmä' in '2mmä'"},
                     {"2m", "Unerwartet: 'm' in '2m'"},
                     {"2mm5", "Unerwartet: '5' in '2mm5'"},
                     {"(2)mm", "Unerwartet: 'mm' in '(2)mm'"},
                     {"l mm", "Variable 'lmm' unbekannt"}});
}

TEST(Ausdruck, JedeMeldungWoertlich) {
    pruefeMeldungen({{"", "Ausdruck endet zu frueh"},
                     {"(1+2", "')' fehlt"},
                     {"SQR(4", "')' fehlt nach sqr"},
                     {"FOO(1)", "Funktion 'foo' unbekannt"},
                     {"L/2*Breite", "Variable 'breite' unbekannt"},
                     {"1.2.3", "Zahl '1.2.3'"},
                     {"1e-x", "Zahl '1e-'"},
                     {"2e", "Unerwartet: 'e' in '2e'"},
                     {"1,5", "Unerwartet: ',5' in '1,5'"},
                     {"\t1", "Unerwartetes Zeichen '\t'"},
                     {"2−3", "Unerwartetes Zeichen '−'"}});
}

// Der Leser arbeitet auf Zeichen im Sinne des Benutzers, nicht auf Bytes oder Codezeichen;
// ungültiges UTF-8 erscheint in Meldungen repariert.
TEST(Ausdruck, ZeichenSindGraphemCluster) {
    pruefeMeldungen({{"2\u0301", "Zahl '2\u0301'"},
                     {"e\u0301+1", "Variable 'e\u0301' unbekannt"},
                     {"1\r\n", "Unerwartet: '\r\n' in '1\r\n'"},
                     {"1+👍🏽", "Unerwartetes Zeichen '👍🏽'"},
                     {"한글+1", "Variable '한글' unbekannt"},
                     {"2*क्ष", "Variable 'क्ष' unbekannt"},
                     {"λ/ä", "Variable 'λ' unbekannt"},
                     {"2\xff", "Unerwartet: '\uFFFD' in '2\uFFFD'"}});
}

// Wie die Zahlumwandlung der C-Bibliothek; Division durch null ist kein Fehler.
TEST(Ausdruck, GleitkommaregelnStattFehler) {
    constexpr double unendlich = std::numeric_limits<double>::infinity();
    pruefeWerte({{"1e400", unendlich},
                 {"1000e306", unendlich},
                 {"1e99999999999999999999", unendlich},
                 {"0.0001e-321", 0},
                 {"1e-310", 1e-310},
                 {"1/0", unendlich}});
    EXPECT_TRUE(std::isnan(Ausdruck::auswerten("0/0", {})));
}

TEST(Ausdruck, TiefeVerschachtelungWirdAbgelehnt) {
    auto klammern = [](int n) { return std::string(n, '(') + "1" + std::string(n, ')'); };
    EXPECT_DOUBLE_EQ(Ausdruck::auswerten(klammern(200), {}), 1);
    std::string potenzen, funktionen;
    for (int i = 0; i < 100000; ++i) {
        potenzen += "1^";
        funktionen += "abs(";
    }
    for (const auto& text : {klammern(201), std::string(100000, '-') + "1", potenzen + "1", funktionen})
        EXPECT_EQ(meldung(text), "Ausdruck zu tief verschachtelt") << text.substr(0, 10);
}
