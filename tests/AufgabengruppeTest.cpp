#include "NECKern/Aufgabengruppe.hpp"

#include <atomic>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <stdexcept>
#include <vector>

using NECKern::aufgabengruppe;

TEST(Aufgabengruppe, JedeAufgabeLaeuftGenauEinmal) {
    std::vector<std::atomic<int>> gelaufen(50);
    aufgabengruppe(50, 3, [&](std::size_t i) { ++gelaufen[i]; });
    for (const auto& n : gelaufen)
        EXPECT_EQ(n.load(), 1);
    aufgabengruppe(0, 3, [](std::size_t) { FAIL(); });
}

TEST(Aufgabengruppe, NachDemErstenFehlerBeginntKeineAufgabeMehr) {
    std::vector<std::size_t> begonnen;
    EXPECT_THAT(
        [&] {
            aufgabengruppe(10, 1, [&](std::size_t i) {
                begonnen.push_back(i);
                if (i == 3) throw std::runtime_error("drei");
                if (i == 5) throw std::runtime_error("fünf");
            });
        },
        testing::ThrowsMessage<std::runtime_error>("drei"));
    EXPECT_EQ(begonnen, (std::vector<std::size_t>{0, 1, 2, 3}));
}
