#include "NECKern/Geometrie.hpp"

#include "NECKern/GeometrieZeile.hpp"

#include <algorithm>
#include <fmt/format.h>
#include <map>

namespace NECKern::Geometrie {

using namespace intern;

namespace {

// Die Stücke, zu denen ein altes Tag wurde: neue Tags und die laufende Summe
// ihrer Segmentzahlen (für die Suche nach einem Segment).
struct Stuecke {
    std::vector<Ganz> neu;
    std::vector<Ganz> bis;

    Ganz anzahl(std::size_t i) const { return bis[i] - (i > 0 ? bis[i - 1] : 0); }
};
using Tagkarte = std::map<Ganz, Stuecke>;

struct Treffer {
    std::size_t stueck;
    Ganz segment;
};

// Segment s des alten Tags: über die Stücke laufen, bis eines weit genug reicht;
// jenseits der Summe das letzte Segment des letzten Stücks.
Treffer suchen(const Stuecke& st, Ganz s) {
    auto it = std::lower_bound(st.bis.begin(), st.bis.end(), s);
    if (it == st.bis.end()) return {st.neu.size() - 1, st.anzahl(st.neu.size() - 1)};
    auto i = static_cast<std::size_t>(it - st.bis.begin());
    auto davor = i > 0 ? st.bis[i - 1] : 0;
    return {i, std::max<Ganz>(s - davor, 1)};
}

std::pair<Ganz, Ganz> abbilden(const Tagkarte& karte, Ganz tag, Ganz segment) {
    if (tag == 0) return {tag, segment};
    auto it = karte.find(tag);
    if (it == karte.end()) return {tag, segment};
    auto t = suchen(it->second, segment);
    return {it->second.neu[t.stueck], t.segment};
}

Tagkarte tagkarte(const std::vector<Zeile>& deck) {
    Tagkarte karte;
    Ganz k = 0;
    for (const auto& z : deck) {
        if (z.typ() != "GW") continue;
        ++k;
        if (z.teile.size() < 2) continue;
        auto alt = alsGanz(z.teile[1]);
        if (!alt) continue;
        // Negative Segmentzahlen nimmt kein Kern an; als 0 gezählt bleibt die Suche monoton.
        auto segmente = z.teile.size() > 2 ? alsGanz(z.teile[2]).value_or(0) : 0;
        auto& st = karte[*alt];
        st.neu.push_back(k);
        st.bis.push_back(plus(st.bis.empty() ? 0 : st.bis.back(), std::max<Ganz>(segmente, 0)));
    }
    return karte;
}

std::string verbunden(const std::vector<std::string>& teile) {
    std::string aus;
    for (const auto& t : teile) {
        if (!aus.empty()) aus += ' ';
        aus += t;
    }
    return aus;
}

std::vector<std::string> alsText(const std::vector<std::string_view>& teile) {
    return {teile.begin(), teile.end()};
}

// Ersetzt das Paar (Tag, Segment) an den Stellen i, i + 1, wenn beide lesbar sind.
void paarAbbilden(const Tagkarte& karte, std::vector<std::string>& teile, std::size_t i) {
    if (teile.size() <= i + 1) return;
    auto tag = alsGanz(teile[i]);
    auto segment = alsGanz(teile[i + 1]);
    if (!tag || !segment) return;
    auto [neuTag, neuSegment] = abbilden(karte, *tag, *segment);
    teile[i] = fmt::format("{}", neuTag);
    teile[i + 1] = fmt::format("{}", neuSegment);
}

std::string exZeile(const Tagkarte& karte, const Zeile& z) {
    // Nur Spannungsquellen (Typ 0 und 5) tragen Tag und Segment; bei ebenen
    // Wellen stehen dort Winkelanzahlen.
    auto typ = z.teile.size() > 1 ? alsGanz(z.teile[1]) : std::nullopt;
    if (!typ || (*typ != 0 && *typ != 5)) return std::string(z.text);
    auto teile = alsText(z.teile);
    paarAbbilden(karte, teile, 2);
    return verbunden(teile);
}

std::string leitungZeile(const Tagkarte& karte, const Zeile& z) {
    auto teile = alsText(z.teile);
    paarAbbilden(karte, teile, 1);
    paarAbbilden(karte, teile, 3);
    return verbunden(teile);
}

// LD belastet die Segmente von bis eines Tags. Liegt der Bereich auf mehreren
// neuen Drähten, gibt es je Draht eine LD-Zeile; sonst träfe die Last nach dem
// Zerlegen eines Bogens nur ein einziges Segment.
std::vector<std::string> ldZeilen(const Tagkarte& karte, const Zeile& z) {
    std::vector<std::string> eine{std::string(z.text)};
    if (z.teile.size() < 5) return eine;
    auto typ = alsGanz(z.teile[1]);
    auto tag = alsGanz(z.teile[2]);
    auto von = alsGanz(z.teile[3]);
    auto bis = alsGanz(z.teile[4]);
    if (!typ || !tag || !von || !bis || *typ < 0 || *tag == 0) return eine;
    auto it = karte.find(*tag);
    if (it == karte.end()) return eine;
    const auto& st = it->second;

    // NEC: von = bis = 0 belastet das ganze Tag, bis = 0 allein heisst bis = von.
    auto erstes = *von, letztes = *bis;
    if (erstes == 0 && letztes == 0) {
        erstes = 1;
        letztes = st.bis.back();
    } else if (letztes == 0) {
        letztes = erstes;
    }
    auto a = suchen(st, erstes);
    auto b = suchen(st, letztes);

    auto teile = alsText(z.teile);
    auto zeile = [&](std::size_t stueck, Ganz s1, Ganz s2) {
        teile[2] = fmt::format("{}", st.neu[stueck]);
        teile[3] = fmt::format("{}", s1);
        teile[4] = fmt::format("{}", s2);
        return verbunden(teile);
    };
    if (b.stueck <= a.stueck)
        return {zeile(a.stueck, a.segment, b.stueck == a.stueck ? b.segment : a.segment)};

    std::vector<std::string> ergebnis;
    for (auto i = a.stueck; i <= b.stueck; ++i) {
        auto s1 = i == a.stueck ? a.segment : 1;
        auto s2 = i == b.stueck ? b.segment : st.anzahl(i);
        if (s2 >= s1) ergebnis.push_back(zeile(i, s1, s2));
    }
    return ergebnis.empty() ? eine : ergebnis;
}

} // namespace

std::string eindeutigeTags(std::string_view deck) {
    std::vector<Zeile> deckZeilen;
    for (auto text : zeilen(deck))
        deckZeilen.push_back({text, teile(text)});
    auto karte = tagkarte(deckZeilen);

    std::string aus;
    std::size_t zusatz = 0;
    Ganz k = 0;
    for (const auto& z : deckZeilen) {
        auto typ = z.typ();
        if (typ == "GW") {
            ++k;
            if (z.teile.size() < 2) {
                anfuegen(aus, z.text);
                continue;
            }
            auto teile = alsText(z.teile);
            teile[1] = fmt::format("{}", k);
            anfuegen(aus, verbunden(teile));
        } else if (typ == "EX") {
            anfuegen(aus, exZeile(karte, z));
        } else if (typ == "TL" || typ == "NT") {
            anfuegen(aus, leitungZeile(karte, z));
        } else if (typ == "LD") {
            auto neu = ldZeilen(karte, z);
            zusatz += neu.size() - 1;
            if (zusatz > maxDraehte) return std::string(deck);
            for (const auto& zeile : neu)
                anfuegen(aus, zeile);
        } else {
            anfuegen(aus, z.text);
        }
    }
    return aus;
}

} // namespace NECKern::Geometrie
