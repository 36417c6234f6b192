#pragma once

#include <string_view>

// Wie der Deckleser eine Zeile nimmt – für die Hervorhebung im Textmodus und den
// Hinweis auf Zeilen, die nicht ins Modell gehen.
namespace Deckzeile {

enum class Art {
    leer,      // nichts oder nur Leerraum
    kommentar, // CM oder CE
    symbol,    // SY mit lauter Zuweisungen name=formel
    karte,     // zwei Buchstaben
    ignoriert, // wird nicht gelesen, bleibt aber im Text
};

Art art(std::string_view zeile);

// Ohne Leerzeichen und Tabulatoren an den Enden, wie der Deckleser Zeilen und Felder nimmt.
std::string_view beschnitten(std::string_view s);

} // namespace Deckzeile
