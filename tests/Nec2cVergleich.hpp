#pragma once

// Vergleich eines Kernergebnisses mit dem von nec2c auf demselben Deck.
#include "NECKern/Ergebnis.hpp"

#include <algorithm>
#include <cmath>
#include <gtest/gtest.h>

namespace TestHilfen {

// Impedanz auf 0,5 %, Diagramm auf 0,05 dB, Nahfeld auf 0,5 % des grössten Betrags.
inline void erwarteWieNec2c(const NECKern::NECErgebnis& e, const NECKern::NECErgebnis& nec2c) {
    ASSERT_EQ(e.frequenzen.size(), nec2c.frequenzen.size());
    for (std::size_t i = 0; i < e.frequenzen.size(); ++i) {
        const auto& f = e.frequenzen[i];
        const auto& n = nec2c.frequenzen[i];
        SCOPED_TRACE(n.mhz);
        EXPECT_EQ(f.mhz, n.mhz);
        ASSERT_TRUE(f.impedanz && n.impedanz);
        EXPECT_LE(std::hypot(f.impedanz->re - n.impedanz->re, f.impedanz->im - n.impedanz->im) /
                      n.impedanz->betrag(),
                  0.005);
        ASSERT_EQ(f.diagramm.size(), n.diagramm.size());
        for (std::size_t k = 0; k < f.diagramm.size(); ++k) {
            EXPECT_EQ(f.diagramm[k].theta, n.diagramm[k].theta);
            EXPECT_EQ(f.diagramm[k].phi, n.diagramm[k].phi);
            EXPECT_NEAR(f.diagramm[k].gesamt, n.diagramm[k].gesamt, 0.05);
        }
        ASSERT_EQ(f.nahfeldE.size(), n.nahfeldE.size());
        double groesster = 0;
        for (const auto& p : n.nahfeldE)
            groesster = std::max(groesster, p.gesamt());
        for (std::size_t k = 0; k < f.nahfeldE.size(); ++k)
            EXPECT_NEAR(f.nahfeldE[k].gesamt(), n.nahfeldE[k].gesamt(), 0.005 * groesster);
    }
}

} // namespace TestHilfen
