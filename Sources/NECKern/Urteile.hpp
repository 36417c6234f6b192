#pragma once

#include "NECKern/Ergebnis.hpp"

#include <optional>
#include <string>

// Aus Ergebnissen abgeleitete Urteile mit ihren Worten, damit Fenster und
// Befehlszeile dasselbe sagen.
namespace NECKern::Urteile {

enum class Farbe { gruen, gelb, orange };

// Die Vergleichswerte von nec2c: Speiseimpedanz und grösster Gewinn (dBi).
struct Gegenprobe {
    std::optional<Komplex> z;
    std::optional<double> g;
    bool operator==(const Gegenprobe&) const = default;
};

// Aus dem nec2c-Lauf an der gezeigten Frequenz (Index auf die letzte begrenzt);
// nichts, wenn nec2c keine Frequenz geliefert hat.
std::optional<Gegenprobe> gegenprobeAus(const NECErgebnis& nec2c, std::size_t frequenzIndex);

enum class Abweichung { keine, merklich, stark };

struct GegenprobeUrteil {
    std::optional<std::string> nec2c; // „nec2c: R ± jX Ω“, nur wenn nec2c eine Impedanz hat
    std::string abweichung;           // „Abweichung: Wirkwiderstand … %, Gewinn … dB“
    std::string urteil;
    Abweichung stufe = Abweichung::keine;
};

// Vergleich des gezeigten Ergebnisses mit nec2c. Grenzen streng: 15 % bzw. 1 dB
// sind noch nicht stark, 5 % bzw. 0,3 dB noch nicht merklich.
GegenprobeUrteil gegenprobe(const std::optional<FrequenzErgebnis>& aktuell, const Gegenprobe& nec2c);

struct GueteUrteil {
    std::string wert; // „%.3f (%+.2f dB)“
    std::string wort; // „gut“, „brauchbar“ oder „Modell prüfen“
    Farbe farbe = Farbe::orange;
};

// Mittlerer Gewinn als Verhältnis (1 = verlustlos und richtig).
GueteUrteil guete(double mittlererGewinn);
// Wort und Farbe nach der Abweichung in dB; die Grenzen gehören zur besseren Klasse.
GueteUrteil gueteKlasse(double abweichungDb);

struct SwrAnzeige {
    std::string titel; // „SWR (50 Ω)“
    std::string wert;  // „%.2f“, „–“ ohne Impedanz, „∞“ bei vollständiger Reflexion
    Farbe farbe = Farbe::orange;
};

SwrAnzeige swr(const FrequenzErgebnis& aktuell, double z0);
// Grün unter 1,5, gelb bis unter 2,0, sonst und ohne SWR orange.
Farbe swrFarbe(std::optional<double> swr);

} // namespace NECKern::Urteile
