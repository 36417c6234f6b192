#pragma once

// Ein Rechenkern ohne Programm: liest die FR-Karte des Decks und antwortet je
// Frequenz mit dem, was der Test vorgibt. Zählt Läufe und gleichzeitige Läufe.
#include "NECKern/Rechenkerne/Rechenkern.hpp"

#include <algorithm>
#include <atomic>
#include <charconv>
#include <chrono>
#include <fmt/printf.h>
#include <functional>
#include <mutex>
#include <string>
#include <string_view>
#include <thread>
#include <vector>

namespace TestHilfen {

// Die Zahlen der ersten Deckzeile mit diesem Kartennamen.
inline std::vector<double> kartenzahlen(std::string_view deck, std::string_view typ) {
    const auto text = "\n" + std::string(deck);
    const auto kennung = "\n" + std::string(typ) + " ";
    std::vector<double> zahlen;
    const auto anfang = text.find(kennung);
    if (anfang == std::string::npos) return zahlen;
    const char* p = text.data() + anfang + kennung.size();
    const char* schluss = text.data() + std::min(text.find('\n', anfang + 1), text.size());
    while (p < schluss) {
        while (p < schluss && *p == ' ')
            ++p;
        double x = 0;
        auto [weiter, fehler] = std::from_chars(p, schluss, x);
        if (fehler != std::errc()) break;
        zahlen.push_back(x);
        p = weiter;
    }
    return zahlen;
}

inline bool hatKarte(std::string_view deck, std::string_view typ) {
    return ("\n" + std::string(deck)).find("\n" + std::string(typ) + " ") != std::string::npos;
}

class KernAttrappe final : public NECKern::Rechenkern {
  public:
    struct Lauf {
        double start;
        int anzahl;
        double schritt;
        std::string deck;
    };

    // Antwort je Frequenz; Standard: Z = (50 + f) + j(f − 14) Ω, mit RP-Karte ein Diagramm.
    std::function<NECKern::FrequenzErgebnis(double mhz, std::string_view deck)> antwort = standard;
    // Wartezeit eines Laufs nach seiner Startfrequenz.
    std::function<std::chrono::milliseconds(double start)> warten = [](double) {
        return std::chrono::milliseconds(0);
    };
    // Wirft dieser Test, wird daraus ein KernFehler mit dem gelieferten Text.
    std::function<std::string(double start, int nummer)> fehler = [](double, int) { return std::string(); };
    // Frequenz im Bericht wie bei nec2c auf fünf Stellen gerundet.
    bool rundet = false;
    // Warnungen jedes Laufs, wie sie ein Kern aus seinem Bericht liest.
    std::vector<std::string> warnungen;

    // Kennung, unter der die Attrappe gewählt wird (etwa "nec2c" für die Gegenprobe).
    std::string kennungWert = "attrappe";

    std::string kennung() const override { return kennungWert; }
    std::string name() const override { return "Attrappe"; }
    std::string beschreibung() const override { return "Antwortet ohne Programm."; }
    bool verfuegbar() const override { return true; }

    using NECKern::Rechenkern::rechnen;
    NECKern::NECErgebnis rechnen(std::string_view deck, std::stop_token) const override {
        auto fr = kartenzahlen(deck, "FR");
        fr.resize(6, 0.0);
        Lauf lauf{fr[4], static_cast<int>(fr[1]), fr[5], std::string(deck)};
        int nummer = 0;
        {
            std::lock_guard<std::mutex> halten(sperre_);
            nummer = static_cast<int>(laeufe_.size());
            laeufe_.push_back(lauf);
        }
        int jetzt = ++aktiv_;
        int alt = hoechstens_.load();
        while (jetzt > alt && !hoechstens_.compare_exchange_weak(alt, jetzt)) {
        }
        std::this_thread::sleep_for(warten(lauf.start));
        --aktiv_;
        auto text = fehler(lauf.start, nummer);
        if (!text.empty()) throw NECKern::KernFehler(text);

        NECKern::NECErgebnis e;
        e.kern = name();
        e.warnungen = warnungen;
        for (int i = 0; i < lauf.anzahl; ++i) {
            double mhz = lauf.start + i * lauf.schritt;
            auto f = antwort(mhz, deck);
            f.mhz = mhz;
            if (rundet) {
                auto gedruckt = fmt::sprintf("%.4E", mhz);
                std::from_chars(gedruckt.data(), gedruckt.data() + gedruckt.size(), f.mhz);
            }
            e.frequenzen.push_back(std::move(f));
        }
        return e;
    }

    std::vector<Lauf> laeufe() const {
        std::lock_guard<std::mutex> halten(sperre_);
        return laeufe_;
    }
    int hoechstensGleichzeitig() const { return hoechstens_.load(); }
    int aktiv() const { return aktiv_.load(); }

    static NECKern::FrequenzErgebnis standard(double mhz, std::string_view deck) {
        NECKern::FrequenzErgebnis f;
        f.impedanz = NECKern::Komplex{50 + mhz, mhz - 14};
        if (hatKarte(deck, "RP")) f.diagramm = {{90, 0, 0, 0, mhz / 2}, {90, 180, 0, 0, 0}};
        return f;
    }

  private:
    mutable std::mutex sperre_;
    mutable std::vector<Lauf> laeufe_;
    mutable std::atomic<int> aktiv_{0};
    mutable std::atomic<int> hoechstens_{0};
};

} // namespace TestHilfen
