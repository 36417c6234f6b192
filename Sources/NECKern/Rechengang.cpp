#include "NECKern/Rechengang.hpp"

#include "NECKern/Ausdruck.hpp"
#include "NECKern/Guetetest.hpp"
#include "NECKern/Rechenkerne/Nec2cKern.hpp"

#include <algorithm>
#include <cmath>
#include <future>

namespace NECKern::Rechengang {

std::optional<double> gueteRechnen(const Modell& modell, const Rechenkern& kern, double mhz,
                                   const std::vector<Segment>& segmente, std::stop_token stopp) {
    try {
        auto deck = Guetetest::deck(modell, mhz, segmente);
        if (!deck) return std::nullopt;
        auto ergebnis = kern.rechnen(*deck, stopp);
        if (ergebnis.frequenzen.empty()) return std::nullopt;
        return Guetetest::mittlererGewinn(ergebnis.frequenzen.front().diagramm);
    } catch (const std::exception&) {
        return std::nullopt; // der Gütetest scheitert still
    }
}

namespace {

std::optional<Urteile::Gegenprobe> gegenprobeRechnen(const std::string& deck, const KernZeiger& nec2c,
                                                     std::size_t frequenzIndex, std::stop_token stopp) {
    try {
        return Urteile::gegenprobeAus(nec2c->rechnen(deck, stopp), frequenzIndex);
    } catch (const std::exception&) {
        return std::nullopt; // ohne nec2c keine Gegenprobe, aber auch keine Meldung
    }
}

// Die Frequenz, die der Kern als letzte rechnen wird, soweit sie sich vorab sagen lässt.
std::optional<double> letzteGeplanteFrequenz(const Modell& modell) {
    try {
        auto plan = modell.frequenzen();
        return plan.start + (plan.anzahl - 1) * plan.schritt;
    } catch (const std::exception&) {
        return std::nullopt;
    }
}

bool gleicheFrequenz(double a, double b) {
    return std::fabs(a - b) <= 1e-4 * std::max(std::fabs(a), 1.0);
}

} // namespace

Durchlauf rechnen(const Modell& modell, const KernZeiger& kern, std::size_t frequenzIndex, KernZeiger nec2c,
                  std::stop_token stopp) {
    Durchlauf d;
    if (auto satz = Modellpruefung::vorpruefen(modell)) {
        d.fehler = *satz;
        d.vorpruefungGescheitert = true;
        return d;
    }
    std::string deck;
    try {
        deck = modell.deck();
    } catch (const std::exception& e) {
        d.fehler = e.what();
        return d;
    }
    if (auto lange = Modellpruefung::dauerBefund(modell)) d.befunde.push_back(*lange);
    // Gütetest und Gegenprobe brauchen das Ergebnis nicht: sie laufen neben dem Hauptlauf.
    // Passt der Gütetest nachher nicht (andere Frequenz, Struktur unter dem Boden), wird er verworfen.
    auto geplant = letzteGeplanteFrequenz(modell);
    std::future<std::optional<double>> vorab;
    if (geplant)
        vorab =
            std::async(std::launch::async, [&] { return gueteRechnen(modell, *kern, *geplant, {}, stopp); });
    std::future<std::optional<Urteile::Gegenprobe>> gegenprobe;
    if (kern->kennung() != "nec2c") {
        if (!nec2c) nec2c = std::make_shared<const Nec2cKern>();
        gegenprobe = std::async(std::launch::async,
                                [&] { return gegenprobeRechnen(deck, nec2c, frequenzIndex, stopp); });
    }

    try {
        d.ergebnis = kern->rechnen(deck, stopp);
    } catch (const std::exception& e) {
        d.fehler = e.what();
        return d;
    }
    const auto& ergebnis = *d.ergebnis;
    if (auto satz = Modellpruefung::laufAbgelehnt(ergebnis)) {
        d.fehler = std::move(satz);
        return d;
    }

    const auto& letzte = ergebnis.frequenzen.back();
    auto regeln = Modellpruefung::pruefen(letzte.segmente, letzte.mhz);
    d.befunde.insert(d.befunde.end(), regeln.begin(), regeln.end());
    auto boden = Modellpruefung::bodenPruefen(letzte.segmente, letzte.mitBoden);
    d.befunde.insert(d.befunde.end(), boden.begin(), boden.end());

    bool vorabGilt = geplant && gleicheFrequenz(*geplant, letzte.mhz);
    if (vorabGilt) {
        try {
            vorabGilt = Guetetest::deck(modell, letzte.mhz, letzte.segmente).has_value();
        } catch (const std::exception&) {
            vorabGilt = false;
        }
    }
    auto vorabWert = vorab.valid() ? vorab.get() : std::nullopt;
    d.guete = vorabGilt ? vorabWert : gueteRechnen(modell, *kern, letzte.mhz, letzte.segmente, stopp);
    if (gegenprobe.valid()) d.gegenprobe = gegenprobe.get();
    return d;
}

} // namespace NECKern::Rechengang
