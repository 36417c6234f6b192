#include "NECKern/Rechengang.hpp"
#include "NECKern/Rechenkerne/ExternerKern.hpp"
#include "NECKern/Rechenkerne/Nec2cKern.hpp"

#include <filesystem>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

using namespace NECKern;

namespace {

KernZeiger nec2c() {
    return std::make_shared<const Nec2cKern>();
}

} // namespace

TEST(Rechengang, VorpruefungHaeltDasModellAuf) {
    auto d = Rechengang::rechnen(Modell::lesen("GE 0\nEX 0 1 1 0 1\nFR 0 1 0 0 14 0\n", "x"), nec2c());
    EXPECT_TRUE(d.vorpruefungGescheitert);
    EXPECT_EQ(d.fehler, "Kein Draht: Füge eine Karte GW (Draht) hinzu.");
    EXPECT_FALSE(d.ergebnis);
}

TEST(Rechengang, FormelfehlerWirdZurMeldung) {
    // Die Vorprüfung liest nur Drähte; die Spannung der Speisung fällt erst im Rechendeck auf.
    auto m = Modell::lesen("GW 1 11 0 0 0 0 0 10 1mm\nGE 0\nEX 0 1 6 0 u\nFR 0 1 0 0 14 0\n", "x");
    auto d = Rechengang::rechnen(m, nec2c());
    EXPECT_EQ(d.fehler, "Variable 'u' unbekannt");
    EXPECT_FALSE(d.vorpruefungGescheitert);
    EXPECT_FALSE(d.ergebnis);
}

TEST(Rechengang, DrahtEndeMitteImSegmentWirdGemeldet) {
    // Der zweite Draht endet mitten auf einem Segment des ersten.
    auto m = Modell::lesen("GW 1 11 0 -5 10 0 5 10 1mm\nGW 2 5 0 0.2 10 0 0.2 12 1mm\nGE 0\n"
                           "EX 0 1 6 0 1\nFR 0 1 0 0 14.2 0\nRP 0 19 73 1000 0 0 5 5\n",
                           "x");
    auto d = Rechengang::rechnen(m, nec2c());
    ASSERT_FALSE(d.fehler) << *d.fehler;
    ASSERT_EQ(d.befunde.size(), 1u);
    EXPECT_EQ(d.befunde[0].stufe, Stufe::fehler);
    EXPECT_THAT(d.befunde[0].text, testing::StartsWith("Draht 2 endet auf Draht 1,"));
}

TEST(Rechengang, AndererKernBekommtDieGegenprobe) {
    auto huelle = std::filesystem::path(WW_HILFEN_ORDNER) / "nec2cHuelle";
    auto kern =
        std::make_shared<const ExternerKern>("test", "Testkern", "nec2c hinter einer Hülle", huelle,
                                             std::vector<std::string>{"{ein}", "{aus}"}, true, true, false);
    auto d = Rechengang::rechnen(
        Modell::lesen("GW 1 21 0 -5.2 10 0 5.2 10 1mm\nGE 0\nEX 0 1 11 0 1\nFR 0 1 0 0 14 0\n", "x"), kern);
    ASSERT_FALSE(d.fehler) << *d.fehler;
    ASSERT_TRUE(d.gegenprobe);
    ASSERT_TRUE(d.gegenprobe->z);
    auto urteil = Urteile::gegenprobe(d.ergebnis->frequenzen.front(), *d.gegenprobe);
    EXPECT_EQ(urteil.urteil, "Stimmt mit nec2c überein.");
}

TEST(Rechengang, GuetetestAnDerWirklichLetztenFrequenzAuchBeiMalSchritten) {
    // FR mit Faktor 1.01: 14, 14.14, 14.2814 MHz – der lineare Vorabplan läge bei 16 MHz.
    auto m = Modell::lesen("GW 1 21 0 -5.2 10 0 5.2 10 1mm\nGE 0\nEX 0 1 11 0 1\nFR 1 3 0 0 14 1.01\n"
                           "RP 0 19 73 1000 0 0 5 5\n",
                           "x");
    auto d = Rechengang::rechnen(m, nec2c());
    ASSERT_FALSE(d.fehler) << *d.fehler;
    ASSERT_EQ(d.ergebnis->frequenzen.size(), 3u);
    ASSERT_TRUE(d.guete);
    EXPECT_NEAR(*d.guete, 1.0, 0.02);
    EXPECT_FALSE(d.gegenprobe); // nec2c prüft sich nicht selbst
}
