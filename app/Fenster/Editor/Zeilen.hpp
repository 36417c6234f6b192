#pragma once

#include "Fenster/Editor/Tabelle.hpp"

#include "Modell/AppModell.hpp"

#include <algorithm>
#include <cstddef>
#include <vector>

// Zeilenoperationen der Editortabellen auf einer Kopie der Modellzeilen.
namespace Zeilen {

inline std::size_t stelle(int i) {
    return static_cast<std::size_t>(i);
}

// Entfernt die gewählten Zeilen (aufsteigend, ohne Doppel).
template <typename T> void loeschen(std::vector<T>& liste, const std::vector<int>& zeilen) {
    for (auto i = zeilen.rbegin(); i != zeilen.rend(); ++i)
        if (*i >= 0 && stelle(*i) < liste.size()) liste.erase(liste.begin() + *i);
}

// Schiebt die gewählten Zeilen um eine Stelle (richtung −1 hoch, +1 runter); ein
// Block am Rand bleibt stehen. Gibt die neuen Plätze der Zeilen zurück.
template <typename T>
std::vector<int> verschieben(std::vector<T>& liste, const std::vector<int>& zeilen, int richtung) {
    std::vector<int> neu = zeilen;
    const int anzahl = static_cast<int>(liste.size());
    const bool hoch = richtung < 0;
    const bool amRand = zeilen.empty() || (hoch ? zeilen.front() <= 0 : zeilen.back() >= anzahl - 1);
    if (amRand) return neu;
    auto schieben = [&](std::size_t k) {
        const int i = zeilen[k];
        std::swap(liste[stelle(i)], liste[stelle(i + richtung)]);
        neu[k] = i + richtung;
    };
    if (hoch)
        for (std::size_t k = 0; k < zeilen.size(); ++k)
            schieben(k);
    else
        for (std::size_t k = zeilen.size(); k-- > 0;)
            schieben(k);
    return neu;
}

// Löscht die gewählten Zeilen der Tabelle aus einer Liste des Modells; danach ist
// die Zeile an ihrer Stelle gewählt.
template <typename T>
void loeschen(AppModell& app, Tabelle& tabelle, std::vector<T> NECKern::Modell::*liste) {
    const auto zeilen = tabelle.gewaehlteZeilen();
    if (zeilen.empty()) return;
    auto m = app.modell();
    loeschen(m.*liste, zeilen);
    app.setModell(m);
    tabelle.zeilenWaehlen({std::min(zeilen.front(), static_cast<int>((m.*liste).size()) - 1)});
}

// Verschiebt die gewählten Zeilen; sie bleiben gewählt.
template <typename T>
void verschieben(AppModell& app, Tabelle& tabelle, std::vector<T> NECKern::Modell::*liste, int richtung) {
    auto m = app.modell();
    const auto neu = verschieben(m.*liste, tabelle.gewaehlteZeilen(), richtung);
    app.setModell(m);
    tabelle.zeilenWaehlen(neu);
}

} // namespace Zeilen
