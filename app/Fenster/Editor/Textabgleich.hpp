#pragma once

#include "NECKern/Modell.hpp"

// Der Textmodus liest das Deck mit Modell::lesen. Was die Deckdatei nicht trägt,
// kommt aus dem bisherigen Modell: Name, z0, Kennungen, Kartentexte, die Marken und
// Grenzen des Optimierers. Karten, die im Deck gleich geschrieben werden, bleiben
// unverändert, damit ein unveränderter Text kein neues Modell ergibt.
namespace Textabgleich {

NECKern::Modell zusammenfuehren(const NECKern::Modell& alt, NECKern::Modell gelesen);

} // namespace Textabgleich
