#include "Fenster/Ansicht3D/Diagrammnetz.hpp"

#include <cmath>
#include <gtest/gtest.h>
#include <limits>
#include <numbers>
#include <string>
#include <vector>

using Raumbild::Diagrammnetz;
using Art = Diagrammnetz::Art;

namespace {

// Eine Keule nach +x über einem Sockel: Gewinn in dBi über θ (vom Zenit) und φ, Maximum
// 10 dBi bei θ 90, φ 0, an den Polen 0 dBi, nach hinten bis unter die Untergrenze.
double gewinn(double theta, double phi) {
    const double t = theta * std::numbers::pi / 180, p = phi * std::numbers::pi / 180;
    const double keule = std::pow(std::sin(t), 2) * std::pow((1 + std::cos(p)) / 2, 2);
    const double sockel = 0.1 * std::pow(std::cos(t), 2);
    return 10 + 10 * std::log10(std::max(keule + sockel, 1e-6));
}

std::vector<NECKern::Richtung> raster(int thetaBis, int phiBis, int schritt) {
    std::vector<NECKern::Richtung> d;
    for (int t = 0; t <= thetaBis; t += schritt)
        for (int p = 0; p <= phiBis; p += schritt)
            d.push_back({double(t), double(p), 0, 0, gewinn(t, p)});
    return d;
}

struct Fall {
    std::string name;
    std::vector<NECKern::Richtung> diagramm;
    Art art;
    std::size_t vierecke;
};

std::vector<Fall> faelle() {
    auto loecher = raster(180, 350, 10);
    loecher[40].gesamt = std::numeric_limits<double>::quiet_NaN(); // θ 10, φ 40: vier Vierecke
    loecher.erase(loecher.begin() + 300);                          // θ 80, φ 120: vier weitere
    return {
        {"ganze Kugel, Naht bei 360°", raster(180, 350, 10), Art::koerper, 18 * 36},
        {"obere Halbkugel, 0…360°", raster(90, 360, 5), Art::koerper, 18 * 72},
        {"Viertel ohne Naht", raster(90, 90, 10), Art::koerper, 9 * 9},
        {"Löcher", loecher, Art::koerper, 18 * 36 - 8},
        {"ein Schnitt", {{90, 0, 0, 0, 1}, {90, 10, 0, 0, 2}, {90, 20, 0, 0, 3}}, Art::schnitt, 0},
        {"kein Diagramm", {}, Art::keinDiagramm, 0},
        {"zwei Schnitte sind kein Raster",
         {{90, 0, 0, 0, 1}, {90, 90, 0, 0, 1}, {90, 180, 0, 0, 1}, {0, 0, 0, 0, 1}, {45, 0, 0, 0, 1}},
         Art::schnitt,
         0},
    };
}

} // namespace

TEST(Ansicht3DNetz, ArtUndVierecke) {
    for (const auto& f : faelle()) {
        const auto netz = Raumbild::diagrammnetz(f.diagramm);
        EXPECT_EQ(netz.art, f.art) << f.name;
        EXPECT_EQ(netz.vierecke.size(), f.vierecke) << f.name;
        for (const auto& v : netz.vierecke)
            for (auto k : v)
                EXPECT_FALSE(std::isnan(netz.gewinn.at(static_cast<std::size_t>(k)))) << f.name;
    }
}

TEST(Ansicht3DNetz, RadiusWaechstMitDemGewinnUeberDerUntergrenze) {
    const auto netz = Raumbild::diagrammnetz(raster(180, 350, 10));
    ASSERT_EQ(netz.art, Art::koerper);
    EXPECT_DOUBLE_EQ(netz.maximum, 10);
    for (std::size_t i = 0; i < netz.punkte.size(); ++i) {
        const double erwartet = std::clamp((netz.gewinn[i] - 10) / 30 + 1, 0.0, 1.0);
        EXPECT_NEAR(netz.punkte[i].laenge(), erwartet, 1e-12);
    }
    // Maximum bei θ 90, φ 0 liegt auf +x mit Radius 1, der Zenit (0 dBi) auf +z.
    const auto& spitze = netz.punkte[9 * 36];
    EXPECT_NEAR(spitze.x, 1, 1e-12);
    EXPECT_NEAR(spitze.z, 0, 1e-12);
    EXPECT_NEAR(netz.punkte[0].z, 2.0 / 3, 1e-12);
}
