#include "TestHilfen.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

using testing::HasSubstr;

namespace {

using CliBefehl = TestHilfen::CliTest;

} // namespace

TEST_F(CliBefehl, FeldZeigtGitterLegendeUndErklaerung) {
    const auto a =
        cli({"feld", "--beispiel", "Dipol 2 m", "--leistung", "50", "--hoehe", "1.5", "--punkte", "2"});
    ASSERT_EQ(a.status, 0) << a.fehler;
    EXPECT_THAT(a.aus,
                HasSubstr("\n50 W, Ebene 1.5 m, 145.0000 MHz · grün < 20 %, gelb < 50 %, orange < 100 %, "
                          "rot ≥ Referenz\nReferenz: 28 V/m, 0.073 A/m\n"));
    // Zwei Punkte je Seite werden wie in der Anwendung zu drei.
    EXPECT_THAT(a.aus, testing::ContainsRegex("\n +-15\\.00 +-15\\.00 +[0-9.]+ +[0-9.]+ +[0-9.]+ % +grün\n"));
    EXPECT_THAT(a.aus, HasSubstr("\n    15.00     15.00 "));
    EXPECT_THAT(a.aus, testing::EndsWith("kein amtlicher Nachweis.\n"));
}

TEST_F(CliBefehl, FeldAlsJsonUndFalscheLeistung) {
    const auto a = cli({"feld", "--beispiel", "Dipol 2 m", "--punkte", "3", "--json"});
    ASSERT_EQ(a.status, 0) << a.fehler;
    const auto j = nlohmann::ordered_json::parse(a.aus);
    EXPECT_EQ(j["mhz"], 145.0);
    EXPECT_EQ(j["n"], 3);
    EXPECT_EQ(j["referenz"]["e"], 28.0);
    ASSERT_EQ(j["punkte"].size(), 9u);
    const auto& p = j["punkte"][0];
    EXPECT_EQ(p["x"], -15.0);
    EXPECT_EQ(p["z"], 2.0);
    EXPECT_GT(p["e"].get<double>(), 0);
    EXPECT_DOUBLE_EQ(p["anteil"].get<double>(), p["e"].get<double>() / 28.0);

    const auto falsch = cli({"feld", "--beispiel", "Dipol 2 m", "--leistung", "0"});
    EXPECT_EQ(falsch.status, 2);
    EXPECT_EQ(falsch.fehler, "Die Leistung muss eine positive Zahl in W sein.\n");
}

TEST_F(CliBefehl, SelbsttestMitNec2cBesteht) {
    const auto a = cli({"selbsttest"});
    ASSERT_EQ(a.status, 0) << a.fehler;
    EXPECT_THAT(a.aus, testing::StartsWith("Selbsttest: NEC-2 (nec2c)\n\nPrüfung "));
    EXPECT_THAT(a.aus, testing::ContainsRegex(
                           "\n\\|E\\| in 30 λ \\(V/m\\) +0\\.0230[0-9] ± 0\\.00023 +0\\.0230[0-9] +"
                           "bestanden +Fernfeld aus G und P\n"));
    EXPECT_THAT(a.aus, testing::EndsWith("\n\nAlle prüfbaren Fälle bestanden.\n"));

    const auto j = nlohmann::ordered_json::parse(cli({"selbsttest", "--json"}).aus);
    EXPECT_EQ(j["bestanden"], true);
    EXPECT_EQ(j["zeilen"].size(), 8u);
}
