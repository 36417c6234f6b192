#pragma once

#include "NECKern/Karte.hpp"
#include "NECKern/Modell.hpp"

#include <functional>
#include <map>
#include <string>
#include <utility>
#include <vector>

// Eingebaute Beispielantennen. Jede ist ein gewöhnliches Modell mit SY-Variablen,
// damit man Formeln und Optimierer gleich ausprobieren kann.
namespace NECKern::Beispiele {

struct Beispiel {
    std::string name;
    std::function<Modell()> modell; // baut bei jedem Aufruf ein frisches Modell (neue Kennungen)
};

// Alle Beispiele in Menüreihenfolge.
const std::vector<Beispiel>& alle();

// Hinweistexte je Beispiel; sie stehen nach dem Namen im Kommentar.
const std::map<std::string, std::vector<std::string>>& hinweise();

// Gemeinsame Karten; jeder Aufruf liefert eine Karte mit neuer Kennung.
Karte rp();                             // RP 0 19 73 1000 0 0 5 5: obere Halbkugel in 5°-Schritten
Karte boden();                          // GN 2 0 0 0 13 0.005: realer Boden
Karte ex(int tag, std::string segment); // Spannungsquelle 1 V

using Variablen = std::vector<std::pair<std::string, std::string>>;

// Gemeinsamer Konstruktor: Kommentar = Name und Hinweise, Variablen in Reihenfolge.
Modell m(const std::string& name, const Variablen& variablen, std::vector<Karte> karten, double z0 = 50.0);

// Senkrechter λ/2-Dipol über realem Boden; f in MHz und rad als Formeltext.
Modell vertikalDipol(const std::string& name, const std::string& f, const std::string& rad);

// Masse einer Fünf-Element-Yagi (Formeltexte, Meter): Elementlängen, Abstände
// Reflektor–Strahler (a1), Strahler–Direktor 1 (a2) usw., Elementradius.
struct Yagi5Masse {
    std::string f;
    std::string refl, strahler, dir1, dir2, dir3;
    std::string a1, a2, a3, a4;
    std::string rad;
};
Modell yagi5(const std::string& name, const Yagi5Masse& masse);

// Platine 25 × 50 mm als Drahtgitter in der x-z-Ebene, Oberkante bei z = 50 mm;
// Tags ab ersterTag.
std::vector<Karte> platine(int ersterTag);

} // namespace NECKern::Beispiele
