#include "NECKern/Rechenkerne/Nec2cKern.hpp"
#include "NECKern/Rechenkerne/Ascii.hpp"

#include "TestHilfen.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

using namespace NECKern;
using TestHilfen::dateiLesen;
using TestHilfen::falscherKernAls;
using TestHilfen::PrivaterTemp;
namespace fs = std::filesystem;

namespace {

std::string deck(const std::string& name) {
    return dateiLesen(fs::path(WW_TESTDATEN) / name);
}

const Nec2cKern echt(TestHilfen::nec2c);

// Ein falscher Kern unter einem sprechenden Namen, ausserhalb des privaten TMPDIR.
class MitFalschemKern : public testing::Test {
  protected:
    Nec2cKern als(const std::string& art) { return Nec2cKern(falscherKernAls(links_.ordner(), art)); }

  private:
    PrivaterTemp links_;
};

} // namespace

TEST(Nec2cKern, RechnetEinenDipolMitDemEchtenNec2c) {
    PrivaterTemp temp;
    const auto e = echt.rechnen(deck("dipol.nec"));
    EXPECT_EQ(e.kern, "NEC-2 (nec2c)");
    EXPECT_GT(e.dauer, 0);
    EXPECT_TRUE(e.warnungen.empty());
    ASSERT_EQ(e.frequenzen.size(), 2u);
    EXPECT_EQ(e.frequenzen[0].impedanz, (Komplex{68.003, -37.755}));
    EXPECT_NEAR(*e.frequenzen[1].swr(50), 1.5565, 1e-4); // 69,941 − j17,266 Ω
    EXPECT_TRUE(temp.eintraege().empty());
}

TEST(Nec2cKern, VerfuegbarWirdJedesMalNeuGeprueftUndFehlendesProgrammMeldetSich) {
    PrivaterTemp temp;
    // Auf diesem Rechner liegt nec2c weder neben ww-tests noch im Quellbaum, aber auf PATH.
    EXPECT_TRUE(Nec2cKern().verfuegbar());
    EXPECT_FALSE(Nec2cKern(temp.ordner()).verfuegbar());
    const auto pfad = temp.ordner() / "nec2c";
    const Nec2cKern kern(pfad);
    EXPECT_FALSE(kern.verfuegbar());
    EXPECT_THAT([&] { kern.rechnen("EN\n"); }, testing::ThrowsMessage<KernFehler>("nec2c nicht gefunden"));
    fs::copy_file(TestHilfen::nec2c, pfad);
    EXPECT_TRUE(kern.verfuegbar());
    fs::permissions(pfad, fs::perms::owner_read);
    EXPECT_FALSE(kern.verfuegbar());
}

TEST(Nec2cKern, FehlerImBerichtWirdZurWarnung) {
    const auto e = echt.rechnen(deck("falscheQuelle.nec"));
    EXPECT_TRUE(e.frequenzen.empty());
    EXPECT_EQ(e.warnungen, (std::vector<std::string>{"nec2c beendet mit 255: NO SEGMENT HAS AN ITAG OF 9"}));

    const auto leer = echt.rechnen("");
    EXPECT_EQ(leer.warnungen, (std::vector<std::string>{
                                  "nec2c beendet mit 253: nec2c: Error reading input file - aborting"}));
}

TEST_F(MitFalschemKern, AbbruchOhneBerichtWirftMitBerichtIstEsEineWarnung) {
    PrivaterTemp temp;
    EXPECT_THAT([&] { als("ohne3").rechnen("EN\n"); }, testing::ThrowsMessage<KernFehler>("nec2c: kaputt"));
    EXPECT_THAT(
        [&] { als("leer4").rechnen("EN\n"); },
        testing::ThrowsMessage<KernFehler>("nec2c: beendet mit 4, ohne Bericht und ohne Fehlermeldung"));
    EXPECT_TRUE(temp.eintraege().empty());

    const auto e = als("bericht1").rechnen("EN\n");
    ASSERT_EQ(e.frequenzen.size(), 1u);
    EXPECT_EQ(e.frequenzen[0].leistungEingang, 0.01);
    EXPECT_EQ(e.warnungen, (std::vector<std::string>{"nec2c beendet mit 1: Achtung"}));
    // Ein Bericht ausserhalb von ASCII gilt als leer.
    EXPECT_TRUE(als("muell").rechnen("EN\n").frequenzen.empty());
}

TEST_F(MitFalschemKern, DasDeckKommtAlsAsciiUndMitUmgebrochenemKommentarAn) {
    const auto spiegel = als("spiegel");
    EXPECT_EQ(spiegel.rechnen(deck("lambdaUmlaut.nec")).warnungen.at(0),
              "WARNING CM Dipol lambda/2 fur Arger - Grosse Ohm");
    const std::string lang(200, 'x');
    EXPECT_EQ(spiegel.rechnen("CM " + lang + "\nCE\nEN\n").warnungen,
              (std::vector<std::string>{"WARNING CM " + lang.substr(0, 129), "WARNING CM " + lang.substr(129),
                                        "WARNING CE", "WARNING EN"}));
}

TEST(Ascii, UmschreibenEntfernenUndWeglassen) {
    struct Fall {
        const char* ein;
        const char* aus;
    };
    const Fall faelle[] = {
        {"CM λ/4", "CM lambda/4"},
        {"Ä ö ü é ñ", "A o u e n"},
        {"Größe ß 20°C – „ok“ ±1,5 µH ²³", "Grosse ss 20GradC - \"ok\" +-1,5 uH 23"},
        // Was die eigene Tabelle nicht kennt, geht an ICU: fremde Schrift, Akzente, Übriges fällt weg.
        {"Антенна", "Antenna"},
        {"ą ő ☺ Ω", "a o  Ohm"},
        {"ungültig \xff\xfe!", "ungultig !"},
    };
    for (const auto& [ein, aus] : faelle)
        EXPECT_EQ(ascii(ein), aus) << ein;
}

TEST(Nec2cKern, ZuLangeKarteWirdAbgelehnt) {
    // nec2c liest je Zeile 132 Zeichen: ein GH mit neun Zahlen in Exponentenform passt nicht.
    const std::string gh = "GH 1 40 5.000000000E-04 2.000000000E-02 5.000000000E-04 5.000000000E-04 "
                           "5.000000000E-04 5.000000000E-04 1.000000000E-05 1.000000000E-05\n";
    EXPECT_THAT([&] { echt.rechnen("CE\n" + gh + "GE 0\nEX 0 1 1 0 1 0\nXQ 0\nEN\n"); },
                testing::ThrowsMessage<KernFehler>(
                    "Die Karte GH ist 135 Zeichen lang, nec2c liest aber nur 132 je Zeile – kleine Masse in "
                    "Millimetern schreiben und mit GS 0 0 0.001 in Meter umrechnen."));
}
