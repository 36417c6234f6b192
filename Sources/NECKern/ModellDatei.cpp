// Deckdatei: nachsichtiges Lesen und kanonisches Schreiben.
#include "NECKern/Modell.hpp"
#include "NECKern/Unicode.hpp"

#include <algorithm>

namespace NECKern {

namespace {

bool istLeer(char c) {
    return c == ' ' || c == '\t';
}

std::string_view trimmen(std::string_view s) {
    while (!s.empty() && istLeer(s.front()))
        s.remove_prefix(1);
    while (!s.empty() && istLeer(s.back()))
        s.remove_suffix(1);
    return s;
}

// Länge des Zeilenumbruchs an pos in Bytes, 0 wenn keiner beginnt. Erkannt werden
// LF, VT, FF, CR, NEL, LS und PS.
std::size_t umbruchBei(std::string_view s, std::size_t pos) {
    auto b = static_cast<unsigned char>(s[pos]);
    if (b >= 0x0A && b <= 0x0D) return 1;
    if (b == 0xC2 && pos + 1 < s.size() && static_cast<unsigned char>(s[pos + 1]) == 0x85) return 2;
    if (b == 0xE2 && pos + 2 < s.size() && static_cast<unsigned char>(s[pos + 1]) == 0x80) {
        auto c = static_cast<unsigned char>(s[pos + 2]);
        if (c == 0xA8 || c == 0xA9) return 3;
    }
    return 0;
}

template <typename F> void zeilenDurchlaufen(std::string_view text, F&& f) {
    std::size_t anfang = 0;
    for (std::size_t pos = 0; pos < text.size();) {
        auto n = umbruchBei(text, pos);
        if (n == 0) {
            ++pos;
            continue;
        }
        f(text.substr(anfang, pos - anfang));
        pos += n;
        anfang = pos;
    }
    if (anfang < text.size()) f(text.substr(anfang));
}

// Die ersten zwei Zeichen einer Zeile; leer, wenn sie kürzer ist.
struct Kopf {
    std::string_view erstes, zweites;
    std::size_t bytes = 0;
};

bool ascii(char c) {
    return static_cast<unsigned char>(c) < 0x80;
}

Kopf kopfLesen(std::string_view zeile) {
    if (zeile.size() >= 2 && ascii(zeile[0]) && ascii(zeile[1]) && (zeile.size() == 2 || ascii(zeile[2])))
        return {zeile.substr(0, 1), zeile.substr(1, 1), 2};
    auto zeichen = Unicode::zeichen(zeile);
    if (zeichen.size() < 2) return {};
    std::size_t a = zeichen[0].size();
    std::size_t b = zeichen[1].size();
    return {zeile.substr(0, a), zeile.substr(a, b), a + b};
}

std::string_view vorApostroph(std::string_view s) {
    return s.substr(0, s.find('\''));
}

template <typename Trenner> std::vector<std::string> teilen(std::string_view s, Trenner istTrenner) {
    std::vector<std::string> teile;
    std::size_t anfang = 0;
    for (std::size_t i = 0; i <= s.size(); ++i) {
        if (i < s.size() && !istTrenner(s[i])) continue;
        if (i > anfang) teile.emplace_back(s.substr(anfang, i - anfang));
        anfang = i + 1;
    }
    return teile;
}

void symboleLesen(std::string_view rest, std::vector<Variable>& variablen) {
    for (const auto& stueck : teilen(vorApostroph(rest), [](char c) { return c == ','; })) {
        auto gleich = stueck.find('=');
        if (gleich == std::string::npos) continue;
        auto name = trimmen(std::string_view(stueck).substr(0, gleich));
        auto ausdruck = trimmen(std::string_view(stueck).substr(gleich + 1));
        if (name.empty() || ausdruck.empty()) continue;
        variablen.emplace_back(std::string(name), std::string(ausdruck));
    }
}

Karte karteLesen(std::string typ, std::string_view rest) {
    auto felder = teilen(vorApostroph(rest), [](char c) { return c == ' ' || c == ',' || c == '\t'; });
    auto anzahlGanz = std::min<std::size_t>(static_cast<std::size_t>(Karte::felder(typ).ganz), felder.size());
    std::vector<std::string> ganz(
        std::make_move_iterator(felder.begin()),
        std::make_move_iterator(felder.begin() + static_cast<std::ptrdiff_t>(anzahlGanz)));
    std::vector<std::string> reell(
        std::make_move_iterator(felder.begin() + static_cast<std::ptrdiff_t>(anzahlGanz)),
        std::make_move_iterator(felder.end()));
    return Karte(std::move(typ), std::move(ganz), std::move(reell));
}

void zeileLesen(std::string_view roh, Modell& m) {
    auto zeile = trimmen(roh);
    auto kopf = kopfLesen(zeile);
    if (kopf.bytes == 0) return;
    auto typ = Unicode::gross(zeile.substr(0, kopf.bytes));
    auto rest = trimmen(zeile.substr(kopf.bytes));
    if (typ == "CM") {
        m.kommentar.emplace_back(rest);
        return;
    }
    if (typ == "CE") return;
    if (typ == "SY") {
        symboleLesen(rest, m.variablen);
        return;
    }
    if (!Unicode::istBuchstabe(kopf.erstes) || !Unicode::istBuchstabe(kopf.zweites)) return;
    // Ein Kopf, der in Grossschrift länger wird (ß → SS), wäre nach dem Schreiben ein anderer.
    if (typ.size() != 2 && Unicode::laenge(typ) != 2) return;
    m.karten.push_back(karteLesen(std::move(typ), rest));
}

void kartenzeileSchreiben(std::string& aus, const Karte& k) {
    aus += k.typ;
    auto felder = Karte::felder(k.typ);
    auto feld = [&aus](const std::vector<std::string>& werte, int i) {
        aus.push_back(' ');
        auto idx = static_cast<std::size_t>(i);
        if (idx < werte.size() && !werte[idx].empty())
            aus += werte[idx];
        else
            aus.push_back('0');
    };
    for (int i = 0; i < felder.ganz; ++i)
        feld(k.ganz, i);
    for (int i = 0; i < felder.reell; ++i)
        feld(k.reell, i);
    aus.push_back('\n');
}

} // namespace

Modell Modell::lesen(std::string_view eingabe, std::string_view name) {
    auto text = Unicode::reparieren(eingabe);
    Modell m;
    zeilenDurchlaufen(text, [&m](std::string_view zeile) { zeileLesen(zeile, m); });
    m.name = (!m.kommentar.empty() && !m.kommentar.front().empty()) ? m.kommentar.front()
                                                                    : Unicode::reparieren(name);
    return m;
}

std::string Modell::schreiben() const {
    std::string aus;
    aus.reserve(64 * (karten.size() + variablen.size() + kommentar.size() + 2));
    auto kommentare = kommentar.empty() ? std::vector<std::string>{name} : kommentar;
    for (const auto& k : kommentare)
        for (const auto& zeile : kommentarZeilen(k, 70)) {
            aus += zeile;
            aus.push_back('\n');
        }
    aus += "CE\n";
    for (const auto& v : variablen) {
        aus += "SY ";
        aus += v.name;
        aus.push_back('=');
        aus += v.ausdruck;
        aus.push_back('\n');
    }
    for (const auto& k : karten) {
        if (k.typ == "CM" || k.typ == "CE") continue;
        kartenzeileSchreiben(aus, k);
    }
    return aus;
}

std::vector<std::string> Modell::kommentarZeilen(std::string_view text, int breite) {
    const auto b = static_cast<std::size_t>(std::max(breite, 1));
    std::vector<std::string> zeilen;
    std::string zeile;
    std::size_t zeilenLaenge = 0;
    // Tabs am Rand einer Zeile gingen beim Wiederlesen verloren; darum fallen sie gleich weg.
    auto ausgeben = [&] {
        zeilen.push_back("CM " + std::string(trimmen(zeile)));
        zeile.clear();
        zeilenLaenge = 0;
    };
    for (const auto& wort : teilen(text, [](char c) { return c == ' '; })) {
        auto wortLaenge = Unicode::laenge(wort);
        if (zeilenLaenge > 0 && zeilenLaenge + 1 + wortLaenge > b) ausgeben();
        if (wortLaenge > b) {
            auto zeichen = Unicode::zeichen(wort);
            std::size_t i = 0;
            for (; zeichen.size() - i > b; i += b) {
                for (std::size_t k = i; k < i + b; ++k)
                    zeile += zeichen[k];
                ausgeben();
            }
            for (; i < zeichen.size(); ++i)
                zeile += zeichen[i];
            zeilenLaenge = Unicode::laenge(zeile);
            continue;
        }
        if (zeilenLaenge > 0) {
            zeile.push_back(' ');
            ++zeilenLaenge;
        }
        zeile += wort;
        zeilenLaenge += wortLaenge;
    }
    if (!zeile.empty() || zeilen.empty()) ausgeben();
    return zeilen;
}

} // namespace NECKern
