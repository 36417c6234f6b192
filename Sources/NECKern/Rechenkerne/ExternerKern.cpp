#include "NECKern/Rechenkerne/ExternerKern.hpp"

#include "NECKern/Geometrie.hpp"
#include "NECKern/NEC2Ausgabe.hpp"
#include "NECKern/Rechenkerne/Ascii.hpp"
#include "NECKern/Rechenkerne/Datei.hpp"
#include "NECKern/Rechenkerne/Prozess.hpp"
#include "NECKern/Unicode.hpp"

#include <algorithm>
#include <chrono>
#include <fstream>
#include <iterator>
#include <optional>
#include <sys/stat.h>
#include <unistd.h>

namespace NECKern {

namespace {

constexpr double zeitlimit = 300.0;

std::string ersetzen(std::string text, std::string_view alt, std::string_view neu) {
    for (auto pos = text.find(alt); pos != std::string::npos; pos = text.find(alt, pos + neu.size()))
        text.replace(pos, alt.size(), neu);
    return text;
}

std::vector<std::string> argumenteFuer(const std::vector<std::string>& vorlage) {
    if (vorlage.empty()) return {"a.nec", "a.out"};
    std::vector<std::string> ergebnis;
    for (const auto& a : vorlage)
        ergebnis.push_back(ersetzen(ersetzen(a, "{ein}", "a.nec"), "{aus}", "a.out"));
    return ergebnis;
}

// Der Bericht als UTF-8; was kein gültiges UTF-8 ist, wird als ISO Latin 1
// gelesen (das gelingt mit jedem Byte). Ohne lesbare Datei: nichts.
std::optional<std::string> berichtLesen(const std::filesystem::path& pfad) {
    std::error_code fehler;
    if (!std::filesystem::is_regular_file(pfad, fehler)) return std::nullopt;
    std::ifstream datei(pfad, std::ios::binary);
    if (!datei) return std::nullopt;
    std::string bytes((std::istreambuf_iterator<char>(datei)), std::istreambuf_iterator<char>());
    if (datei.bad()) return std::nullopt;
    if (Unicode::istGueltig(bytes)) return bytes;
    std::string text;
    for (char c : bytes)
        Unicode::anhaengen(text, static_cast<unsigned char>(c));
    return text;
}

std::string_view ohneRand(std::string_view zeile) {
    constexpr std::string_view leerraum = " \t\r\n\v\f";
    auto anfang = zeile.find_first_not_of(leerraum);
    if (anfang == std::string_view::npos) return {};
    return zeile.substr(anfang, zeile.find_last_not_of(leerraum) - anfang + 1);
}

// Getrimmt und gross geschrieben beginnt die Zeile mit `kopf`. ASCII genügt:
// kein anderes Zeichen wird gross zu einem der Buchstaben der Kartenköpfe.
bool beginntMit(std::string_view zeile, std::string_view kopf) {
    auto z = ohneRand(zeile);
    if (z.size() < kopf.size()) return false;
    for (std::size_t i = 0; i < kopf.size(); ++i) {
        char c = z[i];
        if (c >= 'a' && c <= 'z') c = static_cast<char>(c - 'a' + 'A');
        if (c != kopf[i]) return false;
    }
    return true;
}

bool istFeldkarte(std::string_view zeile) {
    return beginntMit(zeile, "NE") || beginntMit(zeile, "NH") || beginntMit(zeile, "RP");
}

std::vector<std::string_view> zeilen(std::string_view text) {
    std::vector<std::string_view> ergebnis;
    for (;;) {
        auto ende = text.find('\n');
        ergebnis.push_back(text.substr(0, ende));
        if (ende == std::string_view::npos) return ergebnis;
        text.remove_prefix(ende + 1);
    }
}

template <typename T> void anhaengen(std::vector<T>& ziel, const std::vector<T>& quelle) {
    ziel.insert(ziel.end(), quelle.begin(), quelle.end());
}

// Vom weiteren Lauf zählen nur Dauer, Warnungen und die Felder; Impedanz,
// Quellen, Ströme und Leistung bleiben die des ersten Laufs.
void zusammenfuehren(NECErgebnis& basis, const NECErgebnis& weiterer) {
    basis.dauer += weiterer.dauer;
    anhaengen(basis.warnungen, weiterer.warnungen);
    auto n = std::min(basis.frequenzen.size(), weiterer.frequenzen.size());
    for (std::size_t i = 0; i < n; ++i) {
        anhaengen(basis.frequenzen[i].diagramm, weiterer.frequenzen[i].diagramm);
        anhaengen(basis.frequenzen[i].nahfeldE, weiterer.frequenzen[i].nahfeldE);
        anhaengen(basis.frequenzen[i].nahfeldH, weiterer.frequenzen[i].nahfeldH);
    }
}

} // namespace

ExternerKern::ExternerKern(std::string kennung, std::string name, std::string beschreibung,
                           std::filesystem::path programm, std::vector<std::string> argumente,
                           bool helixAufloesen, bool eindeutigeTags, bool feldkartenEinzeln)
    : kennung_(std::move(kennung)), name_(std::move(name)), beschreibung_(std::move(beschreibung)),
      programm_(std::move(programm)), argumente_(std::move(argumente)), helixAufloesen_(helixAufloesen),
      eindeutigeTags_(eindeutigeTags), feldkartenEinzeln_(feldkartenEinzeln) {}

bool ExternerKern::verfuegbar() const {
    return Datei::ausfuehrbar(programm_);
}

NECErgebnis ExternerKern::rechnen(std::string_view deck, std::stop_token stopp) const {
    std::string d(deck);
    if (helixAufloesen_) d = Geometrie::abflachen(d);
    if (eindeutigeTags_) d = Geometrie::eindeutigeTags(d);
    if (!feldkartenEinzeln_) return einLauf(d, stopp);

    auto teile = feldkartenTrennen(d);
    if (teile.size() <= 1) return einLauf(teile.empty() ? d : teile.front(), stopp);
    auto basis = einLauf(teile.front(), stopp);
    for (std::size_t i = 1; i < teile.size(); ++i)
        zusammenfuehren(basis, einLauf(teile[i], stopp));
    return basis;
}

NECErgebnis ExternerKern::einLauf(std::string_view deck, std::stop_token stopp) const {
    Prozess::Arbeitsordner ordner;
    Datei::schreibenAtomar(ordner.pfad() / "a.nec", ascii(deck));
    auto start = std::chrono::steady_clock::now();
    auto ende = Prozess::ausfuehren(programm_, argumenteFuer(argumente_), ordner.pfad(), zeitlimit, stopp);
    auto bericht = berichtLesen(ordner.pfad() / "a.out");
    if (!bericht)
        throw KernFehler(name_ + ": keine Ausgabe (" + std::to_string(ende.status) + ") " +
                         ende.fehlerausgabe);
    auto ergebnis = NEC2Ausgabe::lesen(*bericht);
    ergebnis.kern = name_;
    ergebnis.dauer = std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
    return ergebnis;
}

std::vector<std::string> ExternerKern::feldkartenTrennen(std::string_view deck) {
    auto alle = zeilen(deck);
    std::vector<std::string_view> karten;
    std::vector<std::string_view> basis;
    for (auto z : alle) {
        if (istFeldkarte(z)) {
            karten.push_back(z);
        } else if (!beginntMit(z, "XQ") && !beginntMit(z, "EN") && !ohneRand(z).empty()) {
            basis.push_back(z);
        }
    }
    if (karten.size() < 2) return {std::string(deck)};

    std::vector<std::string> decks;
    for (auto karte : karten) {
        std::string teil;
        for (auto z : basis)
            (teil += z) += '\n';
        (teil += karte) += '\n';
        teil += "EN\n";
        decks.push_back(std::move(teil));
    }
    return decks;
}

} // namespace NECKern
