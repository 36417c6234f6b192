#pragma once

#include "NECKern/Rechenkerne/Rechenkern.hpp"

#include <functional>
#include <map>
#include <nlohmann/json_fwd.hpp>
#include <optional>
#include <set>
#include <stop_token>
#include <string>
#include <string_view>
#include <vector>

// Prüft einen Rechenkern an kleinen Fällen mit bekannter Lösung. Alle Decks
// rechnen bei 299,792458 MHz: λ = 1 m, Längen in Metern sind Längen in λ.
namespace NECKern::Selbsttest {

// Eine Zeile der Tabelle, kenntlich an ihrer Prüfung.
struct Zeile {
    std::string pruefung;
    std::string soll;              // erwarteter Wert, mit Toleranz wo sie angezeigt wird
    std::string ist;               // gelieferter Wert oder eine Bemerkung, wenn es keinen gibt
    std::string quelle;            // woher der erwartete Wert stammt
    std::optional<bool> bestanden; // leer: nicht beurteilt

    bool operator==(const Zeile&) const = default;
};

void to_json(nlohmann::ordered_json& j, const Zeile& z);
void from_json(const nlohmann::ordered_json& j, Zeile& z);

// Je Kernkennung die Prüfungen, bei denen dieser Kern bekanntermassen abweicht.
const std::map<std::string, std::set<std::string>>& bekannteAbweichungen();
bool bekannteAbweichung(std::string_view kennung, std::string_view pruefung);

// Rechnet die Fälle nacheinander auf dem Kern; eine Zeile je Prüfung, in fester
// Reihenfolge. Ein gescheiterter Lauf wird zur nicht bestandenen Zeile. `jeZeile`
// erhält jede Zeile, sobald ihre Läufe gerechnet sind; nach einem Stoppwunsch
// beginnt kein Lauf mehr und die übrigen Zeilen tragen Prozess::abgebrochen.
std::vector<Zeile> laufen(const Rechenkern& kern, const std::function<void(const Zeile&)>& jeZeile = {},
                          std::stop_token stopp = {});

// Der Satz unter der Tabelle; nur ausdrücklich nicht bestandene Zeilen zählen.
std::string zusammenfassung(const std::vector<Zeile>& zeilen);

} // namespace NECKern::Selbsttest
