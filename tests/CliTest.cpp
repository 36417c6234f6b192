#include "NECKern/Beispiele.hpp"
#include "NECKern/Ergebnis.hpp"

#include "TestHilfen.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <nlohmann/json.hpp>
#include <tuple>

using namespace NECKern;

namespace {

std::vector<std::string> schluessel(const nlohmann::ordered_json& j) {
    std::vector<std::string> namen;
    for (const auto& [k, v] : j.items())
        namen.push_back(k);
    return namen;
}

using Cli = TestHilfen::CliTest;

} // namespace

TEST_F(Cli, RechnetEinBeispielUndZeigtDieKennzahlen) {
    const auto a = cli({"rechnen", "--beispiel", "YAGI"});
    EXPECT_EQ(a.status, 0) << a.fehler;
    EXPECT_EQ(a.fehler, "");
    EXPECT_THAT(a.aus, testing::StartsWith("Modell: 3-Element-Yagi 20 m\nKern: NEC-2 (nec2c), "));
    EXPECT_THAT(a.aus, testing::HasSubstr("\n14.1500 MHz\n  Impedanz:             "));
    EXPECT_THAT(a.aus, testing::ContainsRegex("SWR \\(50 Ω\\): +[0-9]+\\.[0-9][0-9]\n"));
    EXPECT_THAT(a.aus, testing::ContainsRegex("Max\\. Gewinn: +[0-9]+\\.[0-9][0-9] dBi\n"));
    EXPECT_THAT(a.aus, testing::HasSubstr("  Wirkungsgrad:"));
}

TEST_F(Cli, JsonHatFesteSchluesselUndErgebnisDasGanzeNECErgebnis) {
    const auto a = cli({"rechnen", "--beispiel", "yagi", "--json"});
    ASSERT_EQ(a.status, 0) << a.fehler;
    const auto j = nlohmann::ordered_json::parse(a.aus);
    EXPECT_EQ(schluessel(j), (std::vector<std::string>{"modell", "kern", "dauer", "fehler", "warnungen",
                                                       "befunde", "guete", "gegenprobe", "frequenzen"}));
    EXPECT_NEAR(j["guete"].get<double>(), 1.0, 0.02);
    EXPECT_EQ(j["modell"], "3-Element-Yagi 20 m");
    EXPECT_EQ(j["kern"], "nec2c");
    ASSERT_EQ(j["frequenzen"].size(), 1u);
    const auto& f = j["frequenzen"][0];
    EXPECT_EQ(schluessel(f), (std::vector<std::string>{"mhz", "impedanz", "swr", "gewinn", "vorRueck",
                                                       "leistungEingang", "leistungAbgestrahlt",
                                                       "wirkungsgrad", "segmente", "stroemeGeliefert"}));
    EXPECT_EQ(f["mhz"], 14.15);
    EXPECT_EQ(f["segmente"], 63);

    const auto e = cli({"rechnen", "--beispiel", "Halbwellendipol", "--ergebnis"});
    ASSERT_EQ(e.status, 0) << e.fehler;
    const auto ergebnis = nlohmann::ordered_json::parse(e.aus).get<NECErgebnis>();
    EXPECT_EQ(ergebnis.kern, "NEC-2 (nec2c)");
    ASSERT_EQ(ergebnis.frequenzen.size(), 1u);
    EXPECT_TRUE(ergebnis.frequenzen[0].mitBoden);
}

TEST_F(Cli, BeispieleAuflistenUndAusgeben) {
    const auto liste = cli({"beispiel"});
    EXPECT_EQ(liste.status, 0);
    std::string namen;
    for (const auto& b : Beispiele::alle())
        namen += b.name + "\n";
    EXPECT_EQ(liste.aus, namen);

    // Auch „Λ“ findet „λ“: die Suche schreibt klein nach Unicode.
    const auto groundplane = cli({"beispiel", "--beispiel", "GROUNDPLANE Λ/4"});
    EXPECT_EQ(groundplane.status, 0);
    EXPECT_THAT(groundplane.aus, testing::StartsWith("CM Groundplane λ/4 mit Radials\n"));
}

TEST_F(Cli, ScheiternMitDeutschemSatzAuchImJson) {
    const std::string datei =
        "Die Datei „/gibt/es/nicht.nec“ konnte nicht gelesen werden: Datei oder Verzeichnis nicht gefunden.";
    const std::tuple<std::vector<std::string>, int, std::string> faelle[] = {
        {{"rechnen", "/gibt/es/nicht.nec"}, 1, datei + "\n"},
        {{"rechnen", "--beispiel", "Rhombus"}, 1, "Kein eingebautes Beispiel enthält „Rhombus“ im Namen.\n"},
        {{"rechnen"},
         2,
         "Bitte genau ein Modell angeben: eine Deckdatei, „-“ für die Standardeingabe oder --beispiel "
         "TEXT.\n"},
        {{"selbsttest", "--kern", "gibtsnicht"},
         2,
         "Unbekannter Kern „gibtsnicht“. Bekannt sind: nec2c, zirkon, zirkon5, zirkon-klinge, arcanum.\n"},
    };
    for (const auto& [argumente, status, fehler] : faelle) {
        const auto a = cli(argumente);
        EXPECT_EQ(a.status, status) << argumente.back();
        EXPECT_EQ(a.fehler, fehler);
    }
    const auto a = cli({"rechnen", "--json", "/gibt/es/nicht.nec"});
    EXPECT_EQ(a.status, 1);
    const auto j = nlohmann::ordered_json::parse(a.aus);
    EXPECT_EQ(j["fehler"], datei);
    EXPECT_TRUE(j["modell"].is_null());
    EXPECT_TRUE(j["frequenzen"].empty());
}

TEST_F(Cli, FalscherAufrufEndetMitZweiUndEinemDeutschenSatz) {
    const std::pair<std::vector<std::string>, const char*> faelle[] = {
        {{}, "Es fehlt ein Befehl."},
        {{"zaubern"}, "Unbekannter Befehl „zaubern“."},
        {{"rechnen", "--unbekannt"}, "Unbekannte Option „--unbekannt“."},
        {{"rechnen", "a", "b", "c"}, "Unerwartete Argumente: „b“, „c“."},
        {{"rechnen", "--json", "--ergebnis", "--beispiel", "Yagi"},
         "--json und --ergebnis schliessen einander aus."},
        {{"rechnen", "--json=ja"}, "--json ist ein Schalter und nimmt keinen Wert."},
        {{"rechnen", "--kern"}, "--kern braucht einen Wert."},
        {{"gang", "--von", "14", "--bis", "15"}, "Die Angabe --punkte fehlt."},
        {{"gang", "--von", "x"}, "--von erwartet eine Zahl, nicht „x“."},
        {{"gang", "--punkte", "abc"}, "--punkte erwartet eine ganze Zahl, nicht „abc“."},
        {{"gang", "--von", "1", "--von", "2"}, "--von darf nur einmal stehen."},
    };
    for (const auto& [argumente, satz] : faelle) {
        const auto a = cli(argumente);
        EXPECT_EQ(a.status, 2) << satz;
        EXPECT_EQ(a.fehler, "Falscher Aufruf: " + std::string(satz) + "\nHilfe: " + WW_CLI + " --help\n");
    }
    // Auch die Hilfe nennt die Typen deutsch.
    EXPECT_THAT(cli({"gang", "--help"}).aus, testing::HasSubstr("--punkte GANZZAHL PFLICHT"));
}

TEST_F(Cli, KerneNenntFuenfKerneMitNec2cZuerst) {
    const auto j = nlohmann::ordered_json::parse(cli({"kerne", "--json"}).aus);
    ASSERT_EQ(j.size(), 5u);
    EXPECT_EQ(j[0]["kennung"], "nec2c");
    EXPECT_TRUE(j[0]["verfuegbar"].get<bool>());
    EXPECT_EQ(j[4]["kennung"], "arcanum");
    const auto text = cli({"kerne"});
    EXPECT_THAT(text.aus, testing::HasSubstr("nec2c – NEC-2 (nec2c)\n"));
    EXPECT_THAT(text.aus, testing::HasSubstr("Kernordner: "));
}
