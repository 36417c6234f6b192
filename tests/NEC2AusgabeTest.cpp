#include "NECKern/NEC2Ausgabe.hpp"

#include "TestHilfen.hpp"

#include <cmath>
#include <gtest/gtest.h>
#include <limits>

using namespace NECKern;
using TestHilfen::nec2cBericht;

namespace {

constexpr double unendlich = std::numeric_limits<double>::infinity();

std::string ersetzeAlle(std::string text, const std::string& alt, const std::string& neu) {
    for (auto pos = text.find(alt); pos != std::string::npos; pos = text.find(alt, pos + neu.size()))
        text.replace(pos, alt.size(), neu);
    return text;
}

FrequenzErgebnis einzige(const NECErgebnis& e) {
    EXPECT_EQ(e.frequenzen.size(), 1u);
    return e.frequenzen.at(0);
}

} // namespace

TEST(NEC2Ausgabe, ZahlenTrenntNurAnLeerzeichenUndUebergehtWoerter) {
    struct Fall {
        const char* zeile;
        std::vector<double> zahlen;
    };
    const Fall faelle[] = {
        {"  1.2345E+01 -0.5   12", {12.345, -0.5, 12}},
        {"  90.00 0.00 LINEAR 1.5E-3 Watts", {90, 0, 1.5e-3}},
        {"+5 +-5 ++5 - + 5.", {5, 5}},
        {"1\t2 3", {3}},
        {"1e999 -1e999 1e-999", {unendlich, -unendlich, 0}},
        {"INF -infinity", {unendlich, -unendlich}},
        {"12abc abc12 1e 1,5 0x10", {}},
        {"   ", {}},
    };
    for (const auto& [zeile, erwartet] : faelle)
        EXPECT_EQ(NEC2Ausgabe::zahlen(zeile), erwartet) << zeile;
}

TEST(NEC2Ausgabe, TabellenzeileBeginntMitEinerZahl) {
    struct Fall {
        const char* zeile;
        bool zeilenanfang;
    };
    const Fall faelle[] = {
        {"    12  1", true}, {"\t -.5", true}, {"+1", true}, {"..5", true},  {"٣ arabisch", true},
        {"Ⅻ", true},         {" \t ", false},  {"-", false}, {"--1", false}, {"DATA CARD No: 5", false},
    };
    for (const auto& [zeile, erwartet] : faelle)
        EXPECT_EQ(NEC2Ausgabe::beginntMitZahl(zeile), erwartet) << zeile;
}

TEST(NEC2Ausgabe, LiestDenBerichtVonNec2cMitBodenUndNahfeld) {
    const auto bericht = nec2cBericht("dipol.nec");
    const auto e = NEC2Ausgabe::lesen(bericht);
    EXPECT_TRUE(e.warnungen.empty());
    ASSERT_EQ(e.frequenzen.size(), 2u);
    const auto& f = e.frequenzen[0];
    EXPECT_EQ(f.mhz, 14.0);
    EXPECT_EQ(e.frequenzen[1].mhz, 14.2);
    EXPECT_TRUE(f.mitBoden);
    const Komplex strom{1.1240E-02, 6.2406E-03};
    EXPECT_EQ(f.quellen, (std::vector<Quelle>{{1, 11, {1, 0}, strom, {68.003, -37.755}}}));

    // Meter aus der Geometrietabelle, nicht Wellenlängen.
    ASSERT_EQ(f.segmente.size(), 21u);
    EXPECT_EQ(f.segmente[10], (Segment{11, 1, 0, 0, 10, 0.4857, 0, 90, 0.001, strom, 10, 12}));

    EXPECT_EQ(f.leistungEingang, 5.6202E-03);
    EXPECT_EQ(f.leistungAbgestrahlt, 5.6202E-03);
    EXPECT_EQ(f.wirkungsgrad, 100.0);

    // Zeilen ohne Polarisationswort verschieben nichts; die Zeile „DATA CARD No: 5 NE …“
    // direkt unter dem Diagramm der letzten Frequenz gehört nicht dazu.
    ASSERT_EQ(f.diagramm.size(), 12u);
    EXPECT_EQ(f.diagramm[2], (Richtung{90, 0, -999.99, -999.99, -999.99}));
    EXPECT_EQ(e.frequenzen[1].diagramm.size(), 12u);

    // Nahfeld rechnet nec2c nur für die letzte Frequenz.
    EXPECT_TRUE(f.nahfeldE.empty());
    const auto& letzte = e.frequenzen[1];
    ASSERT_EQ(letzte.nahfeldE.size(), 2u);
    EXPECT_EQ(letzte.nahfeldE[1], (Nahfeldpunkt{0, 0, 2, {0, 7.9634E-02, 3.5618E-10}, {0, 142.70, 158.75}}));
    ASSERT_EQ(letzte.nahfeldH.size(), 1u);
    EXPECT_EQ(letzte.nahfeldH[0].betrag[0], 3.3985E-04);

    // Zeilenenden CRLF und CR lesen sich wie LF.
    EXPECT_EQ(NEC2Ausgabe::lesen(ersetzeAlle(bericht, "\n", "\r\n")), e);
    EXPECT_EQ(NEC2Ausgabe::lesen(ersetzeAlle(bericht, "\n", "\r")), e);
}

TEST(NEC2Ausgabe, NichtEndlicheWerteBleibenNaNUndDieTabellenBleibenGanz) {
    const auto f = einzige(NEC2Ausgabe::lesen(nec2cBericht("nullfrequenz.nec")));
    ASSERT_TRUE(f.impedanz);
    EXPECT_TRUE(std::isnan(f.impedanz->re));
    EXPECT_EQ(f.segmente.size(), 21u);
    EXPECT_TRUE(std::isnan(f.segmente[3].strom.im));
    ASSERT_TRUE(f.wirkungsgrad);
    EXPECT_TRUE(std::isnan(*f.wirkungsgrad));
    ASSERT_EQ(f.diagramm.size(), 4u);
    EXPECT_TRUE(std::isnan(f.diagramm[3].gesamt));
    EXPECT_EQ(f.diagramm[3].phi, 90);
}

TEST(NEC2Ausgabe, FrequenzzeileInAllenSchreibweisen) {
    struct Fall {
        const char* zeile;
        double mhz;
    };
    const Fall faelle[] = {
        {"   FREQUENCY : 1.4200E+01 MHZ", 14.2},
        {"FREQUENCY= 14.2 MHZ", 14.2},
        {"FREQUENCY:14.2", 14.2},
        {"FREQUENCY : 7 MHZ ==", 7},
        {"FREQUENCY : MHZ", 0},
        {"FREQUENCY=", 0},
        {"X=3 FREQUENCY : 5 MHZ", 5},
    };
    for (const auto& [zeile, mhz] : faelle)
        EXPECT_EQ(einzige(NEC2Ausgabe::lesen(zeile)).mhz, mhz) << zeile;
}

TEST(NEC2Ausgabe, EingangsparameterMitElfOderZwoelfSpalten) {
    const auto e = NEC2Ausgabe::lesen(R"(
 FREQUENCY : 7.0 MHZ
 --------- ANTENNA INPUT PARAMETERS ---------
  TAG   SEG       VOLTAGE (VOLTS)
    1    11  1.0 0.0 2.0 3.0 50.0 -5.0 0.1 0.2 0.3
    2     3  1.0 0.0 2.0 3.0 60.0 -6.0 0.1 0.2
    3     4  9.0 1.0 0.0 2.0 3.0 70.0 -7.0 0.1 0.2 0.3 0.4 0.5
    4     5  1.0 0.0 2.0 3.0 80.0 -8.0
 FREQUENCY : 8.0 MHZ
 --------- ANTENNA INPUT PARAMETERS ---------
    1  1e300  1.0 0.0 2.0 3.0 50.0 -5.0 0.1 0.2 0.3
    7    -NAN 1.0 0.0 2.0 3.0 50.0 -5.0 0.1 0.2 0.3
    1     2  1.0 0.0 2.0 3.0 40.0 -4.0 0.1 0.2 0.3)");
    ASSERT_EQ(e.frequenzen.size(), 2u);
    const auto& q = e.frequenzen[0].quellen;
    ASSERT_EQ(q.size(), 3u); // die Zeile mit 8 Zahlen beendet die Tabelle
    EXPECT_EQ(q[1].impedanz, (Komplex{60, -6}));
    EXPECT_EQ(q[2], (Quelle{3, 4, {1, 0}, {2, 3}, {70, -7}}));
    EXPECT_EQ(e.frequenzen[0].impedanz, (Komplex{50, -5}));
    // Zeilen mit unbrauchbarer Ganzzahlspalte fallen weg.
    ASSERT_EQ(e.frequenzen[1].quellen.size(), 1u);
    EXPECT_EQ(e.frequenzen[1].impedanz, (Komplex{40, -4}));
}

TEST(NEC2Ausgabe, StroemeOhneGeometrieRechnenWellenlaengenInMeter) {
    const auto f = einzige(NEC2Ausgabe::lesen(R"(
                                FREQUENCY : 1.4200E+01 MHZ
                           -------- CURRENTS AND LOCATION --------
   SEG  TAG    COORDINATES OF SEGM CENTER     SEGM    ------------- CURRENT (AMPS) -------------
     1    1    0.0000   -0.2301    0.4736   0.02301  1.2046E-03  2.1153E-04  1.2230E-03    9.959
     2  -nan   0.0000   -0.2071    0.4736   0.02301  3.3323E-03  6.0080E-04  3.3860E-03   10.221
     3    1    0.0000   -0.1840    0.4736   0.02301  5.2727E-03  9.7703E-04  5.3624E-03   10.498
)"));
    ASSERT_EQ(f.segmente.size(), 2u);
    const double l = 299.792458 / 14.2;
    EXPECT_EQ(
        f.segmente[0],
        (Segment{1, 1, 0, -0.2301 * l, 0.4736 * l, 0.02301 * l, 0, 0, 0, {1.2046E-03, 2.1153E-04}, {}, {}}));
    EXPECT_EQ(f.segmente[1].nummer, 3);
    EXPECT_TRUE(f.stroemeGeliefert);
}

TEST(NEC2Ausgabe, SpaetereGeometriezeileErsetztDieFruehere) {
    const auto f = einzige(NEC2Ausgabe::lesen(R"(
 ---------- SEGMENTATION DATA ----------
     1    0.0  0.0  1.0  0.5  0.0  90.0  0.001  0  1  2  1
     1    0.0  0.0  2.0  0.5  0.0  90.0  0.002  0  1  0  4
 FREQUENCY : 299.792458 MHZ
 -------- CURRENTS AND LOCATION --------
     1    9    7.0   7.0   7.0   7.0  1.0 2.0 3.0 4.0)"));
    ASSERT_EQ(f.segmente.size(), 1u);
    EXPECT_EQ(f.segmente[0], (Segment{1, 4, 0, 0, 2, 0.5, 0, 90, 0.002, {1, 2}, 0, 0}));
}

TEST(NEC2Ausgabe, WarnungenUeberallGetrimmtUndOhneFrequenz) {
    const auto e = NEC2Ausgabe::lesen("     ***** WARNING: SEGMENT LENGTH SMALL\t \n"
                                      "  GEOMETRY DATA CARD ERROR\n"
                                      "  FREQUENCY : 7 MHZ\n"
                                      " ---------- RADIATION PATTERNS -----------\n"
                                      "    0.00      0.00   -999.99    -4.61    -4.61\n"
                                      "    1 ***** WARNING: NUR VIER ZAHLEN 2 3\n"
                                      "\twarning klein geschrieben zählt nicht");
    EXPECT_EQ(e.warnungen,
              (std::vector<std::string>{"***** WARNING: SEGMENT LENGTH SMALL", "GEOMETRY DATA CARD ERROR",
                                        "1 ***** WARNING: NUR VIER ZAHLEN 2 3"}));
    EXPECT_EQ(einzige(e).diagramm.size(), 1u);
}

TEST(NEC2Ausgabe, PivotZeilenStoerenNicht) {
    std::string bericht = " FREQUENCY : 1.0000E-09 MHz\n";
    for (int i = 0; i < 5000; ++i)
        bericht += "  PIVOT(" + std::to_string(i) + ")=   0.00000000E+00\n";
    bericht += R"( --------- ANTENNA INPUT PARAMETERS ---------
    1    11  1.0000E+00  0.0000E+00        -NAN        -NAN        -NAN        -NAN        -NAN        -NAN        -NAN
                               INPUT POWER   =        -NAN Watts
                               EFFICIENCY    =   n/a Percent)";
    const auto f = einzige(NEC2Ausgabe::lesen(bericht));
    ASSERT_EQ(f.quellen.size(), 1u);
    EXPECT_FALSE(f.wirkungsgrad);
}

TEST(NEC2Ausgabe, AbschnitteVorDerErstenFrequenzFallenWeg) {
    const auto e = NEC2Ausgabe::lesen(R"(
 --------- ANTENNA INPUT PARAMETERS ---------
    1    11  1.0 0.0 2.0 3.0 50.0 -5.0 0.1 0.2 0.3
 ---------- RADIATION PATTERNS -----------
    0.00      0.00   -999.99    -4.61    -4.61
 INPUT POWER = 1.0 W
 NEAR ELECTRIC FIELDS
    0 0 1  1 2 3 4 5 6)");
    EXPECT_TRUE(e.frequenzen.empty());
    EXPECT_TRUE(NEC2Ausgabe::lesen("").frequenzen.empty());
}

TEST(NEC2Ausgabe, TitelAmEndeGibtLeereTabelle) {
    const auto f = einzige(NEC2Ausgabe::lesen(" FREQUENCY : 3.5 MHZ\n RADIATION PATTERNS\n THETA PHI\n"));
    EXPECT_TRUE(f.diagramm.empty());
    EXPECT_FALSE(f.stroemeGeliefert);
}
