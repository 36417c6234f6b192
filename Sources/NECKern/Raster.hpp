#pragma once

#include "NECKern/Ergebnis.hpp"

#include <cstddef>
#include <cstdint>
#include <vector>

namespace NECKern {

// Gleichmässiges Raster über achsenparallelen Quadern, für Nachbarsuchen ohne
// Vergleich aller Paare.
//
// Warum keine Nähe verloren geht: die Zellnummer einer Koordinate ist
// floor((x − ursprung) / zelle), begrenzt auf ±2^61 – eine monoton steigende Funktion von x,
// auch mit Rundung. Liegen zwei Quader [u1, o1] und [u2, o2] (mit den Grenzen,
// wie sie gerechnet wurden) auf einer Achse überlappend, u1 ≤ o2 und u2 ≤ o1,
// dann überlappen auch ihre Zellbereiche. Wer einen Quader einträgt und einen
// anderen abfragt, findet ihn also, sobald sich die Quader berühren; die
// Aufrufer wählen die Quader so gross, dass jedes Paar in Reichweite sich
// berührt. Die Zellgrösse bestimmt nur die Geschwindigkeit.
class Raster {
  public:
    explicit Raster(double zelle);

    // Trägt nummer in jede Zelle ein, die der Quader berührt. false (und nichts
    // eingetragen), wenn eine Grenze NaN ist oder der Quader zu viele Zellen
    // überdeckt: dann muss der Aufrufer diesen Eintrag selbst immer prüfen.
    bool eintragen(std::uint32_t nummer, const Punkt3& unten, const Punkt3& oben);

    // Nach dem letzten Eintragen, vor dem ersten Abfragen.
    void fertig();

    // Hängt die Nummern aller Einträge in den Zellen des Quaders an (auch
    // doppelt). false, wenn eine Grenze NaN ist oder der Quader zu viele Zellen
    // überdeckt: dann muss der Aufrufer alle Einträge selbst prüfen.
    bool abfragen(const Punkt3& unten, const Punkt3& oben, std::vector<std::uint32_t>& treffer) const;

  private:
    struct Zelle {
        std::int64_t x, y, z;
        bool operator==(const Zelle&) const = default;
        auto operator<=>(const Zelle&) const = default;
    };
    struct Bereich {
        std::int64_t von[3];
        std::int64_t bis[3];
    };
    struct Fach {
        Zelle zelle;
        std::uint32_t anfang = 0, ende = 0; // in nummern_
        bool belegt = false;
    };

    bool bereich(const Punkt3& unten, const Punkt3& oben, Bereich& b) const;
    std::int64_t index(double x) const;
    static std::uint64_t streuwert(const Zelle& z);
    const Fach* finden(const Zelle& z) const;

    double zelle_;
    double ursprung_;
    std::vector<std::pair<Zelle, std::uint32_t>> eintraege_;
    std::vector<std::uint32_t> nummern_;
    std::vector<Fach> faecher_; // offene Adressierung, Grösse Zweierpotenz
};

} // namespace NECKern
