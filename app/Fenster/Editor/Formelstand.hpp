#pragma once

#include "NECKern/Variable.hpp"
#include "NECKern/Werte.hpp"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

// Was die Formeln eines Modells gerade ergeben: je Variable ihr Wert oder die
// Meldung des Auswerters. Anders als das Rechendeck hört es nach einer kaputten
// Formel nicht auf, damit jede Zeile ihren eigenen Stand zeigt.
struct Formelstand {
    struct Zeile {
        std::optional<double> wert;
        std::string meldung; // leer, wenn die Formel einen Wert hat
        bool operator==(const Zeile&) const = default;
    };

    NECKern::Werte werte; // klein geschriebene Namen der auswertbaren Variablen
    std::vector<Zeile> zeilen;

    static Formelstand aus(const std::vector<NECKern::Variable>& variablen);

    // Die Meldung des Auswerters zu einem Feldtext, nichts wenn er einen Wert hat.
    // Ein leeres Feld zählt wie im Deck als 0.
    std::optional<std::string> fehler(std::string_view text) const;

    bool operator==(const Formelstand&) const = default;
};
