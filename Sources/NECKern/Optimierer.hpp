#pragma once

#include "NECKern/Ergebnis.hpp"
#include "NECKern/Modell.hpp"
#include "NECKern/Rechenkerne/Rechenkern.hpp"
#include "NECKern/Uuid.hpp"

#include <atomic>
#include <functional>
#include <nlohmann/json_fwd.hpp>
#include <stop_token>
#include <string>
#include <vector>

namespace NECKern {

// Ein Optimierziel: welche Grösse bei welcher Frequenz wie stark zählt.
struct Ziel {
    enum class Art { swr, gewinn, vorRueck, resonanz, impedanzR };

    Uuid id;
    Art art = Art::swr;
    double mhz = 14.0;
    double sollwert = 0;
    double gewicht = 1.0;

    Ziel() = default;
    Ziel(Art art, double mhz, double sollwert, double gewicht = 1.0);

    static const std::vector<Art>& arten(); // alle, in Anzeigereihenfolge
    static std::string text(Art art);       // Anzeigetext, z. B. „Resonanz (X = 0)“
    static std::string kennung(Art art);    // Name in der gespeicherten Form, z. B. „vorRueck“

    bool operator==(const Ziel&) const = default;
};

void to_json(nlohmann::ordered_json& j, const Ziel& z);
void from_json(const nlohmann::ordered_json& j, Ziel& z);

// Sucht Werte der zum Optimieren markierten Variablen, die die Ziele möglichst
// gut erfüllen (Simplex-Suche nach Nelder und Mead). Ein Objekt dient einer Suche.
class Optimierer {
  public:
    struct Stand {
        int schritt = 0;
        double kosten = 0; // beste Kosten bisher
        Werte werte;       // Variablenname → Wert des besten Punkts
    };

    struct Einstellungen {
        // Kernläufe zugleich; Standard: Zahl der Prozessorkerne.
        int parallel = 0;
        // Kandidaten eines Schritts (Expansion, Kontraktion) schon neben der
        // Reflexion rechnen, soweit Kerne frei sind. Ändert nie das Ergebnis.
        bool vorausrechnen = true;
    };

    Optimierer(Modell modell, KernZeiger kern, std::vector<Ziel> ziele);
    Optimierer(Modell modell, KernZeiger kern, std::vector<Ziel> ziele, Einstellungen einstellungen);

    const Modell modell;
    const KernZeiger kern;
    const std::vector<Ziel> ziele;

    bool abgebrochen() const { return abgebrochen_.load(); }
    // Darf aus jedem Thread gerufen werden; die Suche endet vor ihrem nächsten Schritt.
    void abbrechen() { abgebrochen_ = true; }
    // Wie abbrechen, hält aber auch die laufenden Kernläufe an: die Suche endet
    // dann mit KernFehler(Prozess::abgebrochen). Für das Programmende.
    void anhalten() {
        abgebrochen_ = true;
        stopp_.request_stop();
    }

    // Kosten eines Punkts (Variablenname → Wert). Je verschiedener Zielfrequenz
    // ein Kernlauf, alle parallel: das Deck verlangt mit einer FR-Karte genau diese
    // Frequenz, ohne Nahfeldkarten und, wenn kein Ziel Gewinn oder Vor-Rück braucht,
    // ohne RP-Karten. Der Kern meldet die Frequenz gerundet (nec2c: fünf Stellen);
    // das Ergebnis eines Laufs gilt als bei genau seiner Zielfrequenz gerechnet.
    // Liefert ein Lauf seine Frequenz nicht, zählen die Ziele dort wie ohne Impedanz
    // und Diagramm. Fehler von Deck und Kern werden geworfen.
    double kosten(const Werte& werte) const;

    // Die Suche; meldet nach der Startbewertung (Schritt 0) und nach jedem Schritt.
    // Ein Schritt: Reflexion r; ist r besser als die beste Ecke, gewinnt die bessere
    // von Expansion und r; sonst wird r angenommen, wenn es besser als die
    // zweitschlechteste Ecke ist; sonst Kontraktion, und scheitert sie, Schrumpfen.
    // Gibt den besten Punkt zurück. Wirft KernFehler ohne markierte Variable und bei
    // einem Modell, das Modellpruefung::umfangPruefen ablehnt.
    Werte starten(int maxSchritte, const std::function<void(const Stand&)>& fortschritt);

    // Bisherige Kernläufe dieses Objekts (für Messungen).
    long kernlaeufe() const { return laeufe_.load(); }

    // Summe der Zielterme über die Frequenzergebnisse; ein Ziel zählt nur bei
    // genau seiner Frequenz.
    static double kostenAus(const std::vector<FrequenzErgebnis>& frequenzen, const std::vector<Ziel>& ziele,
                            double z0);

    // Die Werte ins Modell übernehmen: jede Variable dieses Namens erhält den Wert
    // als Formel mit fünf gültigen Stellen ("%.5g"); unbekannte Namen entfallen.
    static Modell uebernehmen(Modell modell, const Werte& werte);

  private:
    // Kosten mehrerer Punkte in einer Aufgabengruppe: ein Kernlauf je Punkt und Zielfrequenz.
    std::vector<double> kostenVieler(const std::vector<Werte>& punkte) const;

    std::size_t parallel_;
    bool vorausrechnen_;
    std::vector<double> frequenzen_;  // verschiedene endliche Zielfrequenzen
    std::vector<Modell> laufModelle_; // je Zielfrequenz: Modell mit genau dieser FR-Karte
    std::atomic<bool> abgebrochen_{false};
    std::stop_source stopp_;
    mutable std::atomic<long> laeufe_{0};
};

} // namespace NECKern
