#pragma once

#include "NECKern/Ergebnis.hpp"
#include "NECKern/Rechenkerne/KernFehler.hpp"

#include <memory>
#include <stop_token>
#include <string>
#include <string_view>

namespace NECKern {

// Ein Rechenkern nimmt das Zahlendeck und liefert ein NECErgebnis. Kerne sind
// unveränderlich (als std::shared_ptr<const Rechenkern> gehalten); rechnen()
// blockiert, wirft KernFehler und darf aus vielen Threads zugleich gerufen werden.
// Ein ausgelöstes Stoppzeichen hält die laufenden Programme an; der Lauf endet
// dann mit KernFehler(Prozess::abgebrochen).
class Rechenkern {
  public:
    virtual ~Rechenkern() = default;

    virtual std::string kennung() const = 0;      // kurz und beständig, für die Wahl des Nutzers
    virtual std::string name() const = 0;         // Anzeigename, auch NECErgebnis::kern
    virtual std::string beschreibung() const = 0; // eine Zeile für die Kernseite
    virtual bool verfuegbar() const = 0; // Programm vorhanden und ausführbar, jedes Mal neu geprüft
    virtual NECErgebnis rechnen(std::string_view deck, std::stop_token stopp) const = 0;
    NECErgebnis rechnen(std::string_view deck) const { return rechnen(deck, {}); }
};

using KernZeiger = std::shared_ptr<const Rechenkern>;

} // namespace NECKern
