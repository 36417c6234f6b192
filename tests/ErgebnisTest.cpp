#include "NECKern/Ergebnis.hpp"

#include <cmath>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <limits>
#include <nlohmann/json.hpp>

using namespace NECKern;

namespace {

constexpr double keineZahl = std::numeric_limits<double>::quiet_NaN();
constexpr double unendlich = std::numeric_limits<double>::infinity();

FrequenzErgebnis mitImpedanz(double re, double im) {
    FrequenzErgebnis f;
    f.impedanz = Komplex{re, im};
    return f;
}

FrequenzErgebnis mitDiagramm(std::vector<Richtung> diagramm, bool boden = false) {
    FrequenzErgebnis f;
    f.diagramm = std::move(diagramm);
    f.mitBoden = boden;
    return f;
}

} // namespace

TEST(Komplex, BetragUndPhaseInGrad) {
    EXPECT_DOUBLE_EQ((Komplex{3, 4}.betrag()), 5.0);
    EXPECT_DOUBLE_EQ((Komplex{0, 1}.phaseGrad()), 90.0);
    EXPECT_DOUBLE_EQ((Komplex{-1, 0}.phaseGrad()), 180.0);
}

TEST(FrequenzErgebnis, SwrGegenBezugsimpedanz) {
    struct Fall {
        double re, im, z0, swr;
    };
    for (auto [re, im, z0, erwartet] : {Fall{50, 0, 50, 1}, Fall{100, 0, 50, 2}, Fall{25, 0, 50, 2},
                                        Fall{-50, 0, 50, unendlich}, Fall{0, 50, 50, unendlich}}) {
        auto swr = mitImpedanz(re, im).swr(z0);
        ASSERT_TRUE(swr.has_value());
        EXPECT_DOUBLE_EQ(*swr, erwartet) << re << " " << im;
    }
    EXPECT_FALSE(FrequenzErgebnis{}.swr(50));
}

TEST(FrequenzErgebnis, MaxGewinnMitBodenNurOberhalbOhneNaNUndBeiGleichstandFrueher) {
    auto boden = mitDiagramm({{0, 0, 0, 0, 1}, {90.00005, 0, 0, 0, 2}, {120, 0, 0, 0, 9}}, true);
    EXPECT_DOUBLE_EQ(boden.maxGewinn()->gesamt, 2);
    boden.mitBoden = false;
    EXPECT_DOUBLE_EQ(boden.maxGewinn()->gesamt, 9);
    EXPECT_FALSE(mitDiagramm({{120, 0, 0, 0, 9}}, true).maxGewinn());
    EXPECT_FALSE(FrequenzErgebnis{}.maxGewinn());
    const auto f =
        mitDiagramm({{5, 0, 0, 0, keineZahl}, {10, 0, 0, 0, 3}, {20, 0, 0, 0, 3}, {30, 0, 0, 0, keineZahl}});
    EXPECT_DOUBLE_EQ(f.maxGewinn()->theta, 10);
}

TEST(FrequenzErgebnis, VorRueckGegenDenAzimutNaechstDerGegenrichtung) {
    std::vector<Richtung> schnitt;
    for (int phi = 0; phi <= 350; phi += 10)
        schnitt.push_back({90, double(phi), 0, 0, double(-phi) / 10});
    schnitt.back().gesamt = 10; // Maximum bei 350°, Gegenrichtung 170° mit −17 dB
    EXPECT_DOUBLE_EQ(*mitDiagramm(schnitt).vorRueck(), 27);

    // Ohne passenden Azimut gilt der nächste über den Nullpunkt hinweg; bei Gleichstand der erste.
    auto f = mitDiagramm({{90, 170, 0, 0, 6}, {90, 345, 0, 0, 1}, {90, 355, 0, 0, 2}, {45, 350, 0, 0, -30}});
    EXPECT_DOUBLE_EQ(*f.vorRueck(), 5);
    // Nur ein Azimut: null; ohne Diagramm keiner.
    EXPECT_DOUBLE_EQ(*mitDiagramm({{80, 0, 0, 0, 1}, {90, 0, 0, 0, 4}}).vorRueck(), 0);
    EXPECT_FALSE(FrequenzErgebnis{}.vorRueck());
}

TEST(FrequenzErgebnis, SpeiseSegmentBevorzugtDieGeometrie) {
    FrequenzErgebnis f;
    EXPECT_FALSE(f.speiseSegment());
    EXPECT_FALSE(f.speisung());
    f.quellen = {Quelle{1, 11, {}, {}, {}}, Quelle{2, 3, {}, {}, {}}};
    EXPECT_EQ(f.speiseSegment(), 11);
    EXPECT_EQ(f.speisung()->tag, 1);
    f.speiseSegmentGeometrie = 40;
    EXPECT_EQ(f.speiseSegment(), 40);
}

TEST(Nahfeldpunkt, GesamtUndEffektivwert) {
    Nahfeldpunkt p{0, 0, 0, {3, 4, 12}, {0, 0, 0}};
    EXPECT_DOUBLE_EQ(p.gesamt(), 13);
    EXPECT_DOUBLE_EQ(p.effektiv(), 13 / std::sqrt(2.0));
}

TEST(Segment, EndenLiegenUmDieMitteEntlangDerWinkel) {
    Segment s;
    s.x = 1;
    s.y = 2;
    s.z = 3;
    s.laenge = 2;
    s.alpha = 90;
    const auto nah = [](Punkt3 soll) { return testing::Pointwise(testing::DoubleNear(1e-12), soll); };
    EXPECT_THAT(s.enden().first, nah({1, 2, 2}));
    EXPECT_THAT(s.enden().second, nah({1, 2, 4}));
    s.alpha = 0;
    s.beta = 90;
    EXPECT_THAT(s.enden().first, nah({1, 1, 3}));
    EXPECT_THAT(s.enden().second, nah({1, 3, 3}));
}

TEST(ErgebnisJson, SchluesselSindDieFeldnamenUndLeereOptionaleFehlen) {
    FrequenzErgebnis f;
    f.mhz = 14.2;
    auto j = nlohmann::ordered_json(f);
    std::vector<std::string> schluessel;
    for (auto& [k, v] : j.items())
        schluessel.push_back(k);
    EXPECT_EQ(schluessel, (std::vector<std::string>{"mhz", "quellen", "segmente", "stroemeGeliefert",
                                                    "diagramm", "nahfeldE", "nahfeldH", "mitBoden"}));
    EXPECT_EQ(j.get<FrequenzErgebnis>(), f);
}

TEST(ErgebnisJson, HinUndZurueckErgibtDasGleicheErgebnis) {
    FrequenzErgebnis f;
    f.mhz = 7.1;
    f.impedanz = Komplex{72.5, -3.25};
    f.quellen = {Quelle{1, 11, {1, 0}, {0.01, -0.002}, {72.5, -3.25}}};
    Segment s;
    s.nummer = 11;
    s.tag = 1;
    s.laenge = 0.5;
    s.vorher = 10;
    f.segmente = {s};
    f.stroemeGeliefert = true;
    f.diagramm = {{90, 0, -999.99, 2.1, 2.1}};
    f.leistungEingang = 0.01;
    f.wirkungsgrad = 100;
    f.nahfeldE = {{1, 2, 3, {1, 2, 3}, {10, 20, 30}}};
    f.speiseSegmentGeometrie = 11;
    f.mitBoden = true;
    NECErgebnis e{{f, FrequenzErgebnis{}}, {"WARNUNG"}, "NEC-2 (nec2c)", 0.25};
    auto text = nlohmann::ordered_json(e).dump();
    EXPECT_EQ(nlohmann::ordered_json::parse(text).get<NECErgebnis>(), e);
}

TEST(ErgebnisJson, NichtEndlicheZahlenWerdenNull) {
    FrequenzErgebnis f;
    f.mhz = keineZahl;
    f.impedanz = Komplex{unendlich, -unendlich};
    f.leistungEingang = keineZahl;
    f.nahfeldH = {{0, 0, 0, {unendlich, 1, 2}, {0, 0, 0}}};
    auto j = nlohmann::ordered_json::parse(nlohmann::ordered_json(f).dump());
    EXPECT_TRUE(j["impedanz"]["re"].is_null());
    auto zurueck = j.get<FrequenzErgebnis>();
    EXPECT_TRUE(std::isnan(zurueck.mhz));
    EXPECT_TRUE(std::isnan(zurueck.impedanz->im));
    EXPECT_FALSE(zurueck.leistungEingang);
    EXPECT_TRUE(std::isnan(zurueck.nahfeldH[0].betrag[0]));
    EXPECT_DOUBLE_EQ(zurueck.nahfeldH[0].betrag[2], 2);
}
