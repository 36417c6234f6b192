#pragma once

#include <array>
#include <cstdint>
#include <nlohmann/json_fwd.hpp>
#include <optional>
#include <string>
#include <utility>
#include <vector>

// Ergebnis eines Rechenlaufs, gleich welcher Kern es gerechnet hat. Einheiten:
// MHz, m, Grad, dBi, W, Ω. Gespeicherte Form: Schlüssel = Feldnamen, leere
// Optionale fehlen, nicht endliche Zahlen werden zu null (JSON kennt sie nicht).
// Beim Lesen wird null in einem Pflicht-Zahlenfeld zu NaN, in einem optionalen
// Feld zu „nicht vorhanden“.
namespace NECKern {

struct Komplex {
    double re = 0;
    double im = 0;

    double betrag() const;
    double phaseGrad() const; // −180…180
    bool operator==(const Komplex&) const = default;
};

struct Quelle {
    std::int64_t tag = 0;
    std::int64_t segment = 0;
    Komplex spannung;
    Komplex strom;
    Komplex impedanz;

    bool operator==(const Quelle&) const = default;
};

using Punkt3 = std::array<double, 3>;

struct Segment {
    std::int64_t nummer = 0;
    std::int64_t tag = 0;
    double x = 0, y = 0, z = 0; // Mitte
    double laenge = 0;
    double alpha = 0, beta = 0; // Richtungswinkel in Grad
    double radius = 0;
    Komplex strom;
    std::optional<std::int64_t> vorher;  // Segment am ersten Ende
    std::optional<std::int64_t> nachher; // Segment am zweiten Ende

    // Anfang und Ende: Mitte ∓ laenge/2 · (cos α cos β, cos α sin β, sin α).
    std::pair<Punkt3, Punkt3> enden() const;
    bool operator==(const Segment&) const = default;
};

struct Richtung {
    double theta = 0; // vom Zenit aus
    double phi = 0;
    double vertikal = 0;
    double horizontal = 0;
    double gesamt = 0;

    bool operator==(const Richtung&) const = default;
};

struct Nahfeldpunkt {
    double x = 0, y = 0, z = 0;
    std::vector<double> betrag; // x-, y-, z-Komponente
    std::vector<double> phase;

    double gesamt() const;   // Spitzenwert des Gesamtfelds
    double effektiv() const; // gesamt / √2
    bool operator==(const Nahfeldpunkt&) const = default;
};

struct FrequenzErgebnis {
    double mhz = 0;
    std::optional<Komplex> impedanz;
    std::vector<Quelle> quellen;
    std::vector<Segment> segmente;
    bool stroemeGeliefert = false;
    std::vector<Richtung> diagramm;
    std::optional<double> leistungEingang;
    std::optional<double> leistungAbgestrahlt;
    std::optional<double> wirkungsgrad; // Prozent
    std::vector<Nahfeldpunkt> nahfeldE;
    std::vector<Nahfeldpunkt> nahfeldH;
    std::optional<std::int64_t> speiseSegmentGeometrie;
    bool mitBoden = false;

    std::optional<Quelle> speisung() const;
    std::optional<std::int64_t> speiseSegment() const;
    // Stehwellenverhältnis gegen z0; +∞ bei vollständiger Reflexion.
    std::optional<double> swr(double z0) const;
    // Richtung grössten Gewinns; mit Boden nur im oberen Halbraum.
    std::optional<Richtung> maxGewinn() const;
    // Vor-Rück-Verhältnis in dB gegenüber dem Azimut nächst der Gegenrichtung.
    std::optional<double> vorRueck() const;

    bool operator==(const FrequenzErgebnis&) const = default;
};

struct NECErgebnis {
    std::vector<FrequenzErgebnis> frequenzen;
    std::vector<std::string> warnungen;
    std::string kern;
    double dauer = 0; // Sekunden

    bool operator==(const NECErgebnis&) const = default;
};

void to_json(nlohmann::ordered_json& j, const Komplex& k);
void from_json(const nlohmann::ordered_json& j, Komplex& k);
void to_json(nlohmann::ordered_json& j, const Quelle& q);
void from_json(const nlohmann::ordered_json& j, Quelle& q);
void to_json(nlohmann::ordered_json& j, const Segment& s);
void from_json(const nlohmann::ordered_json& j, Segment& s);
void to_json(nlohmann::ordered_json& j, const Richtung& r);
void from_json(const nlohmann::ordered_json& j, Richtung& r);
void to_json(nlohmann::ordered_json& j, const Nahfeldpunkt& p);
void from_json(const nlohmann::ordered_json& j, Nahfeldpunkt& p);
void to_json(nlohmann::ordered_json& j, const FrequenzErgebnis& f);
void from_json(const nlohmann::ordered_json& j, FrequenzErgebnis& f);
void to_json(nlohmann::ordered_json& j, const NECErgebnis& e);
void from_json(const nlohmann::ordered_json& j, NECErgebnis& e);

} // namespace NECKern
