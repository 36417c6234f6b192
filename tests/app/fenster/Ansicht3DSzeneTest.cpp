#include "Fenster/Ansicht3D/Farbskala.hpp"
#include "Fenster/Ansicht3D/Lasten.hpp"
#include "Fenster/Ansicht3D/Masstab.hpp"
#include "Fenster/Ansicht3D/Szene.hpp"

#include <cmath>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <limits>
#include <string>
#include <vector>

namespace {

// Tag 1 mit fünf Segmenten (Nr. 1–5) längs y, Tag 2 mit drei (Nr. 6–8) bei x = 1.
NECKern::FrequenzErgebnis zweiDraehte() {
    NECKern::FrequenzErgebnis e;
    e.stroemeGeliefert = true;
    for (int i = 0; i < 8; ++i) {
        const bool erster = i < 5;
        const double x = erster ? 0 : 1, y = (erster ? i : i - 5) * 0.2, strom = 0.002 * (i + 1);
        e.segmente.push_back({i + 1, erster ? 1 : 2, x, y, 0, 0.2, 0, 90, 0.001, {strom, 0}, {}, {}});
    }
    return e;
}

std::vector<int> belastet(const std::string& deck) {
    std::vector<int> nummern;
    const auto e = zweiDraehte();
    const auto last = Raumbild::lasten(deck, e.segmente);
    for (std::size_t i = 0; i < last.size(); ++i)
        if (last[i]) nummern.push_back(static_cast<int>(e.segmente[i].nummer));
    return nummern;
}

} // namespace

TEST(Ansicht3DSzene, LastenTreffenDieSegmenteDerLdKarten) {
    const std::vector<std::pair<std::string, std::vector<int>>> faelle{
        {"LD 0 2 2 2 0 1e-06 0\n", {7}},
        {"GW 1 5 0 0 0 0 1 0 0.001\nLD 1 1 0 0 50 0 0\n", {1, 2, 3, 4, 5}},
        {"LD 0 1 4 0 10 0 0\n", {4}},
        {"LD 0 0 3 6 10 0 0\n", {3, 4, 5, 6}},
        {"LD 5 0 0 0 5.8e7\n", {}},
        {"LD 0 2 1 1 1 0 0\nLD -1 0 0 0 0 0 0\nLD 0 1 1 1 1 0 0\n", {1}},
        {"LD 0 zwei 1 1\nLD 0 2\nLDX 0 2 1 1\n", {}},
    };
    for (const auto& [deck, nummern] : faelle)
        EXPECT_THAT(belastet(deck), testing::ElementsAreArray(nummern)) << deck;
}

TEST(Ansicht3DSzene, SpeisungStromJeVoltUndNummerImTag) {
    auto e = zweiDraehte();
    e.quellen.push_back({2, 7, {2, 0}, {0.01, 0}, {50, 0}});
    e.segmente[2].x = std::numeric_limits<double>::quiet_NaN();
    const auto szene = Raumbild::szeneBauen(e, "");
    ASSERT_EQ(szene.stuecke.size(), 7u); // das Segment ohne Koordinaten fällt weg
    const auto& speise = szene.stuecke[5];
    EXPECT_EQ(speise.nummer, 7);
    EXPECT_EQ(speise.imTag, 2);
    EXPECT_TRUE(speise.speisung);
    EXPECT_EQ(std::count_if(szene.stuecke.begin(), szene.stuecke.end(), [](auto& s) { return s.speisung; }),
              1);
    EXPECT_TRUE(szene.jeVolt);
    EXPECT_DOUBLE_EQ(speise.betrag, 0.014 / 2);
    EXPECT_DOUBLE_EQ(szene.maxStrom, 0.016 / 2);
    EXPECT_NEAR(szene.grenzen.max.y, 0.9, 1e-12);
}

TEST(Ansicht3DSzene, KoerperSitztWoDieStroemeFliessen) {
    auto e = zweiDraehte();
    for (int i = 0; i < 5; ++i)
        e.segmente[static_cast<std::size_t>(i)].strom = {};
    EXPECT_NEAR(Raumbild::szeneBauen(e, "").koerperMitte.x, 1, 1e-12);
    e.stroemeGeliefert = false;
    for (auto& s : e.segmente)
        s.strom = {};
    EXPECT_NEAR(Raumbild::szeneBauen(e, "").koerperMitte.x, 0.5, 1e-12);
}

TEST(Ansicht3DSzene, EinpassenUmfasstBodenUndKoerperNurWennDa) {
    auto e = zweiDraehte();
    e.diagramm = {{0, 0, 0, 0, 1}, {0, 90, 0, 0, 1}, {90, 0, 0, 0, 3}, {90, 90, 0, 0, 2}};
    for (bool boden : {false, true}) {
        e.mitBoden = boden;
        const auto szene = Raumbild::szeneBauen(e, "");
        ASSERT_EQ(szene.netz.art, Raumbild::Diagrammnetz::Art::koerper);
        for (bool koerper : {false, true})
            EXPECT_EQ(szene.passpunkte(koerper).size(), 16u + (boden ? 4 : 0) + (koerper ? 4 : 0));
    }
}

TEST(Ansicht3DSzene, NurEineGanzAndereAntenneWirdNeuEingepasst) {
    Raumbild::Grenzen yagi{{-3, -5, 15}, {3, 5, 15}};
    EXPECT_FALSE(Raumbild::ganzAndereAntenne(yagi, {{-3.1, -5.2, 15}, {3, 5.2, 15}}));
    EXPECT_TRUE(Raumbild::ganzAndereAntenne(yagi, {{0, 0, 0}, {0.2, 0.2, 1.4}}));
    EXPECT_TRUE(Raumbild::ganzAndereAntenne(yagi, {{97, -5, 15}, {103, 5, 15}}));
    EXPECT_TRUE(Raumbild::ganzAndereAntenne({}, yagi));
}

TEST(Ansicht3DSzene, FarbskalenEndenUndHelligkeit) {
    EXPECT_EQ(Raumbild::Farbskala::strom(0), QColor(68, 1, 84));
    EXPECT_EQ(Raumbild::Farbskala::strom(1), QColor(253, 231, 37));
    EXPECT_EQ(Raumbild::Farbskala::strom(-5), Raumbild::Farbskala::strom(0));
    EXPECT_EQ(Raumbild::Farbskala::strom(7), Raumbild::Farbskala::strom(1));
    EXPECT_EQ(Raumbild::Farbskala::strom(std::nan("")), Raumbild::Farbskala::strom(0));
    EXPECT_EQ(Raumbild::Farbskala::gewinn(-std::numeric_limits<double>::infinity()), QColor(13, 8, 135));
    EXPECT_EQ(Raumbild::Farbskala::gewinn(1), QColor(240, 249, 33));
    EXPECT_EQ(Raumbild::Farbskala::momentan(-1), QColor(59, 76, 192));
    EXPECT_EQ(Raumbild::Farbskala::momentan(0), QColor(221, 221, 221));
    EXPECT_EQ(Raumbild::Farbskala::momentan(1), QColor(180, 4, 38));
    // Wahrnehmungsgleich: die Leuchtdichte steigt mit dem Wert.
    auto leuchtdichte = [](const QColor& c) {
        return 0.2126 * c.red() + 0.7152 * c.green() + 0.0722 * c.blue();
    };
    for (auto skala : {Raumbild::Farbskala::strom, Raumbild::Farbskala::gewinn})
        for (int i = 1; i <= 20; ++i)
            EXPECT_GT(leuchtdichte(skala(i / 20.0)), leuchtdichte(skala((i - 1) / 20.0))) << i;
}

TEST(Ansicht3DSzene, MasstabRundeLaengen) {
    const std::vector<std::pair<double, double>> schritte{{0.37, 0.2}, {1, 1}, {7.3, 5}, {0, 0}};
    for (auto [hoechstens, schritt] : schritte)
        EXPECT_DOUBLE_EQ(Raumbild::Masstab::schritt(hoechstens), schritt) << hoechstens;
    EXPECT_EQ(Raumbild::Masstab::schritt(std::nan("")), 0);
    const std::vector<std::pair<double, std::string>> texte{
        {1000, "1 km"}, {1, "1 m"}, {0, "0 m"}, {0.01, "1 cm"}, {0.005, "5 mm"}};
    for (const auto& [meter, text] : texte)
        EXPECT_EQ(Raumbild::Masstab::text(meter), text);
}
