#include "Fenster/Editor/Textabgleich.hpp"

#include <algorithm>
#include <string_view>
#include <vector>

namespace Textabgleich {

namespace {

using NECKern::Karte;
using NECKern::Modell;

std::string_view feld(const std::vector<std::string>& felder, int i) {
    const auto stelle = static_cast<std::size_t>(i);
    return stelle < felder.size() && !felder[stelle].empty() ? std::string_view(felder[stelle]) : "0";
}

// Gleich, wenn der Deckschreiber beide Karten gleich schreibt.
bool gleichImDeck(const Karte& a, const Karte& b) {
    if (a.typ != b.typ) return false;
    const auto f = Karte::felder(a.typ);
    for (int i = 0; i < f.ganz; ++i)
        if (feld(a.ganz, i) != feld(b.ganz, i)) return false;
    for (int i = 0; i < f.reell; ++i)
        if (feld(a.reell, i) != feld(b.reell, i)) return false;
    return true;
}

// Die Kommentarzeilen, wie der Schreiber sie umbricht und der Leser sie zurückgibt.
std::vector<std::string> geschriebeneKommentare(const Modell& m) {
    std::vector<std::string> zeilen;
    for (const auto& k : m.kommentar.empty() ? std::vector<std::string>{m.name} : m.kommentar)
        for (const auto& z : Modell::kommentarZeilen(k, 70))
            zeilen.push_back(z.substr(std::min<std::size_t>(3, z.size())));
    return zeilen;
}

void variablenAbgleichen(const Modell& alt, Modell& neu) {
    std::vector<bool> vergeben(alt.variablen.size(), false);
    for (auto& v : neu.variablen) {
        for (std::size_t i = 0; i < alt.variablen.size(); ++i) {
            const auto& a = alt.variablen[i];
            if (vergeben[i] || a.name != v.name) continue;
            vergeben[i] = true;
            const auto ausdruck = v.ausdruck;
            v = a;
            v.ausdruck = ausdruck;
            break;
        }
    }
}

void kartenAbgleichen(const Modell& alt, Modell& neu) {
    std::vector<const Karte*> vorher;
    for (const auto& k : alt.karten)
        if (k.typ != "CM" && k.typ != "CE") vorher.push_back(&k);
    auto& nachher = neu.karten;
    const std::size_t kleiner = std::min(vorher.size(), nachher.size());
    std::size_t anfang = 0;
    while (anfang < kleiner && gleichImDeck(*vorher[anfang], nachher[anfang])) {
        nachher[anfang] = *vorher[anfang];
        ++anfang;
    }
    std::size_t schluss = 0;
    while (schluss < kleiner - anfang &&
           gleichImDeck(*vorher[vorher.size() - 1 - schluss], nachher[nachher.size() - 1 - schluss])) {
        nachher[nachher.size() - 1 - schluss] = *vorher[vorher.size() - 1 - schluss];
        ++schluss;
    }
    // Dazwischen geänderte Karten: gleicher Platz und Typ behalten Kennung und Text.
    for (std::size_t i = anfang; i + schluss < nachher.size() && i + schluss < vorher.size(); ++i)
        if (vorher[i]->typ == nachher[i].typ) {
            nachher[i].id = vorher[i]->id;
            nachher[i].text = vorher[i]->text;
        }
}

} // namespace

Modell zusammenfuehren(const Modell& alt, Modell gelesen) {
    gelesen.name = alt.name;
    gelesen.z0 = alt.z0;
    if (gelesen.kommentar == geschriebeneKommentare(alt)) gelesen.kommentar = alt.kommentar;
    variablenAbgleichen(alt, gelesen);
    kartenAbgleichen(alt, gelesen);
    return gelesen;
}

} // namespace Textabgleich
