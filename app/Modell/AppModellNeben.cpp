// Die Nebenrechnungen des Anwendungsmodells: Frequenzgang, Optimierer,
// Selbsttest, Feldstärke und die Installation von zirkon.
#include "Modell/AppModell.hpp"

#include "Modell/ZirkonInstallation.hpp"

#include "NECKern/Feldstaerke.hpp"

#include <algorithm>

namespace {

constexpr const char* keinNahfeld = "Der Kern hat keine Nahfelder geliefert";

} // namespace

void AppModell::frequenzgangRechnen() {
    auto auftrag = std::make_shared<Auftrag>();
    std::erase_if(nebenAuftraege_, [](const auto& a) { return a.expired(); });
    nebenAuftraege_.push_back(auftrag);
    const int punkte = gangPunkte_;
    setRechnetGerade(true);
    setGangFortschritt({0, punkte});
    auto arbeit = [this, auftrag, kopie = modell_, kern = kernWaehlen(), von = gangVon_, bis = gangBis_,
                   punkte, parallel = umgebung_.parallel](std::stop_token stopp) {
        auto gemeldet = [this, auftrag, punkte](int fertig) {
            hintergrund_.melden([this, auftrag, fertig, punkte] {
                // Teile enden in beliebiger Folge; der Fortschritt geht nie zurück.
                if (!auftrag->abgebrochen())
                    setGangFortschritt({std::max(fertig, gangFortschritt_.fertig), punkte});
            });
        };
        return NECKern::Analyse::frequenzgang(kopie, *kern, von, bis, punkte, true, parallel, stopp,
                                              gemeldet);
    };
    // Kein Griff wird behalten: ein zweiter Start rechnet neben dem ersten, der spätere gewinnt.
    hintergrund_.starten<Frequenzpunkte>(auftrag, std::move(arbeit),
                                         [this, auftrag](Ausgang<Frequenzpunkte> ausgang) {
                                             if (auftrag->abgebrochen()) return;
                                             if (ausgang.wert)
                                                 setGang(std::move(*ausgang.wert));
                                             else
                                                 setFehler(ausgang.fehler);
                                             setRechnetGerade(false);
                                         });
}

void AppModell::optimieren() {
    OptimiererZeiger optimierer;
    try {
        optimierer = std::make_shared<NECKern::Optimierer>(modell_, kernWaehlen(), ziele_);
    } catch (const std::exception& e) {
        setFehler(e.what());
        return;
    }
    setOptimierer(optimierer);
    setOptVerlauf({});
    auto arbeit = [this, optimierer](std::stop_token stopp) {
        // Beim Programmende hält der Optimierer auch seine laufenden Kernläufe an.
        std::stop_callback anhalten(stopp, [optimierer] { optimierer->anhalten(); });
        return optimierer->starten(optimiererSchritte,
                                   [this, optimierer](const NECKern::Optimierer::Stand& s) {
                                       hintergrund_.melden([this, optimierer, s] {
                                           if (optimierer_ != optimierer) return;
                                           auto verlauf = optVerlauf_;
                                           verlauf.push_back({s.schritt, s.kosten});
                                           setOptVerlauf(std::move(verlauf));
                                           setOptWerte(s.werte);
                                       });
                                   });
    };
    hintergrund_.starten<NECKern::Werte>(std::make_shared<Auftrag>(), std::move(arbeit),
                                         [this, optimierer](Ausgang<NECKern::Werte> ausgang) {
                                             if (optimierer_ != optimierer) return;
                                             if (ausgang.wert)
                                                 setOptWerte(std::move(*ausgang.wert));
                                             else
                                                 setFehler(ausgang.fehler);
                                             setOptimierer(nullptr);
                                         });
}

void AppModell::optimierungAbbrechen() {
    if (optimierer_) optimierer_->abbrechen();
}

void AppModell::optimierungUebernehmen() {
    setModell(NECKern::Optimierer::uebernehmen(modell_, optWerte_));
    rechnen(false);
}

void AppModell::selbsttestStarten() {
    setSelbsttest({});
    setZeigeSelbsttest(true);
    if (selbsttestAuftrag_) selbsttestAuftrag_->abbrechen();
    auto auftrag = std::make_shared<Auftrag>();
    selbsttestAuftrag_ = auftrag;
    setSelbsttestLaeuft(true);
    auto arbeit = [this, auftrag, kern = kernWaehlen()](std::stop_token stopp) {
        auto zeile = [this, auftrag](const NECKern::Selbsttest::Zeile& z) {
            hintergrund_.melden([this, auftrag, z] {
                if (selbsttestAuftrag_ != auftrag) return;
                auto zeilen = selbsttest_;
                zeilen.push_back(z);
                setSelbsttest(std::move(zeilen));
            });
        };
        return NECKern::Selbsttest::laufen(*kern, zeile, stopp);
    };
    hintergrund_.starten<Selbsttestzeilen>(auftrag, std::move(arbeit),
                                           [this, auftrag](Ausgang<Selbsttestzeilen> ausgang) {
                                               if (selbsttestAuftrag_ != auftrag) return;
                                               if (ausgang.wert) setSelbsttest(std::move(*ausgang.wert));
                                               setSelbsttestLaeuft(false);
                                           });
}

void AppModell::feldRechnen() {
    const auto* f = aktuell();
    if (!f || f->segmente.empty()) return;
    const auto [xMin, xMax] = std::minmax_element(f->segmente.begin(), f->segmente.end(),
                                                  [](const auto& a, const auto& b) { return a.x < b.x; });
    const auto [yMin, yMax] = std::minmax_element(f->segmente.begin(), f->segmente.end(),
                                                  [](const auto& a, const auto& b) { return a.y < b.y; });
    const double mx = (xMin->x + xMax->x) / 2;
    const double my = (yMin->y + yMax->y) / 2;
    const int n = std::clamp(feldPunkte_, 3, 61);
    const double leistung = feldLeistung_;
    const double hoehe = feldHoehe_;

    auto auftrag = std::make_shared<Auftrag>();
    std::erase_if(nebenAuftraege_, [](const auto& a) { return a.expired(); });
    nebenAuftraege_.push_back(auftrag);
    setFeldLaeuft(true);
    auto arbeit = [kopie = modell_, kern = kernWaehlen(), mhz = f->mhz, hoehe, mx, my, halb = feldHalb_,
                   n](std::stop_token stopp) {
        return kern->rechnen(NECKern::Feldstaerke::deck(kopie, mhz, hoehe, mx, my, halb, n), stopp);
    };
    hintergrund_.starten<NECKern::NECErgebnis>(
        auftrag, std::move(arbeit),
        [this, auftrag, leistung, hoehe, n](Ausgang<NECKern::NECErgebnis> ausgang) {
            if (auftrag->abgebrochen()) return;
            setFeldLaeuft(false);
            if (!ausgang.wert) {
                setFehler(ausgang.fehler);
                return;
            }
            const auto& frequenzen = ausgang.wert->frequenzen;
            if (frequenzen.empty() || !frequenzen.front().leistungEingang ||
                frequenzen.front().nahfeldE.empty()) {
                setFehler(std::string(keinNahfeld));
                return;
            }
            const auto& q = frequenzen.front();
            setFeld(FeldErgebnis{q.mhz, *q.leistungEingang, leistung, hoehe, q.nahfeldE, q.nahfeldH, n});
        });
}

void AppModell::zirkonInstallieren() {
    auto python = ZirkonInstallation::pythonFinden(umgebung_.pythonKandidaten);
    if (!python) {
        setInstallation(std::string(ZirkonInstallation::keinPython));
        return;
    }
    setInstallation(std::string(ZirkonInstallation::laeuft));
    auto arbeit = [shell = umgebung_.shell,
                   skript = ZirkonInstallation::skript(umgebung_.datenOrdner, *python)](
                      std::stop_token stopp) { return ZirkonInstallation::ausfuehren(shell, skript, stopp); };
    hintergrund_.starten<std::string>(
        std::make_shared<Auftrag>(), std::move(arbeit), [this](Ausgang<std::string> ausgang) {
            auto text =
                ausgang.wert ? std::move(*ausgang.wert) : ZirkonInstallation::gescheitert + ausgang.fehler;
            const bool erfolg = text == ZirkonInstallation::fertig;
            setInstallation(std::move(text));
            if (erfolg) setKerne(umgebung_.kerneFinden());
        });
}
