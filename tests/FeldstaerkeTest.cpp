#include "NECKern/Feldstaerke.hpp"

#include <cmath>
#include <gtest/gtest.h>

using namespace NECKern;

namespace {

constexpr const char* dipol = "GW 1 21 0 -5 10 0 5 10 0.001\nGE 0\nEX 0 1 11 0 1 0\n";

// Die NE-Zeile des Felddecks.
std::string neZeile(const std::string& deck) {
    const auto start = deck.find("\nNE ");
    return deck.substr(start + 1, deck.find('\n', start + 1) - start - 1);
}

} // namespace

TEST(Icnirp, ReferenzwerteJeFrequenzband) {
    struct Fall {
        double mhz, e, h;
    };
    for (const auto& f : std::vector<Fall>{
             {0.15, 87, 0.73 / 0.15},
             {1, 87, 0.73},
             {9.999, 87 / std::sqrt(9.999), 0.73 / 9.999},
             {10, 28, 0.073},
             {399.99, 28, 0.073},
             {400, 27.5, 0.074},
             {1999.99, 1.375 * std::sqrt(1999.99), 0.0037 * std::sqrt(1999.99)},
             {2000, 61, 0.16},
             {300000, 61, 0.16},
         }) {
        const auto r = Feldstaerke::icnirp(f.mhz);
        ASSERT_TRUE(r) << f.mhz;
        EXPECT_DOUBLE_EQ(r->e, f.e) << f.mhz;
        EXPECT_DOUBLE_EQ(r->h, f.h) << f.mhz;
    }
    for (double f : {0.149999, 300000.001, std::nan("")})
        EXPECT_FALSE(Feldstaerke::icnirp(f)) << f;
}

TEST(Feldstaerke, EffektivwertBeiDerSendeleistung) {
    EXPECT_TRUE(std::isnan(Feldstaerke::effektiv(100, 0, 10)));
    EXPECT_TRUE(std::isnan(Feldstaerke::effektiv(100, std::nan(""), 10)));
    // Vierfache Leistung, doppeltes Feld.
    EXPECT_DOUBLE_EQ(Feldstaerke::effektiv(10, 0.25, 1), 2 * 10 / std::sqrt(2.0));
}

TEST(Feldstaerke, KlassenNachAnteilAnDerReferenz) {
    using K = Feldstaerke::Klasse;
    struct Fall {
        double verhaeltnis;
        K klasse;
        const char* name;
    };
    for (const auto& f : std::vector<Fall>{{0.1999, K::gruen, "grün"},
                                           {0.2, K::gelb, "gelb"},
                                           {0.4999, K::gelb, "gelb"},
                                           {0.5, K::orange, "orange"},
                                           {0.9999, K::orange, "orange"},
                                           {1, K::rot, "rot"}}) {
        EXPECT_EQ(Feldstaerke::klasse(f.verhaeltnis), f.klasse) << f.verhaeltnis;
        EXPECT_EQ(Feldstaerke::name(f.klasse), f.name);
    }
    EXPECT_FALSE(Feldstaerke::klasse(std::nan("")));
}

TEST(FeldstaerkeDeck, SchrittweiteNachPunktzahl) {
    const auto m = Modell::lesen(dipol, "x");
    EXPECT_EQ(neZeile(Feldstaerke::deck(m, 14.2, 2, 1, 3, 10, 2)), "NE 0 2 2 1 -9 -7 2 20 20 0");
    EXPECT_EQ(neZeile(Feldstaerke::deck(m, 14.2, 2, 1, 3, 10, 3)), "NE 0 3 3 1 -9 -7 2 10 10 0");
}

TEST(FeldstaerkeDeck, NurDieVierAngehaengtenSteuerkarten) {
    const auto m =
        Modell::lesen(std::string(dipol) + "GN 2 0 0 0 13 0.005\nFR 0 3 0 0 7 0.1\nNE 0 1 1 1 0 0 0\n"
                                           "NH 0 1 1 1 0 0 0\nRP 0 1 1 1000 90 0 0 0\nXQ 0\nEN\n",
                      "x");
    const auto deck = Feldstaerke::deck(m, 7.05, 1.5, 0, 0, 0.0001, 2);
    const auto ce = deck.find("\nCE\n");
    EXPECT_EQ(deck.substr(ce + 4), "GW 1 21 0 -5 10 0 5 10 0.001\nGE 0\nEX 0 1 11 0 1 0 0 0 0 0\n"
                                   "GN 2 0 0 0 13 0.005 0 0 0 0\nFR 0 1 0 0 7.05 0\n"
                                   "NE 0 2 2 1 -1.000000000E-04 -1.000000000E-04 1.5 2.000000000E-04 "
                                   "2.000000000E-04 0\n"
                                   "NH 0 2 2 1 -1.000000000E-04 -1.000000000E-04 1.5 2.000000000E-04 "
                                   "2.000000000E-04 0\nXQ 0\nEN\n");
}
