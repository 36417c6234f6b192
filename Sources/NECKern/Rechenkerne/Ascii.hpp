#pragma once

#include <string>
#include <string_view>

namespace NECKern {

// Macht ein Deck zu reinem ASCII, wie es die Löserprogramme verlangen: zuerst
// eine eigene Tabelle („λ“ → „lambda“, „Ω“ → „Ohm“, „ß“ → „ss“, Ä → A, „–“ → „-“);
// bleibt ein Zeichen übrig, schreibt ICU andere Schriften lateinisch um und
// entfernt Akzente. Was dann noch ausserhalb von ASCII liegt, fällt weg – nie
// ein Fragezeichen.
std::string ascii(std::string_view text);

} // namespace NECKern
