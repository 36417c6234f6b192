// Decks anderer Programme durch wellenwerk-cli, gegen nec2c auf derselben Datei; und
// Eingaben, die nec2c bis zu seinem Zeitlimit beschäftigen würden.
#include "NECKern/Modellpruefung.hpp"
#include "NECKern/NEC2Ausgabe.hpp"

#include "TestHilfen.hpp"

#include <cmath>
#include <fstream>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <nlohmann/json.hpp>
#include <tuple>

using namespace NECKern;
namespace fs = std::filesystem;

namespace {

class CliDecks : public TestHilfen::CliTest {
  protected:
    static std::string daten(const char* name) { return (fs::path(WW_TESTDATEN) / name).string(); }

    std::string datei(const std::string& deck) {
        const auto pfad = ordner_.pfad() / "modell.nec";
        std::ofstream(pfad, std::ios::binary) << deck;
        return pfad.string();
    }
};

} // namespace

TEST_F(CliDecks, FlaechenKlippeUndKopierteSpeisungRechnenWieNec2c) {
    for (const char* name : {"flaeche.nec", "klippe.nec", "kopierteSpeisung.nec"}) {
        const auto nec2c = NEC2Ausgabe::lesen(TestHilfen::nec2cBericht(name));
        ASSERT_EQ(nec2c.frequenzen.size(), 1u) << name;
        const auto z = *nec2c.frequenzen[0].impedanz;
        const auto a = cli({"rechnen", "--json", daten(name)});
        ASSERT_EQ(a.status, 0) << name << ": " << a.fehler;
        const auto j = nlohmann::ordered_json::parse(a.aus)["frequenzen"][0]["impedanz"];
        const double toleranz = 1e-3 * std::hypot(z.re, z.im);
        EXPECT_NEAR(j["re"].get<double>(), z.re, toleranz) << name;
        EXPECT_NEAR(j["im"].get<double>(), z.im, toleranz) << name;
    }
}

TEST_F(CliDecks, VomLoeserAbgelehnterLaufEndetMitEins) {
    const auto satz = Modellpruefung::necMeldung("LOADING DATA CARD ERROR, NO SEGMENT HAS AN ITAG = 7");
    const auto a = cli({"rechnen", daten("lastOhneDraht.nec")});
    EXPECT_EQ(a.status, 1);
    EXPECT_EQ(a.aus, "");
    EXPECT_EQ(a.fehler, satz + "\n");
}

TEST_F(CliDecks, WasNec2cNieFertigRechneteWirdVorDemLaufAbgelehnt) {
    // Ohne die Ablehnung liefe nec2c hier jeweils bis zu seinem Zeitlimit von 300 s.
    const std::string draht = "GW 1 11 0 0 -5 0 0 5 1mm\n";
    const std::string rest = "GE 0\nEX 0 1 6 0 1 0\nFR 0 1 0 0 14.2 0\nEN\n";
    const std::string kopien = draht + "GM 0 1000000000 0 0 0 0 0 1 0\n" + rest;
    const std::string viele = "SY l=5\nGW 1 20000 0 0 -l 0 0 l 1mm\n" + rest;
    const auto umfang = [](const std::string& deck) {
        return *Modellpruefung::umfangPruefen(Modell::lesen(deck, "x"));
    };
    const std::tuple<std::vector<std::string>, std::string, std::string> faelle[] = {
        {{"rechnen"}, kopien, umfang(kopien)},
        {{"gang", "--von", "14", "--bis", "15", "--punkte", "3"}, kopien, umfang(kopien)},
        {{"optimieren", "--variable", "l", "--ziel", "resonanz:14.2"}, viele, umfang(viele)},
    };
    for (const auto& [argumente, deck, satz] : faelle) {
        auto voll = argumente;
        voll.push_back(datei(deck));
        const auto a = cli(voll);
        EXPECT_EQ(a.status, 1) << satz;
        EXPECT_EQ(a.fehler, satz + "\n");
    }
}
