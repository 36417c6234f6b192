#pragma once

#include "Fenster/Ansicht3D/Diagrammnetz.hpp"
#include "Fenster/Ansicht3D/Vek3.hpp"
#include "NECKern/Ergebnis.hpp"

#include <cstdint>
#include <limits>
#include <string_view>
#include <vector>

namespace Raumbild {

struct Grenzen {
    static constexpr double unendlich = std::numeric_limits<double>::infinity();
    Vek3 min{unendlich, unendlich, unendlich};
    Vek3 max{-unendlich, -unendlich, -unendlich};

    void dazu(const Vek3& p);
    bool leer() const { return min.x > max.x; }
    Vek3 mitte() const { return (min + max) * 0.5; }
    double diagonale() const { return leer() ? 0 : (max - min).laenge(); }
};

// Ein Segment, wie die Ansicht es zeichnet.
struct Drahtstueck {
    Vek3 anfang, ende, mitte;
    double radius = 0;
    NECKern::Komplex strom; // A je Volt der Speisung, ohne Speisespannung in A
    double betrag = 0;
    std::int64_t tag = 0;
    std::int64_t nummer = 0; // im ganzen Modell
    std::int64_t imTag = 0;  // ab 1 innerhalb des Tags, wie EX und LD zählen
    bool speisung = false;
    bool last = false;
};

// Alles, was sich aus einem Ergebnis einmal berechnen lässt; gezeichnet wird daraus
// in jedem Bild neu.
struct Szene {
    double mhz = 0;
    std::vector<Drahtstueck> stuecke; // nur Segmente mit endlichen Koordinaten
    bool stroeme = false;
    bool jeVolt = false;
    double maxStrom = 0;
    bool mitBoden = false;
    Grenzen grenzen;
    Diagrammnetz netz;
    // Der Körper sitzt im Stromschwerpunkt (ohne Ströme in der Mitte der Drähte), sein
    // grösster Radius ist die halbe Diagonale der Antenne.
    Vek3 koerperMitte;
    double koerperRadius = 1;

    Vek3 koerperPunkt(std::size_t i) const { return koerperMitte + netz.punkte[i] * koerperRadius; }
    // Was beim Einpassen ins Bild muss: Drahtenden, mit Boden ihr Fusspunkt, der Körper.
    std::vector<Vek3> passpunkte(bool mitKoerper) const;
};

Szene szeneBauen(const NECKern::FrequenzErgebnis& ergebnis, std::string_view deck);

// Nach einer Neuberechnung bleibt die Kamera, ausser die Antenne ist eine ganz andere
// geworden (anderes Beispiel geladen): dann wird neu eingepasst.
bool ganzAndereAntenne(const Grenzen& alt, const Grenzen& neu);

} // namespace Raumbild
