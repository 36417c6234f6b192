#include "NECKern/Ausdruck.hpp"

#include <cmath>
#include <gtest/gtest.h>

using namespace NECKern;

namespace {

std::string fehlerVon(const std::string& text, const Werte& werte = {}) {
    try {
        Ausdruck::auswerten(text, werte);
    } catch (const Ausdruck::Fehler& e) {
        return e.what();
    }
    return "kein Fehler";
}

} // namespace

TEST(Ausdruck, RangfolgeUndVorzeichen) {
    struct Fall {
        const char* text;
        double wert;
    };
    for (auto f : std::initializer_list<Fall>{{"1+2*3", 7},
                                              {"(1+2)*3", 9},
                                              {"2^3^2", 512},
                                              {"-2^2", 4},
                                              {"2*-3", -6},
                                              {"8/2/2", 2},
                                              {"10-2-3", 5},
                                              {"--3", 3},
                                              {"+4", 4},
                                              {"-(2+1)", -3},
                                              {"2^-1", 0.5},
                                              {"1 + 2 * 3", 7}}) {
        EXPECT_DOUBLE_EQ(Ausdruck::auswerten(f.text, {}), f.wert) << f.text;
    }
    // Division durch null nach Gleitkommaregeln
    EXPECT_TRUE(std::isinf(Ausdruck::auswerten("1/0", {})));
    EXPECT_TRUE(std::isnan(Ausdruck::auswerten("0/0", {})));
}

TEST(Ausdruck, ZahlenEinheitenUndKonstanten) {
    struct Fall {
        const char* text;
        double wert;
    };
    for (auto f : std::initializer_list<Fall>{{"3 mm", 0.003},
                                              {"3MM", 0.003},
                                              {"2in", 0.0508},
                                              {"5 ft", 1.524},
                                              {"4cm", 0.04},
                                              {"1e-3", 0.001},
                                              {"1E+2", 100},
                                              {".5", 0.5},
                                              {"5.", 5},
                                              {"2e3mm", 2},
                                              {"PI", 3.141592653589793},
                                              {"c0", 299.792458},
                                              {"1e999", HUGE_VAL},
                                              {"1e-999", 0}}) {
        EXPECT_DOUBLE_EQ(Ausdruck::auswerten(f.text, {}), f.wert) << f.text;
    }
    EXPECT_NEAR(Ausdruck::auswerten("c0/14.2/4", {}), 5.278, 0.001);
}

TEST(Ausdruck, EinheitenNurDirektNachZahlen) {
    EXPECT_EQ(fehlerVon("2mmx"), "Unerwartet: 'mmx' in '2mmx'");
    EXPECT_EQ(fehlerVon("(2)mm"), "Unerwartet: 'mm' in '(2)mm'");
    EXPECT_EQ(fehlerVon("2m"), "Unerwartet: 'm' in '2m'");
    EXPECT_EQ(fehlerVon("2e"), "Unerwartet: 'e' in '2e'");
}

TEST(Ausdruck, Funktionen) {
    EXPECT_NEAR(Ausdruck::auswerten("sind(30)", {}), 0.5, 1e-15);
    EXPECT_DOUBLE_EQ(Ausdruck::auswerten("SIN(PI/2)", {}), 1);
    EXPECT_DOUBLE_EQ(Ausdruck::auswerten("int(-2.7)", {}), -2);
    EXPECT_DOUBLE_EQ(Ausdruck::auswerten("sqr(16)+sqrt(4)", {}), 6);
    EXPECT_DOUBLE_EQ(Ausdruck::auswerten("log10(1000)", {}), 3);
    EXPECT_DOUBLE_EQ(Ausdruck::auswerten("abs(-2)*exp(0)+ln(1)+log(1)", {}), 2);
    EXPECT_NEAR(Ausdruck::auswerten("atn(1)*4-atan(1)*4+cosd(60)+tand(45)", {}), 1.5, 1e-15);
}

TEST(Ausdruck, VariablenOhneRuecksichtAufGrossschreibung) {
    Werte werte{{"l", 10}, {"höhe", 3}, {"_x1", 2}};
    EXPECT_DOUBLE_EQ(Ausdruck::auswerten("L/2", werte), 5);
    EXPECT_DOUBLE_EQ(Ausdruck::auswerten("HÖHE*_X1", werte), 6);
    // Konstanten gehen Variablen gleichen Namens vor.
    EXPECT_DOUBLE_EQ(Ausdruck::auswerten("pi", {{"pi", 3}}), 3.141592653589793);
}

TEST(Ausdruck, JedeFehlermeldungWoertlich) {
    struct Fall {
        const char* text;
        const char* meldung;
    };
    for (auto f : std::initializer_list<Fall>{
             {"", "Ausdruck endet zu frueh"},
             {"1+", "Ausdruck endet zu frueh"},
             {"(1+2", "')' fehlt"},
             {"sqr(4", "')' fehlt nach sqr"},
             {"FOO(1)", "Funktion 'foo' unbekannt"},
             {"L/2", "Variable 'l' unbekannt"},
             {"1.2.3", "Zahl '1.2.3'"},
             {"1e+", "Zahl '1e+'"},
             {"2×3", "Unerwartetes Zeichen '×'"},
             {"2−3", "Unerwartetes Zeichen '−'"},
             {"2\t", "Unerwartetes Zeichen '\t'"},
             {"\t1", "Unerwartetes Zeichen '\t'"},
             {"1)", "Unerwartet: ')' in '1)'"},
             {"Ab cD", "Variable 'abcd' unbekannt"},
             {"2 X", "Unerwartet: 'x' in '2 X'"},
         }) {
        EXPECT_EQ(fehlerVon(f.text), f.meldung) << f.text;
    }
}

TEST(Ausdruck, TiefeVerschachtelungIstEinFehlerKeinAbsturz) {
    EXPECT_EQ(fehlerVon(std::string(100000, '(') + "1"), "Ausdruck zu tief verschachtelt");
    EXPECT_EQ(fehlerVon(std::string(100000, '-') + "1"), "Ausdruck zu tief verschachtelt");
    EXPECT_DOUBLE_EQ(Ausdruck::auswerten(std::string(100, '(') + "1" + std::string(100, ')'), {}), 1);
}
