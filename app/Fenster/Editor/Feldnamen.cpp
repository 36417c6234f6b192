#include "Fenster/Editor/Feldnamen.hpp"

#include "NECKern/Karte.hpp"

#include <fmt/format.h>

#include <map>
#include <vector>

namespace Feldnamen {

namespace {

struct Namen {
    std::vector<Name> ganz;
    std::vector<Name> reell;
};

const Name tag{"Tag", "Tag (Drahtnummer)"};
const Name segmente{"Segm.", "Anzahl der Segmente"};
const Name tagZuwachs{"Tag +", "Zuwachs der Tags je Kopie"};

std::vector<Name> nahfeld() {
    return {{"X", "X-Anfang (m)"},      {"Y", "Y-Anfang (m)"},      {"Z", "Z-Anfang (m)"},
            {"dX", "Schritt in X (m)"}, {"dY", "Schritt in Y (m)"}, {"dZ", "Schritt in Z (m)"}};
}

std::vector<Name> nahfeldGanz() {
    return {{"Art", "Koordinaten: 0 rechtwinklig, 1 Kugel"},
            {"NX", "Punkte in X"},
            {"NY", "Punkte in Y"},
            {"NZ", "Punkte in Z"}};
}

std::vector<Name> ausgabeGanz() {
    return {{"Art", "Art der Ausgabe"}, tag, {"Von", "Erstes Segment"}, {"Bis", "Letztes Segment"}};
}

std::vector<Name> zweiEnden() {
    return {{"Tag 1", "Tag am Ende 1"},
            {"Segm. 1", "Segment am Ende 1"},
            {"Tag 2", "Tag am Ende 2"},
            {"Segm. 2", "Segment am Ende 2"}};
}

const std::map<std::string, Namen, std::less<>>& tabelle() {
    static const std::map<std::string, Namen, std::less<>> namen{
        {"GW",
         {{tag, segmente},
          {{"X1", "X-Anfang (m)"},
           {"Y1", "Y-Anfang (m)"},
           {"Z1", "Z-Anfang (m)"},
           {"X2", "X-Ende (m)"},
           {"Y2", "Y-Ende (m)"},
           {"Z2", "Z-Ende (m)"},
           {"Radius", "Drahtradius (m)"}}}},
        {"GA",
         {{tag, segmente},
          {{"Bogen-r", "Bogenradius (m)"},
           {"Winkel 1", "Anfangswinkel (Grad)"},
           {"Winkel 2", "Endwinkel (Grad)"},
           {"Radius", "Drahtradius (m)"}}}},
        {"GH",
         {{tag, segmente},
          {{"Steigung", "Abstand der Windungen (m)"},
           {"Länge", "Länge der Wendel (m)"},
           {"rX 1", "Wendelradius in X am Anfang (m)"},
           {"rY 1", "Wendelradius in Y am Anfang (m)"},
           {"rX 2", "Wendelradius in X am Ende (m)"},
           {"rY 2", "Wendelradius in Y am Ende (m)"},
           {"Radius", "Drahtradius (m)"}}}},
        {"GS", {{{"I1", "nicht benutzt"}, {"I2", "nicht benutzt"}}, {{"Faktor", "Massstab aller Längen"}}}},
        {"GM",
         {{tagZuwachs, {"Kopien", "Anzahl der Kopien (0 = nur verschieben)"}},
          {{"Dreh X", "Drehung um X (Grad)"},
           {"Dreh Y", "Drehung um Y (Grad)"},
           {"Dreh Z", "Drehung um Z (Grad)"},
           {"Ver. X", "Verschiebung in X (m)"},
           {"Ver. Y", "Verschiebung in Y (m)"},
           {"Ver. Z", "Verschiebung in Z (m)"},
           {"Ab Tag", "Erster Tag, der bewegt wird (0 = alle)"}}}},
        {"GR", {{tagZuwachs, {"Anzahl", "Anzahl der Kopien im Kreis"}}, {}}},
        {"GX", {{tagZuwachs, {"Ebenen", "Spiegelebenen als XYZ, etwa 110"}}, {}}},
        {"GE", {{{"Boden", "Boden: 0 keiner, 1 Drähte am Boden verbunden, -1 nicht verbunden"}}, {}}},
        {"GN",
         {{{"Art", "Boden: -1 freier Raum, 0 endlich, 1 ideal, 2 Sommerfeld"},
           {"Radiale", "Anzahl der Radiale"},
           {"I3", "nicht benutzt"},
           {"I4", "nicht benutzt"}},
          {{"εr", "Relative Dielektrizitätszahl"},
           {"σ", "Leitfähigkeit (S/m)"},
           {"F3", "εr des zweiten Mediums oder Radius des Radialnetzes (m)"},
           {"F4", "σ des zweiten Mediums oder Radius der Radialdrähte (m)"},
           {"Abstand", "Abstand zum zweiten Medium (m)"},
           {"Höhe", "Höhe des zweiten Mediums (m)"}}}},
        {"EX",
         {{{"Art", "Speisung: 0 Spannung, 1–4 ebene Welle, 5 Spannung mit Strom"},
           tag,
           {"Segment", "Gespeistes Segment"},
           {"Optionen", "Ausgabeoptionen"}},
          {{"Re U", "Realteil der Spannung (V)"},
           {"Im U", "Imaginärteil der Spannung (V)"},
           {"F3", "Bezugsimpedanz oder Einfallswinkel"},
           {"F4", "je nach Art"},
           {"F5", "je nach Art"},
           {"F6", "je nach Art"}}}},
        {"LD",
         {{{"Art", "Last: 0 RLC in Reihe, 1 parallel, 4 R + jX, 5 Leitfähigkeit"},
           tag,
           {"Von", "Erstes Segment"},
           {"Bis", "Letztes Segment"}},
          {{"R / σ", "Widerstand (Ω) oder Leitfähigkeit (S/m)"},
           {"L / X", "Induktivität (H) oder Blindwiderstand (Ω)"},
           {"C", "Kapazität (F)"}}}},
        {"TL",
         {zweiEnden(),
          {{"Z0", "Wellenwiderstand (Ω)"},
           {"Länge", "Länge der Leitung (m)"},
           {"Re Y1", "Querleitwert Ende 1, Realteil (S)"},
           {"Im Y1", "Querleitwert Ende 1, Imaginärteil (S)"},
           {"Re Y2", "Querleitwert Ende 2, Realteil (S)"},
           {"Im Y2", "Querleitwert Ende 2, Imaginärteil (S)"}}}},
        {"NT",
         {zweiEnden(),
          {{"Re Y11", "Y11, Realteil (S)"},
           {"Im Y11", "Y11, Imaginärteil (S)"},
           {"Re Y12", "Y12, Realteil (S)"},
           {"Im Y12", "Y12, Imaginärteil (S)"},
           {"Re Y22", "Y22, Realteil (S)"},
           {"Im Y22", "Y22, Imaginärteil (S)"}}}},
        {"FR",
         {{{"Art", "Schritte: 0 linear, 1 logarithmisch"},
           {"Anzahl", "Anzahl der Frequenzen"},
           {"I3", "nicht benutzt"},
           {"I4", "nicht benutzt"}},
          {{"Start", "Startfrequenz (MHz)"}, {"Schritt", "Schrittweite (MHz oder Faktor)"}}}},
        {"RP",
         {{{"Modus", "0 normal, 1 Bodenwelle, …"},
           {"Nθ", "Anzahl der θ-Werte"},
           {"Nφ", "Anzahl der φ-Werte"},
           {"XNDA", "Ausgabeoptionen"}},
          {{"θ", "Erstes θ (Grad, vom Zenit)"},
           {"φ", "Erstes φ (Grad)"},
           {"dθ", "Schritt in θ (Grad)"},
           {"dφ", "Schritt in φ (Grad)"},
           {"Abstand", "Entfernung für die Feldstärke (m)"},
           {"Norm", "Normierungsgewinn (dB)"}}}},
        {"EK", {{{"Ein/Aus", "0 erweiterter Kern ein, -1 aus"}}, {}}},
        {"KH", {{}, {{"Abstand", "Interaktionsabstand (λ)"}}}},
        {"XQ", {{{"Art", "0 nur rechnen, 1–3 mit Diagramm"}}, {}}},
        {"NE", {nahfeldGanz(), nahfeld()}},
        {"NH", {nahfeldGanz(), nahfeld()}},
        {"PT", {ausgabeGanz(), {}}},
        {"PQ", {ausgabeGanz(), {}}},
        {"CP", {zweiEnden(), {}}},
        {"SP",
         {{{"I1", "nicht benutzt"}, {"Form", "Form des Flächenstücks"}},
          {{"X1", "X1 (m)"},
           {"Y1", "Y1 (m)"},
           {"Z1", "Z1 (m)"},
           {"X2 / Elev.", "X2 (m) oder Elevation (Grad)"},
           {"Y2 / Azim.", "Y2 (m) oder Azimut (Grad)"},
           {"Z2 / Fläche", "Z2 (m) oder Fläche (m²)"}}}},
        {"SM",
         {{{"NX", "Teilung in X"}, {"NY", "Teilung in Y"}},
          {{"X1", "X1 (m)"},
           {"Y1", "Y1 (m)"},
           {"Z1", "Z1 (m)"},
           {"X2", "X2 (m)"},
           {"Y2", "Y2 (m)"},
           {"Z2", "Z2 (m)"}}}},
        {"SC",
         {{{"I1", "nicht benutzt"}, {"Form", "Form des Flächenstücks"}},
          {{"X3", "X3 (m)"},
           {"Y3", "Y3 (m)"},
           {"Z3", "Z3 (m)"},
           {"X4", "X4 (m)"},
           {"Y4", "Y4 (m)"},
           {"Z4", "Z4 (m)"}}}},
    };
    return namen;
}

Name allgemein(char art, int index) {
    auto kurz = fmt::format("{}{}", art, index + 1);
    return {kurz, kurz};
}

Name aus(const std::vector<Name>& liste, char art, int index) {
    if (index >= 0 && static_cast<std::size_t>(index) < liste.size())
        return liste[static_cast<std::size_t>(index)];
    return allgemein(art, index);
}

} // namespace

Name ganz(std::string_view typ, int index) {
    auto eintrag = tabelle().find(typ);
    return eintrag == tabelle().end() ? allgemein('I', index) : aus(eintrag->second.ganz, 'I', index);
}

Name reell(std::string_view typ, int index) {
    auto eintrag = tabelle().find(typ);
    return eintrag == tabelle().end() ? allgemein('F', index) : aus(eintrag->second.reell, 'F', index);
}

Name feld(std::string_view typ, int index) {
    const int anzahlGanz = NECKern::Karte::felder(typ).ganz;
    return index < anzahlGanz ? ganz(typ, index) : reell(typ, index - anzahlGanz);
}

} // namespace Feldnamen
