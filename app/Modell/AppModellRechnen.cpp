// Der Rechengang des Anwendungsmodells: Modell → Vorprüfung → Rechendeck →
// Kernlauf → Ergebnis → Befunde → Gütetest → Gegenprobe mit nec2c.
#include "Modell/AppModell.hpp"

#include "NECKern/Rechengang.hpp"
#include "NECKern/Rechenkerne/Prozess.hpp"

#include <QTimer>

#include <algorithm>

namespace {

// Eine Folge von Änderungen rechnet nur einmal, so lange nach der letzten.
constexpr int entprellenMs = 300;

} // namespace

void AppModell::rechnen(bool verzoegert) {
    if (rechenAuftrag_) rechenAuftrag_->abbrechen();
    auto auftrag = std::make_shared<Auftrag>();
    auto kern = kernWaehlen();
    setRechenAuftrag(auftrag);
    QTimer::singleShot(verzoegert ? entprellenMs : 0, this,
                       [this, auftrag, kopie = modell_, kern] { zyklusBeginnen(auftrag, kopie, kern); });
}

void AppModell::zyklusBeginnen(const AuftragZeiger& auftrag, const NECKern::Modell& kopie,
                               const NECKern::KernZeiger& kern) {
    if (auftrag->abgebrochen()) return;
    setRechnetGerade(true);
    if (auto satz = NECKern::Modellpruefung::vorpruefen(kopie)) {
        if (gueteAuftrag_) gueteAuftrag_->abbrechen();
        setErgebnis(std::nullopt);
        setBefunde({});
        setGuete(std::nullopt);
        setGueteLaeuft(false);
        setGegenprobe(std::nullopt);
        setFeld(std::nullopt);
        setFehler(*satz);
        setRechnetGerade(false);
        return;
    }
    std::string deck;
    try {
        deck = kopie.deck();
    } catch (const std::exception& e) {
        setFehler(e.what());
        setRechnetGerade(false);
        return;
    }
    hintergrund_.starten<NECKern::NECErgebnis>(
        auftrag, [kern, deck](std::stop_token stopp) { return kern->rechnen(deck, stopp); },
        [this, auftrag, kopie, kern, deck](Ausgang<NECKern::NECErgebnis> ausgang) {
            zyklusErgebnis(auftrag, kopie, kern, deck, std::move(ausgang));
        });
}

void AppModell::zyklusErgebnis(const AuftragZeiger& auftrag, const NECKern::Modell& kopie,
                               const NECKern::KernZeiger& kern, const std::string& deck,
                               Ausgang<NECKern::NECErgebnis> ausgang) {
    if (!ausgang.wert) {
        // Das vorige Ergebnis bleibt unter der Meldung stehen.
        setFehler(ausgang.fehler);
        setRechnetGerade(false);
        return;
    }
    if (auftrag->abgebrochen()) {
        setRechnetGerade(false);
        return;
    }
    const auto& frequenzen = ausgang.wert->frequenzen;
    OptionalerText fehler;
    if (frequenzen.empty()) {
        const auto& w = ausgang.wert->warnungen;
        fehler = NECKern::Modellpruefung::necMeldung(w.empty() ? "keine Ausgabe" : w.front());
    }
    const int grenze = std::max(static_cast<int>(frequenzen.size()) - 1, 0);
    setErgebnis(std::move(ausgang.wert));
    setFehler(fehler);
    // Eine kleinere Wahl der Frequenz übersteht das neue Ergebnis.
    if (frequenzIndex_ > grenze) setFrequenzIndex(grenze);
    setFeld(std::nullopt);

    if (!ergebnis_->frequenzen.empty()) {
        const auto& letzte = ergebnis_->frequenzen.back();
        auto befunde = NECKern::Modellpruefung::pruefen(letzte.segmente, letzte.mhz);
        auto boden = NECKern::Modellpruefung::bodenPruefen(letzte.segmente, letzte.mitBoden);
        befunde.insert(befunde.end(), boden.begin(), boden.end());
        setBefunde(std::move(befunde));
        if (gueteAuftrag_) gueteAuftrag_->abbrechen();
        setGuete(std::nullopt);
        gueteRechnen(kopie, kern, letzte.mhz, letzte.segmente);
    }
    setGegenprobe(std::nullopt);
    if (kern->kennung() == "nec2c") {
        setRechnetGerade(false);
        return;
    }
    gegenprobeStarten(auftrag, deck);
}

void AppModell::gegenprobeStarten(const AuftragZeiger& auftrag, const std::string& deck) {
    auto nec2c = umgebung_.nec2c();
    hintergrund_.starten<NECKern::NECErgebnis>(
        auftrag, [nec2c, deck](std::stop_token stopp) { return nec2c->rechnen(deck, stopp); },
        [this, auftrag](Ausgang<NECKern::NECErgebnis> ausgang) {
            // Scheitert nec2c, gibt es still keine Gegenprobe.
            if (ausgang.wert && !auftrag->abgebrochen()) {
                const auto index = static_cast<std::size_t>(std::max(frequenzIndex_, 0));
                setGegenprobe(NECKern::Urteile::gegenprobeAus(*ausgang.wert, index));
            }
            setRechnetGerade(false);
        });
}

void AppModell::gueteRechnen(const NECKern::Modell& m, const NECKern::KernZeiger& kern, double mhz,
                             const std::vector<NECKern::Segment>& segmente) {
    auto auftrag = std::make_shared<Auftrag>();
    setGueteAuftrag(auftrag);
    setGueteLaeuft(true);
    hintergrund_.starten<std::optional<double>>(
        auftrag,
        [m, kern, mhz, segmente](std::stop_token stopp) {
            return NECKern::Rechengang::gueteRechnen(m, *kern, mhz, segmente, stopp);
        },
        [this, auftrag](Ausgang<std::optional<double>> ausgang) {
            // Ein abgelöster Test schreibt nichts; den Laufanzeiger führt der neue.
            if (auftrag->abgebrochen()) {
                if (gueteAuftrag_ == auftrag) setGueteLaeuft(false);
                return;
            }
            if (ausgang.wert && *ausgang.wert) setGuete(**ausgang.wert);
            setGueteLaeuft(false);
        });
}

bool AppModell::rechnungLaeuft() const {
    return rechnetGerade_ || gueteLaeuft_ || feldLaeuft_;
}

void AppModell::rechnungAbbrechen() {
    if (!rechnungLaeuft()) return;
    for (const auto* a : {&rechenAuftrag_, &gueteAuftrag_})
        if (*a) (*a)->anhalten();
    for (const auto& neben : nebenAuftraege_)
        if (auto a = neben.lock()) a->anhalten();
    nebenAuftraege_.clear();
    setFehler(NECKern::Prozess::abgebrochen);
    setRechnetGerade(false);
    setGueteLaeuft(false);
    setFeldLaeuft(false);
}
