// Die Simplex-Suche nach Nelder und Mead mit Grenzen und vorausgerechneten Kandidaten.
#include "NECKern/Optimierer.hpp"

#include "NECKern/Modellpruefung.hpp"
#include "NECKern/Unicode.hpp"

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>
#include <map>
#include <utility>

namespace NECKern {

namespace {

using Punkt = std::vector<double>;

struct Ecke {
    Punkt x;
    double kosten;
};

// Die Züge eines Schritts. Kandidaten liegen auf der Geraden m + t·(m − w)
// durch den Schwerpunkt m aller Ecken ausser der schlechtesten w.
enum class Zug { reflexion, expansion, aussen, innen, schrumpfen };

double faktor(Zug zug) {
    switch (zug) {
    case Zug::reflexion:
        return 1.0;
    case Zug::expansion:
        return 2.0;
    case Zug::aussen: // Kontraktion auf der Seite der Reflexion: m − 0,5·(w − m)
        return 0.5;
    case Zug::innen: // Kontraktion zur schlechtesten Ecke hin: m + 0,5·(w − m)
        return -0.5;
    case Zug::schrumpfen:
        break;
    }
    return 0;
}

// Welcher Kandidat nach der Reflexion wohl gebraucht wird: meist derselbe Zug
// wie im letzten Schritt. Nur die Reihenfolge des Vorausrechnens hängt davon ab.
std::array<Zug, 3> vermutung(Zug letzter) {
    switch (letzter) {
    case Zug::aussen:
        return {Zug::aussen, Zug::innen, Zug::expansion};
    case Zug::innen:
    case Zug::schrumpfen:
        return {Zug::innen, Zug::aussen, Zug::expansion};
    case Zug::reflexion:
    case Zug::expansion:
        break;
    }
    return {Zug::expansion, Zug::innen, Zug::aussen};
}

struct Bereich {
    Punkt unten;
    Punkt oben;

    Punkt klemmen(Punkt p) const {
        for (std::size_t i = 0; i < p.size(); ++i)
            p[i] = std::min(std::max(p[i], unten[i]), oben[i]);
        return p;
    }
};

class Simplex {
  public:
    using Bewerten = std::function<std::vector<double>(const std::vector<Punkt>&)>;

    Simplex(Bewerten bewerten, Bereich bereich, std::size_t breite)
        : bewerten_(std::move(bewerten)), bereich_(std::move(bereich)), breite_(breite) {}

    void beginnen(const Punkt& x0, const Punkt& schritte) {
        std::vector<Punkt> punkte{bereich_.klemmen(x0)};
        for (std::size_t i = 0; i < x0.size(); ++i) {
            Punkt p = x0;
            p[i] += schritte[i];
            punkte.push_back(bereich_.klemmen(std::move(p)));
        }
        auto kosten = bewerten_(punkte);
        for (std::size_t i = 0; i < punkte.size(); ++i)
            ecken_.push_back({std::move(punkte[i]), kosten[i]});
        sortieren();
    }

    void schritt() {
        const std::size_t n = ecken_.size() - 1;
        Punkt m(ecken_[0].x.size(), 0.0);
        for (std::size_t i = 0; i < n; ++i)
            for (std::size_t d = 0; d < m.size(); ++d)
                m[d] += ecken_[i].x[d] / static_cast<double>(n);
        const Punkt& w = ecken_[n].x;
        const double besteKosten = ecken_[0].kosten;
        const double zweitschlechteste = ecken_[n - 1].kosten;
        const double schlechteste = ecken_[n].kosten;

        std::map<Zug, Ecke> vorrat;
        auto rechnen = [&](const std::vector<Zug>& zuege) {
            std::vector<Punkt> punkte;
            for (auto zug : zuege) {
                Punkt p = m;
                for (std::size_t d = 0; d < p.size(); ++d)
                    p[d] += faktor(zug) * (m[d] - w[d]);
                punkte.push_back(bereich_.klemmen(std::move(p)));
            }
            auto kosten = bewerten_(punkte);
            for (std::size_t i = 0; i < zuege.size(); ++i)
                vorrat.emplace(zuege[i], Ecke{std::move(punkte[i]), kosten[i]});
        };
        auto holen = [&](Zug zug) {
            if (!vorrat.contains(zug)) rechnen({zug});
            return vorrat.at(zug);
        };

        // Die Reflexion wird immer gebraucht; freie Kerne rechnen die
        // wahrscheinlichen Folgekandidaten gleich mit. Welcher Punkt angenommen
        // wird, entscheiden allein die Regeln unten.
        std::vector<Zug> zuerst{Zug::reflexion};
        for (auto zug : vermutung(letzter_))
            if (zuerst.size() < breite_) zuerst.push_back(zug);
        rechnen(zuerst);

        Ecke r = vorrat.at(Zug::reflexion);
        if (r.kosten < besteKosten) {
            Ecke e = holen(Zug::expansion);
            bool weiter = e.kosten < r.kosten;
            annehmen(weiter ? std::move(e) : std::move(r), weiter ? Zug::expansion : Zug::reflexion);
        } else if (r.kosten < zweitschlechteste) {
            annehmen(std::move(r), Zug::reflexion);
        } else {
            Zug zug = r.kosten < schlechteste ? Zug::aussen : Zug::innen;
            Ecke c = holen(zug);
            if (c.kosten < std::min(schlechteste, r.kosten)) {
                annehmen(std::move(c), zug);
            } else {
                schrumpfen();
            }
        }
        sortieren();
    }

    const Ecke& beste() const { return ecken_.front(); }

    bool fertig() const {
        return ecken_.front().kosten < 0.0001 || ecken_.back().kosten - ecken_.front().kosten < 1e-6;
    }

  private:
    void annehmen(Ecke ecke, Zug zug) {
        ecken_.back() = std::move(ecke);
        letzter_ = zug;
    }

    // Alle Ecken ausser der besten rücken auf halbem Weg zur besten.
    void schrumpfen() {
        const Punkt& b = ecken_[0].x;
        std::vector<Punkt> punkte;
        for (std::size_t i = 1; i < ecken_.size(); ++i) {
            Punkt p = ecken_[i].x;
            for (std::size_t d = 0; d < p.size(); ++d)
                p[d] = b[d] + 0.5 * (p[d] - b[d]);
            punkte.push_back(bereich_.klemmen(std::move(p)));
        }
        auto kosten = bewerten_(punkte);
        for (std::size_t i = 1; i < ecken_.size(); ++i)
            ecken_[i] = {std::move(punkte[i - 1]), kosten[i - 1]};
        letzter_ = Zug::schrumpfen;
    }

    void sortieren() {
        std::stable_sort(ecken_.begin(), ecken_.end(),
                         [](const Ecke& a, const Ecke& b) { return a.kosten < b.kosten; });
    }

    Bewerten bewerten_;
    Bereich bereich_;
    std::size_t breite_;
    std::vector<Ecke> ecken_;
    Zug letzter_ = Zug::reflexion;
};

struct Optimiervariable {
    std::string name;
    double wert;
    double unten;
    double oben;
};

// Die markierten Variablen in Modellreihenfolge, jeder Name einmal.
std::vector<Optimiervariable> markierte(const Modell& modell) {
    auto werte = modell.variablenWerte();
    std::vector<Optimiervariable> liste;
    for (const auto& v : modell.variablen) {
        if (!v.optimieren) continue;
        if (std::any_of(liste.begin(), liste.end(), [&](const auto& o) { return o.name == v.name; }))
            continue;
        auto it = werte.find(Unicode::klein(v.name));
        double x = it == werte.end() ? std::numeric_limits<double>::quiet_NaN() : it->second;
        if (!std::isfinite(x))
            throw KernFehler("Die Variable „" + v.name + "“ hat keinen endlichen Wert zum Optimieren.");
        double oben = v.maximum.value_or(x * 1.2);
        double unten = v.minimum.value_or(x * 0.8);
        // Bei negativem Wert ist x·1,2 die untere Grenze; vertauschte Grenzen
        // werden geordnet, damit das Klemmen eindeutig bleibt.
        if (unten > oben) std::swap(unten, oben);
        liste.push_back({v.name, x, unten, oben});
    }
    return liste;
}

} // namespace

Werte Optimierer::starten(int maxSchritte, const std::function<void(const Stand&)>& fortschritt) {
    if (std::none_of(modell.variablen.begin(), modell.variablen.end(),
                     [](const Variable& v) { return v.optimieren; }))
        throw KernFehler("Keine Variable zum Optimieren markiert");
    auto variablen = markierte(modell);
    if (auto satz = Modellpruefung::umfangPruefen(modell)) throw KernFehler(*satz);

    Punkt x0, schritte;
    Bereich bereich;
    for (const auto& v : variablen) {
        x0.push_back(v.wert);
        double schritt = v.wert != 0 ? v.wert * 0.05 : std::max((v.oben - v.unten) * 0.1, 0.01);
        schritte.push_back(schritt);
        bereich.unten.push_back(v.unten);
        bereich.oben.push_back(v.oben);
    }
    auto benennen = [&](const Punkt& x) {
        Werte werte;
        for (std::size_t i = 0; i < variablen.size(); ++i)
            werte[variablen[i].name] = x[i];
        return werte;
    };
    // NaN-Kosten (etwa aus einer NaN-Impedanz) gelten als +∞, damit Vergleiche und Sortierung gelten.
    auto bewerten = [&](const std::vector<Punkt>& punkte) {
        std::vector<Werte> liste;
        for (const auto& p : punkte)
            liste.push_back(benennen(p));
        auto kosten = kostenVieler(liste);
        for (auto& k : kosten)
            if (std::isnan(k)) k = std::numeric_limits<double>::infinity();
        return kosten;
    };

    const std::size_t k = std::max<std::size_t>(laufModelle_.size(), 1);
    const std::size_t breite = vorausrechnen_ ? std::clamp<std::size_t>(parallel_ / k, 1, 4) : 1;
    Simplex simplex(bewerten, bereich, breite);
    simplex.beginnen(x0, schritte);
    auto melden = [&](int schritt) {
        if (fortschritt) fortschritt(Stand{schritt, simplex.beste().kosten, benennen(simplex.beste().x)});
    };
    melden(0);
    for (int schritt = 1; !simplex.fertig() && schritt <= maxSchritte && !abgebrochen(); ++schritt) {
        simplex.schritt();
        melden(schritt);
    }
    return benennen(simplex.beste().x);
}

} // namespace NECKern
