#include "NECKern/Gangmarken.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

using namespace NECKern;

TEST(Gangmarken, BandUndResonanzEingepasst) {
    auto punkt = [](double mhz, std::optional<double> swr, double x) {
        return Frequenzpunkt{mhz, Komplex{50, x}, swr, std::nullopt, std::nullopt};
    };
    const std::vector<Frequenzpunkt> gang{punkt(14.0, 3.0, -40), punkt(14.1, 1.5, -20), punkt(14.2, 1.2, 10),
                                          punkt(14.3, 2.5, 30),  punkt(14.4, 4.0, 50),  punkt(14.5, 1.9, 0)};
    const auto baender = Gangmarken::swrBaender(gang);
    ASSERT_EQ(baender.size(), 2u);
    EXPECT_NEAR(baender[0].von, 14.0 + 0.1 * 2 / 3, 1e-12);
    EXPECT_NEAR(baender[0].bis, 14.2 + 0.1 * 0.8 / 1.3, 1e-12);
    EXPECT_FALSE(baender[0].offenUnten || baender[0].offenOben);
    // Das zweite Band beginnt zwischen 14,4 und 14,5 und reicht bis ans Ende.
    EXPECT_NEAR(baender[1].von, 14.4 + 0.1 * 2 / 2.1, 1e-12);
    EXPECT_EQ(baender[1].bis, 14.5);
    EXPECT_TRUE(baender[1].offenOben);

    EXPECT_THAT(Gangmarken::resonanzen(gang),
                testing::ElementsAre(testing::DoubleNear(14.1 + 0.1 * 20 / 30, 1e-12), 14.5));
    // Wechsel zwischen den letzten beiden Punkten; kleine Werte ohne Wechsel zählen nicht.
    EXPECT_THAT(Gangmarken::resonanzen({punkt(1, 1, 0.5), punkt(2, 1, 5), punkt(3, 1, -15)}),
                testing::ElementsAre(2.25));
    // Ein Punkt ohne SWR trennt, auch wenn beide Nachbarn unter 2 liegen.
    const std::vector<Frequenzpunkt> luecke{punkt(1, 1.1, 1), punkt(2, std::nullopt, 1), punkt(3, 1.1, 1)};
    EXPECT_EQ(Gangmarken::swrBaender(luecke).size(), 2u);

    EXPECT_EQ(Gangmarken::zusammenfassung(gang),
              "SWR < 2: 14.067–14.262 MHz (195 kHz) · SWR < 2: 14.495–14.500 MHz "
              "(≥ 5 kHz) · Resonanz 14.167 MHz · Resonanz 14.500 MHz");
    EXPECT_EQ(Gangmarken::zusammenfassung({punkt(1, 3, 5), punkt(2, 4, 6)}),
              "SWR < 2: nirgends im Band · keine Resonanz im Band");
}
