#pragma once

#include <string>
#include <string_view>

namespace NECKern {

// Macht ein Deck zu reinem ASCII, wie es die Löserprogramme verlangen:
// „λ“ wird „lambda“, andere Schriften werden lateinisch umschrieben,
// diakritische Zeichen entfernt (Ä → A) und was dann noch ausserhalb von
// ASCII liegt, fällt weg – nie ein Fragezeichen.
std::string ascii(std::string_view text);

} // namespace NECKern
