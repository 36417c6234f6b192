#pragma once

#include "NECKern/Werte.hpp"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

// Prüft, was der Nutzer in eine Zelle des Editors schreibt, bevor es ins Modell
// geht. Jede Ablehnung ist ein deutscher Satz; angenommene Texte stehen so im
// Modell, dass die Deckdatei sie unverändert zurückliest.
namespace Zellpruefung {

// Ergebnis einer Prüfung: der Text fürs Modell oder der Satz, warum nicht.
struct Pruefung {
    std::string text;
    std::string meldung; // leer = angenommen
    bool angenommen() const { return meldung.empty(); }
};

// Kartenfeld: ohne Leerzeichen und Tabulatoren (das Deck trennt an ihnen), leer wird "0".
Pruefung kartenfeld(std::string_view eingabe);

// Formel einer Variablen: an den Enden beschnitten, nicht leer.
Pruefung formel(std::string_view eingabe);

// Variablenname: so, wie ihn der Auswerter als Variable liest, und noch nicht vergeben.
Pruefung name(std::string_view eingabe, const std::vector<std::string>& andereNamen);

// Grenze für den Optimierer: leer = keine, sonst eine Formel mit den Variablenwerten.
struct Grenze {
    std::optional<double> wert;
    std::string meldung;
};
Grenze grenze(std::string_view eingabe, const NECKern::Werte& werte);

// Zahl für die Anzeige: "%.6g".
std::string zahl(double x);

} // namespace Zellpruefung
