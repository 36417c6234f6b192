#include "NECKern/Modell.hpp"

#include "TestHilfen.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

using namespace NECKern;
using CliAnalyse = TestHilfen::CliTest;

TEST_F(CliAnalyse, GangAlsCsvUndTouchstone) {
    const auto s1p = (ordner_.pfad() / "dipol.s1p").string();
    const auto a = cli({"gang", "--beispiel", "Halbwellendipol", "--von", "14", "--bis", "14.2", "--punkte",
                        "3", "--parallel", "2", "--csv", "--touchstone", s1p});
    ASSERT_EQ(a.status, 0) << a.fehler;
    EXPECT_EQ(a.fehler, ""); // kein Terminal: keine Fortschrittsanzeige
    EXPECT_THAT(a.aus, testing::MatchesRegex("mhz,re,im,swr,gewinn,vorRueck\n"
                                             "14,68.97[0-9]*,-30.8[0-9]*,[0-9.]+,[0-9.]+,[0-9.]+\n"
                                             "14.1,.*\n14.2,.*\n"));
    EXPECT_THAT(TestHilfen::dateiLesen(s1p),
                testing::MatchesRegex("! Wellenwerk: Halbwellendipol 20 m, S11 gegen 50 Ohm\n"
                                      "# MHZ S RI R 50\n"
                                      "((14|14.1|14.2) [-0-9.e]+ [-0-9.e]+\n){3}"));

    // Als Tabelle mit den Marken, die auch das Fenster zeigt.
    const auto t =
        cli({"gang", "--beispiel", "Halbwellendipol", "--von", "13.9", "--bis", "14.5", "--punkte", "7"});
    ASSERT_EQ(t.status, 0) << t.fehler;
    EXPECT_THAT(t.aus,
                testing::HasSubstr("\nSWR < 2: 13.942–14.500 MHz (≥ 558 kHz) · Resonanz 14.299 MHz\n"));
}

TEST_F(CliAnalyse, OptimierenStimmtDenDipolAbUndSchreibtDasModell) {
    const auto datei = (ordner_.pfad() / "abgestimmt.nec").string();
    const auto a = cli({"optimieren", "--beispiel", "Halbwellendipol", "--variable", "l:10:11", "--ziel",
                        "resonanz:14.175", "--schritte", "40", "--ausgabe", datei});
    ASSERT_EQ(a.status, 0) << a.fehler;
    EXPECT_THAT(a.fehler, testing::StartsWith("Schritt 0: Kosten 1.2801, l = 10.25\nSchritt 1: Kosten "));
    EXPECT_THAT(a.aus, testing::ContainsRegex("\nl = 10.34[0-9]*\n$"));
    const auto m = Modell::lesen(TestHilfen::dateiLesen(datei), "abgestimmt");
    EXPECT_EQ(m.variablen[1].name, "l");
    EXPECT_EQ(m.variablen[1].ausdruck, "10.341");
}

TEST_F(CliAnalyse, FalscheAngabenEndenMitZweiUndEinemSatz) {
    const std::pair<std::vector<std::string>, std::string> faelle[] = {
        {{"gang", "--von", "14", "--bis", "15", "--punkte", "1"},
         "--punkte muss mindestens 2 sein (beide Bandgrenzen).\n"},
        {{"optimieren", "--variable", "x", "--ziel", "resonanz:14"}, "Das Modell hat keine Variable „x“.\n"},
        {{"optimieren", "--variable", "l", "--ziel", "stehwelle:14:2"},
         "--ziel „stehwelle:14:2“: unbekannte Zielart; möglich sind swr, gewinn, vorrueck, resonanz, r.\n"},
        {{"optimieren", "--variable", "l:11:10", "--ziel", "swr:14:1.5"},
         "--variable „l:11:10“: MIN ist grösser als MAX.\n"},
    };
    for (const auto& [argumente, fehler] : faelle) {
        auto voll = argumente;
        voll.insert(voll.end(), {"--beispiel", "Halbwellendipol"});
        const auto a = cli(voll);
        EXPECT_EQ(a.status, 2) << fehler;
        EXPECT_EQ(a.fehler, fehler);
    }
}
