#pragma once

#include "NECKern/Ergebnis.hpp"
#include "NECKern/Modell.hpp"

#include <nlohmann/json_fwd.hpp>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace NECKern {

// Schwere eines Befunds; die Zahlen sind die gespeicherte Form.
enum class Stufe : int {
    hinweis = 0, // Ergebnis brauchbar, etwas verdient Aufmerksamkeit
    warnung = 1, // Ergebnis womöglich ungenau
    fehler = 2,  // NEC-Regel verletzt, Ergebnis nicht vertrauenswürdig
};

// Stufe zu einer gespeicherten Zahl; ausserhalb 0…2 keine.
std::optional<Stufe> stufeAus(int roh);

// Ein Befund der Modellprüfung: Stufe und fertiger deutscher Satz.
struct Befund {
    Stufe stufe = Stufe::hinweis;
    std::string text;

    // Gleicher Text, gleicher Befund.
    const std::string& id() const { return text; }
    bool operator==(const Befund&) const = default;
};

void to_json(nlohmann::ordered_json& j, const Befund& b);
void from_json(const nlohmann::ordered_json& j, Befund& b);

// Prüft ein Modell gegen die NEC-Regeln. Keine dieser Funktionen wirft.
namespace Modellpruefung {

// Vor dem Rechnen: der erste Grund, warum das Modell nicht gerechnet werden kann.
// Zuletzt prüft sie den Umfang (umfangPruefen).
std::optional<std::string> vorpruefen(const Modell& modell);

// Grösse und Lage der Geometrie nach allen Kopien und Spiegelungen: zu viele Segmente
// für nec2c, Koordinaten oder Radien ausser Mass. Jeder Weg zu einem Kern ruft sie vorher.
std::optional<std::string> umfangPruefen(const Modell& modell);
// Rechenbar, aber nec2c braucht lange (ab einer halben Minute je Lauf).
std::optional<Befund> dauerBefund(const Modell& modell);

// Nach dem Rechnen, auf den Segmenten, die der Kern gemeldet hat.
std::vector<Befund> pruefen(std::span<const Segment> segmente, double mhz);
std::vector<Befund> bodenPruefen(std::span<const Segment> segmente, bool mitBoden);
std::vector<Befund> verbindungenPruefen(std::span<const Segment> segmente);

// Grösstes Längenverhältnis zweier sich berührender Segmente (1, wenn keine sich berühren).
double laengenSprung(std::span<const Segment> segmente);

// Überschrift plus die Worte des Kerns zu einem gescheiterten NEC-Lauf.
std::string necMeldung(std::string_view text);
// Die necMeldung zu einem Lauf, den der Kern abgelehnt hat: ohne jede Frequenz, oder
// ohne jede Impedanz und mit einer Fehlermeldung des Kerns. Sonst keine.
std::optional<std::string> laufAbgelehnt(const NECErgebnis& ergebnis);

// Vorlage der Karte, die der Editor für einen Kartentyp einfügt.
Karte neueKarte(std::string_view typ, const Modell& modell);

} // namespace Modellpruefung
} // namespace NECKern
