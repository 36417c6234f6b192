#pragma once

#include <cstddef>
#include <functional>

namespace NECKern {

// Führt aufgabe(0) … aufgabe(anzahl − 1) auf höchstens `gleichzeitig` Threads aus
// (der rufende Thread arbeitet mit). Der erste Fehler wird behalten; danach
// beginnt keine weitere Aufgabe, laufende werden abgewartet, dann wird er geworfen.
// Eine laufende Aufgabe wird nie unterbrochen: ein Rechenlauf endet von selbst.
void aufgabengruppe(std::size_t anzahl, std::size_t gleichzeitig,
                    const std::function<void(std::size_t)>& aufgabe);

} // namespace NECKern
