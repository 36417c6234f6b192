// Abflachen und Umnummerieren ändern die Physik nicht: nec2c rechnet auf dem
// umgeformten Deck dieselbe Speiseimpedanz wie auf dem ursprünglichen.
#include "NECKern/Geometrie.hpp"
#include "NECKern/Rechenkerne/Nec2cKern.hpp"

#include "TestHilfen.hpp"

#include <algorithm>
#include <cmath>
#include <gtest/gtest.h>

using namespace NECKern;

namespace {

const Nec2cKern nec2c(TestHilfen::nec2c);

struct Fall {
    const char* name;
    const char* deck;
    bool stroeme = true; // Ströme nach Lage vergleichbar
};

// Bei GR und GX rechnet nec2c mit Symmetrie und übergeht dann Lasten, die die
// Symmetrie brechen; das abgeflachte Deck rechnet sie. Dort also nur
// symmetrische Lasten. Welche Kopie gespeist wird, zeigen die Ströme.
const Fall faelle[] = {
    {"Halbkreisschleife über Boden (GA, LD über mehrere Stücke)",
     "CM Bogen\nCE\nGA 1 16 1.5 0 180 0.002\nGE 1\nGN 1\nLD 0 1 5 11 25 0 0\nEX 0 1 1 0 1 0\n"
     "FR 0 1 0 0 45 0\nXQ\nEN\n"},
    {"Gedrehte und verschobene Kopien (GM mit Kopien)",
     "CM Reihe\nCE\nGW 1 11 0 0 -2.5 0 0 2.5 0.005\nGM 1 3 10 0 30 1.2 0 0\nGE 0\n"
     "LD 0 3 1 11 50 0 0\nEX 0 2 6 0 1 0\nFR 0 1 0 0 28 0\nXQ\nEN\n"},
    {"Acht Spiegelbilder (GX 111, Last auf allen Segmenten)",
     "CM Spiegel\nCE\nGW 1 11 0.5 0.3 0.2 1.0 0.8 2.5 0.005\nGX 1 111\nGE 0\nLD 0 0 0 0 20 0 0\n"
     "EX 0 3 6 0 1 0\nFR 0 1 0 0 40 0\nXQ\nEN\n"},
    // Axiale Wendel über Boden, gespeist über einen kurzen Draht zu ihrem Anfang (A1, 0).
    {"Rechtsgängige Wendel über Boden mit Zuleitung (GH, GM)",
     "CM axial\nCE\nGW 1 1 0.5 0 0 0.5 0 0.1 0.002\nGH 2 40 0.24 2.4 0.5 0.5 0.5 0.5 0.002 0\n"
     "GM 0 0 0 0 0 0 0 0.1 2\nGE 1\nGN 1\nEX 0 1 1 0 1 0\nFR 0 1 0 0 100 0\nXQ\nEN\n"},
    // nec2c beginnt eine linksgängige Wendel bei (0, B1, 0) statt bei (A1, 0, 0):
    // im freien Raum nur gedreht, also gleiche Impedanz, aber andere Lagen.
    {"Linksgängige, kegelige Wendel im freien Raum (GH)",
     "CM Wendel\nCE\nGH 1 60 0.2 -2 0.1 0.1 0.2 0.2 0.002 0\nGE 0\nEX 0 1 30 0 1 0\n"
     "FR 0 1 0 0 30 0\nXQ\nEN\n",
     false},
};

FrequenzErgebnis rechnen(const std::string& deck) {
    auto e = nec2c.rechnen(deck);
    EXPECT_TRUE(e.warnungen.empty()) << e.warnungen.front();
    if (e.frequenzen.size() != 1 || !e.frequenzen[0].impedanz) {
        ADD_FAILURE() << "keine Impedanz:\n" << deck;
        return {};
    }
    return e.frequenzen[0];
}

double abstand(const Komplex& a, const Komplex& b) {
    return std::hypot(a.re - b.re, a.im - b.im);
}

// Ströme über die Lage der Segmentmitten verglichen, unabhängig von Nummern und
// Tags; bezogen auf den grössten Strom.
double stromAbweichung(const FrequenzErgebnis& ursprung, const FrequenzErgebnis& umgeformt) {
    EXPECT_EQ(ursprung.segmente.size(), umgeformt.segmente.size());
    double groesster = 0, abweichung = 0;
    for (const auto& s : ursprung.segmente)
        groesster = std::max(groesster, s.strom.betrag());
    for (const auto& u : umgeformt.segmente) {
        auto gleich = std::find_if(ursprung.segmente.begin(), ursprung.segmente.end(), [&](const Segment& s) {
            return std::hypot(s.x - u.x, s.y - u.y, s.z - u.z) < 1e-3;
        });
        if (gleich == ursprung.segmente.end()) {
            ADD_FAILURE() << "Segment " << u.nummer << " hat im Ursprung keine Entsprechung";
            continue;
        }
        abweichung = std::max(abweichung, abstand(gleich->strom, u.strom));
    }
    return abweichung / groesster;
}

} // namespace

TEST(GeometrieMitNec2c, UmgeformteDeckeGebenImpedanzUndStroemeDesUrsprungsdecks) {
    for (const auto& f : faelle) {
        SCOPED_TRACE(f.name);
        auto umgeformt = Geometrie::eindeutigeTags(Geometrie::abflachen(f.deck));
        auto ursprung = rechnen(f.deck);
        auto neu = rechnen(umgeformt);
        if (!ursprung.impedanz || !neu.impedanz) continue;
        EXPECT_LE(abstand(*neu.impedanz, *ursprung.impedanz) / ursprung.impedanz->betrag(), 0.005)
            << umgeformt;
        if (f.stroeme) {
            EXPECT_LE(stromAbweichung(ursprung, neu), 0.005) << umgeformt;
        }
    }
}
