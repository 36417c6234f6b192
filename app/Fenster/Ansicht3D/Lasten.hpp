#pragma once

#include "NECKern/Ergebnis.hpp"

#include <string_view>
#include <vector>

namespace Raumbild {

// Welche Segmente des Ergebnisses eine Last aus den LD-Karten des Rechendecks tragen
// (je Segment in derselben Reihenfolge). Tag 0 zählt Segmentnummern absolut; von = bis = 0
// belastet das ganze Tag bzw. alle Segmente, bis = 0 allein heisst bis = von; ein negativer
// Typ hebt alle früheren Lasten auf. Die Leitfähigkeit (Typ 5) ist Drahtmaterial und kein
// Bauteil: sie wird nicht markiert.
std::vector<bool> lasten(std::string_view deck, const std::vector<NECKern::Segment>& segmente);

} // namespace Raumbild
