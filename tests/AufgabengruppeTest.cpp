#include "NECKern/Aufgabengruppe.hpp"

#include <atomic>
#include <chrono>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <mutex>
#include <stdexcept>
#include <thread>
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

TEST(Aufgabengruppe, DerFehlerKommtErstWennAlleLaufendenAufgabenFertigSind) {
    std::atomic<int> fertig{0};
    EXPECT_THROW(aufgabengruppe(4, 4,
                                [&](std::size_t i) {
                                    if (i == 0) throw std::runtime_error("null");
                                    std::this_thread::sleep_for(std::chrono::milliseconds(30));
                                    ++fertig;
                                }),
                 std::runtime_error);
    // Was schon lief, lief zu Ende; nichts läuft nach der Rückkehr weiter.
    int jetzt = fertig.load();
    std::this_thread::sleep_for(std::chrono::milliseconds(60));
    EXPECT_EQ(fertig.load(), jetzt);
}
