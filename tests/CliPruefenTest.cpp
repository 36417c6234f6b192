// wellenwerk-cli pruefen mit dem echten nec2c.
#include "NECKern/Modellpruefung.hpp"

#include "TestHilfen.hpp"

#include <fstream>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

using namespace NECKern;

namespace {

class CliPruefen : public TestHilfen::CliTest {
  protected:
    // Das Deck als Datei im Arbeitsordner, als Argument oder auf der Standardeingabe.
    Aufruf pruefen(const std::string& deck, std::vector<std::string> weitere = {}, bool vonEingabe = false) {
        const auto datei = ordner_.pfad() / "modell.nec";
        std::ofstream(datei, std::ios::binary) << deck;
        std::vector<std::string> argumente{"pruefen", vonEingabe ? "-" : datei.string()};
        argumente.insert(argumente.end(), weitere.begin(), weitere.end());
        return cli(argumente, vonEingabe ? datei.string() : std::string());
    }
};

// Draht 2 steht senkrecht auf der Mitte des dritten von fünf Segmenten von Draht 1.
constexpr const char* aufDerMitte = "GW 1 5 0 -1 1 0 1 1 1mm\nGW 2 5 0 0 0 0 0 1 1mm\nGE 0\nEX 0 1 2 0 1 0\n"
                                    "FR 0 1 0 0 14.2 0\nEN\n";

} // namespace

TEST_F(CliPruefen, SauberesModellIstInOrdnung) {
    const auto a = pruefen("GW 1 11 0 0 -5 0 0 5 1mm\nGE 0\nEX 0 1 6 0 1 0\nFR 0 1 0 0 14.2 0\nEN\n");
    EXPECT_EQ(a.status, 0) << a.fehler;
    EXPECT_EQ(a.aus, "Segmentierung und Drähte nach den NEC-Regeln in Ordnung\n");
}

TEST_F(CliPruefen, BefundeMitStufeAusDenSegmentenDesKerns) {
    const auto a = pruefen(aufDerMitte, {}, true);
    EXPECT_EQ(a.status, 0) << a.fehler;
    EXPECT_THAT(a.aus,
                testing::StartsWith("Fehler: Draht 2 endet auf Draht 1, ist dort aber nicht verbunden"));

    const auto j = nlohmann::ordered_json::parse(pruefen(aufDerMitte, {"--json"}).aus);
    EXPECT_EQ(j["modell"], "modell");
    EXPECT_TRUE(j["vorpruefung"].is_null());
    EXPECT_EQ(j["mhz"], 14.2);
    ASSERT_EQ(j["befunde"].size(), 1u);
    EXPECT_EQ(j["befunde"][0]["stufe"], 2);
}

TEST_F(CliPruefen, VorpruefungUndGescheiterterLaufEndenMitEins) {
    const std::string deck = "GW 1 11 0 0 -5 0 0 5 1mm\nGE 0\nEX 0 1 12 0 1 0\nFR 0 1 0 0 14.2 0\nEN\n";
    const auto satz = *Modellpruefung::vorpruefen(Modell::lesen(deck, "x"));
    auto a = pruefen(deck);
    EXPECT_EQ(a.status, 1);
    EXPECT_EQ(a.aus, "");
    EXPECT_EQ(a.fehler, satz + "\n");
    a = pruefen(deck, {"--json"});
    EXPECT_EQ(a.status, 1);
    const auto j = nlohmann::ordered_json::parse(a.aus);
    EXPECT_EQ(j["vorpruefung"], satz);
    EXPECT_TRUE(j["mhz"].is_null());

    // Der Draht reicht unter den Boden: nec2c bricht ab, die Meldung bekommt ihre Überschrift.
    a = pruefen("GW 1 11 0 0 -5 0 0 5 1mm\nGE 1\nGN 1\nEX 0 1 6 0 1 0\nFR 0 1 0 0 14.2 0\nEN\n");
    EXPECT_EQ(a.status, 1);
    EXPECT_THAT(a.fehler,
                testing::StartsWith("Fehler in den Drähten (Lage, Verbindung, Segmente). NEC meldet: "));
}
