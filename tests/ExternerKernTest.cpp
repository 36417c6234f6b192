#include "NECKern/Rechenkerne/ExternerKern.hpp"
#include "NECKern/Rechenkerne/Nec2cKern.hpp"

#include "Nec2cVergleich.hpp"
#include "TestHilfen.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

using namespace NECKern;
using TestHilfen::dateiLesen;
using TestHilfen::PrivaterTemp;
namespace fs = std::filesystem;

namespace {

const fs::path huelle = fs::path(WW_HILFEN_ORDNER) / "nec2cHuelle";

// Ein Bogen (für das Abflachen), eine Last über mehrere Bogenstücke (für die
// Tags), zwei Frequenzen und zwei Feldkarten (für das Aufteilen). Die Hülle
// bekommt --xq, damit nec2c auch den Teil mit der NE-Karte allein rechnet.
constexpr const char* deck =
    "CM Dipol mit Bogen\nCE\nGW 1 11 0 0 -2.5 0 0 2.5 0.005\nGA 2 8 1.2 -40 40 0.005\n"
    "GE 0\nLD 0 2 3 6 20 0 0\nEX 0 1 6 0 1 0\nFR 0 2 0 0 28 0.5\n"
    "NE 0 2 1 2 1 0 -1 1 0 2\nRP 0 5 4 1000 0 0 30 90\nEN\n";

ExternerKern kern(std::vector<std::string> argumente, bool helix = false, bool tags = false,
                  bool feldkarten = false, const fs::path& programm = huelle) {
    return ExternerKern("test", "Testkern", "Ein Kern für Tests", programm, std::move(argumente), helix, tags,
                        feldkarten);
}

// Die Decks, die die Hülle der Reihe nach bekam, mit ihrer Aufrufzeile vorweg.
std::vector<std::string> laeufe(const fs::path& protokoll) {
    std::vector<std::string> ergebnis;
    auto text = dateiLesen(protokoll);
    for (std::size_t anfang = 0, ende; (ende = text.find("----\n", anfang)) != std::string::npos;
         anfang = ende + 5)
        ergebnis.push_back(text.substr(anfang, ende - anfang));
    return ergebnis;
}

} // namespace

TEST(ExternerKern, JedeSchalterkombinationRechnetWieNec2c) {
    PrivaterTemp temp;
    const auto direkt = Nec2cKern(TestHilfen::nec2c).rechnen(deck);
    ASSERT_EQ(direkt.frequenzen.size(), 2u);
    ASSERT_EQ(direkt.frequenzen[1].nahfeldE.size(), 4u);
    ASSERT_EQ(direkt.frequenzen[1].diagramm.size(), 20u);
    for (int schalter = 0; schalter < 8; ++schalter) {
        bool helix = schalter & 1, tags = schalter & 2, feldkarten = schalter & 4;
        SCOPED_TRACE(testing::Message()
                     << "Wendel " << helix << ", Tags " << tags << ", Feldkarten " << feldkarten);
        auto protokoll = temp.ordner() / ("protokoll" + std::to_string(schalter));
        auto k = kern({"--xq", "--protokoll", protokoll.string(), "{ein}", "{aus}"}, helix, tags, feldkarten);
        auto e = k.rechnen(deck);
        EXPECT_EQ(e.kern, "Testkern");
        TestHilfen::erwarteWieNec2c(e, direkt);

        auto l = laeufe(protokoll);
        ASSERT_EQ(l.size(), feldkarten ? 2u : 1u);
        EXPECT_EQ(l[0].find("GA ") == std::string::npos, helix);
        EXPECT_EQ(l[0].find("LD 0 7 1 1 20 0 0") != std::string::npos, helix && tags) << l[0];
    }
}

// Aufteilen und Zusammenführen prüft der Vergleich mit nec2c oben; hier die Laufzeit.
TEST(ExternerKern, FeldkartenlaeufeAddierenIhreDauer) {
    PrivaterTemp temp;
    auto k = kern({"--xq", "--warten", "300", "{ein}", "{aus}"}, false, false, true);
    EXPECT_GE(k.rechnen(deck).dauer, 0.6);
    EXPECT_TRUE(temp.eintraege().empty());
}

TEST(ExternerKern, VorlageUndAsciiDeck) {
    PrivaterTemp temp;
    auto protokoll = temp.ordner() / "protokoll";
    auto k = kern({"--protokoll", protokoll.string(), "-i", "{ein}", "-o", "{aus}"});
    auto e = k.rechnen(
        "CM λ/2 für Ärger 漢\nCE\nGW 1 11 0 0 -2.5 0 0 2.5 0.005\nGE 0\nEX 0 1 6 0 1 0\nXQ 0\nEN\n");
    EXPECT_EQ(e.frequenzen.size(), 1u);
    auto l = laeufe(protokoll);
    ASSERT_EQ(l.size(), 1u);
    EXPECT_THAT(l[0], testing::StartsWith("aufruf: -i a.nec -o a.out\nCM lambda/2 fur Arger "));
    // Ohne Vorlage: Eingabe und Ausgabe als einzige Argumente.
    EXPECT_EQ(kern({}).rechnen(deck).frequenzen.size(), 2u);
}

TEST(ExternerKern, OhneAusgabeMeldetStatusUndFehlerausgabeWieEmpfangen) {
    PrivaterTemp temp;
    auto k = kern({"ohne3", "-i", "{ein}", "-o", "{aus}"}, false, false, false, TestHilfen::falscherKern);
    EXPECT_THAT([&] { k.rechnen(deck); },
                testing::ThrowsMessage<KernFehler>("Testkern: keine Ausgabe (3)   kaputt\n"));
    EXPECT_TRUE(temp.eintraege().empty());
}

TEST(ExternerKern, AusgabeIstUtf8SonstLatin1UndDerStatusZaehltNicht) {
    PrivaterTemp temp;
    auto muell = kern({"muell", "-o", "{aus}"}, false, false, false, TestHilfen::falscherKern).rechnen(deck);
    EXPECT_EQ(muell.frequenzen.at(0).mhz, 7.0);
    auto status1 =
        kern({"bericht1", "-o", "{aus}"}, false, false, false, TestHilfen::falscherKern).rechnen(deck);
    EXPECT_EQ(status1.frequenzen.size(), 1u);
    EXPECT_TRUE(status1.warnungen.empty());
}

TEST(ExternerKern, FeldkartenTrennen) {
    struct Fall {
        const char* deck;
        std::vector<std::string> teile;
    };
    const Fall faelle[] = {
        {"GW 1\nGE 0\nRP 0 1\nXQ 0\nEN\n", {"GW 1\nGE 0\nRP 0 1\nXQ 0\nEN\n"}},
        {"GW 1\nGE 0\nXQ 0\nEN", {"GW 1\nGE 0\nXQ 0\nEN"}},
        {"GW 1\n\nGE 0\nNE 0 1\nXQ 0\nRP 0 2\nEN\n",
         {"GW 1\nGE 0\nNE 0 1\nEN\n", "GW 1\nGE 0\nRP 0 2\nEN\n"}},
        {"GW 1\nGE 0\n  rp 0 1\nnh 0 2\n xq\nen", {"GW 1\nGE 0\n  rp 0 1\nEN\n", "GW 1\nGE 0\nnh 0 2\nEN\n"}},
    };
    for (const auto& f : faelle)
        EXPECT_EQ(ExternerKern::feldkartenTrennen(f.deck), f.teile) << f.deck;
}
