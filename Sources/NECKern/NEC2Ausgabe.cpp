#include "NECKern/NEC2Ausgabe.hpp"

#include "NECKern/Unicode.hpp"

#include <array>
#include <charconv>
#include <cmath>
#include <cstring>
#include <limits>
#include <unordered_map>

namespace NECKern::NEC2Ausgabe {

namespace {

// Ein Bericht hat zehntausende Zeilen: sie werden als Ausschnitte des Texts
// gelesen, nie kopiert. CR LF und einzelnes CR gelten wie LF als Zeilenende.
class Zeilen {
  public:
    explicit Zeilen(std::string_view text)
        : text_(text), mitCR_(std::memchr(text.data(), '\r', text.size()) != nullptr) {}

    bool naechste(std::string_view& zeile) {
        if (pos_ > text_.size()) return false;
        const char* anfang = text_.data() + pos_;
        const std::size_t rest = text_.size() - pos_;
        const char* ende = mitCR_ ? zeilenendeMitCR(anfang, rest)
                                  : static_cast<const char*>(std::memchr(anfang, '\n', rest));
        if (!ende) {
            zeile = std::string_view(anfang, rest);
            pos_ = text_.size() + 1; // die letzte Zeile hat kein LF
            return true;
        }
        zeile = std::string_view(anfang, static_cast<std::size_t>(ende - anfang));
        pos_ += zeile.size() + 1;
        if (*ende == '\r' && pos_ < text_.size() && text_[pos_] == '\n') ++pos_;
        return true;
    }

    std::size_t stelle() const { return pos_; }
    void zurueck(std::size_t stelle) { pos_ = stelle; }

  private:
    static const char* zeilenendeMitCR(const char* p, std::size_t n) {
        for (std::size_t i = 0; i < n; ++i)
            if (p[i] == '\n' || p[i] == '\r') return p + i;
        return nullptr;
    }

    std::string_view text_;
    bool mitCR_;
    std::size_t pos_ = 0;
};

bool enthaelt(std::string_view zeile, std::string_view teil) {
    return zeile.find(teil) != std::string_view::npos;
}

// Ein Stück ganz als Dezimalzahl; wie beim üblichen Zahlenleser auch mit „+“,
// „nan“ und „inf“. Über- und Unterlauf ergeben ±∞ bzw. ±0.
bool umwandeln(std::string_view stueck, double& wert) {
    if (!stueck.empty() && stueck.front() == '+') {
        stueck.remove_prefix(1);
        if (stueck.empty() || stueck.front() == '-' || stueck.front() == '+') return false;
    }
    const char* ende = stueck.data() + stueck.size();
    auto [ptr, fehler] = std::from_chars(stueck.data(), ende, wert, std::chars_format::general);
    if (ptr != ende) return false;
    if (fehler == std::errc()) return true;
    if (fehler != std::errc::result_out_of_range) return false;
    const bool negativ = stueck.front() == '-';
    const auto e = stueck.find_first_of("eE");
    const bool unterlauf = e != std::string_view::npos && e + 1 < stueck.size() && stueck[e + 1] == '-';
    wert = unterlauf ? 0.0 : std::numeric_limits<double>::infinity();
    if (negativ) wert = -wert;
    return true;
}

// Ruft f für jede Zahl der Zeile auf, bis f false liefert.
template <typename F> void jedeZahl(std::string_view zeile, F&& f) {
    std::size_t i = 0;
    const std::size_t n = zeile.size();
    while (i < n) {
        while (i < n && zeile[i] == ' ')
            ++i;
        const std::size_t anfang = i;
        while (i < n && zeile[i] != ' ')
            ++i;
        if (i == anfang) break;
        double wert;
        if (umwandeln(zeile.substr(anfang, i - anfang), wert) && !f(wert)) return;
    }
}

constexpr std::size_t maxSpalten = 12;
using Reihe = std::array<double, maxSpalten>;

// Liest höchstens `hoechstens` (≤ maxSpalten) Zahlen; Rückgabe: wie viele.
std::size_t zahlenLesen(std::string_view zeile, Reihe& r, std::size_t hoechstens) {
    std::size_t anzahl = 0;
    jedeZahl(zeile, [&](double x) {
        r[anzahl++] = x;
        return anzahl < hoechstens;
    });
    return anzahl;
}

std::optional<double> ersteZahl(std::string_view text) {
    std::optional<double> wert;
    jedeZahl(text, [&](double x) {
        wert = x;
        return false;
    });
    return wert;
}

// Ganzzahlspalte: endlich und im Bereich von int64, sonst ist die Zeile unbrauchbar.
bool ganz(double x, std::int64_t& aus) {
    constexpr double grenze = 9223372036854775808.0; // 2^63
    if (!(x >= -grenze && x < grenze)) return false;
    aus = static_cast<std::int64_t>(x);
    return true;
}

// Tabelle nach einem Titel: bis zur ersten Zeile, die mit einer Zahl beginnt,
// überspringen; dann Zeilen nehmen, solange sie mit einer Zahl beginnen und
// mindestens `minimum` Zahlen haben. Die erste andere Zeile bleibt ungelesen.
// Gelesen werden nur so viele Zahlen, wie der Abschnitt braucht (`hoechstens`):
// die Diagrammzeilen, der Grossteil eines Berichts, brauchen fünf von zwölf.
// Dass auch Folgezeilen mit einer Zahl beginnen müssen, hält Zeilen wie
// „DATA CARD No: 5 NE 0 1 1 2 …“ direkt unter dem Diagramm aus der Tabelle.
template <typename F> void tabelle(Zeilen& zeilen, std::size_t minimum, std::size_t hoechstens, F&& reihe) {
    std::string_view zeile;
    std::size_t vorher;
    do {
        vorher = zeilen.stelle();
        if (!zeilen.naechste(zeile)) return;
    } while (!beginntMitZahl(zeile));
    for (;;) {
        Reihe r;
        const std::size_t n = zahlenLesen(zeile, r, hoechstens);
        if (n < minimum) break;
        reihe(r, n);
        vorher = zeilen.stelle();
        if (!zeilen.naechste(zeile)) return;
        if (!beginntMitZahl(zeile)) break;
    }
    zeilen.zurueck(vorher);
}

double frequenzAusZeile(std::string_view zeile) {
    const auto ende = zeile.find_last_not_of(":=");
    if (ende == std::string_view::npos) return 0;
    const auto anfang = zeile.find_last_of(":=", ende);
    const auto stueck = anfang == std::string_view::npos ? zeile.substr(0, ende + 1)
                                                         : zeile.substr(anfang + 1, ende - anfang);
    if (auto wert = ersteZahl(stueck)) return *wert;
    const auto wortAnfang = stueck.find_first_not_of(' ');
    if (wortAnfang == std::string_view::npos) return 0;
    const auto wort = stueck.substr(wortAnfang, stueck.find(' ', wortAnfang) - wortAnfang);
    double wert;
    return umwandeln(wort, wert) ? wert : 0;
}

std::optional<double> wertNachGleich(std::string_view zeile) {
    const auto gleich = zeile.rfind('=');
    return ersteZahl(gleich == std::string_view::npos ? zeile : zeile.substr(gleich + 1));
}

std::string_view trimmen(std::string_view s) {
    const auto anfang = s.find_first_not_of(" \t");
    if (anfang == std::string_view::npos) return {};
    return s.substr(anfang, s.find_last_not_of(" \t") - anfang + 1);
}

bool istZahl(std::string_view rest) {
    if (rest.empty()) return false;
    const auto c = static_cast<unsigned char>(rest.front());
    if (c >= '0' && c <= '9') return true;
    if (c < 0x80) return false;
    return Unicode::istZahlzeichen(rest);
}

class Leser {
  public:
    explicit Leser(std::string_view text) : zeilen_(text) {
        boden_ = enthaelt(text, "GROUND PLANE SPECIFIED") || enthaelt(text, "FINITE GROUND") ||
                 enthaelt(text, "PERFECT GROUND");
    }

    NECErgebnis lesen() {
        std::string_view zeile;
        while (zeilen_.naechste(zeile))
            zeileLesen(zeile);
        abschliessen();
        NECErgebnis e;
        e.frequenzen = std::move(fertig_);
        e.warnungen = std::move(warnungen_);
        return e;
    }

  private:
    void zeileLesen(std::string_view zeile) {
        if (enthaelt(zeile, "SEGMENTATION DATA")) return geometrie();
        if (enthaelt(zeile, "FREQUENCY :") || enthaelt(zeile, "FREQUENCY:") || enthaelt(zeile, "FREQUENCY="))
            neueFrequenz(frequenzAusZeile(zeile));
        if (enthaelt(zeile, "ANTENNA INPUT PARAMETERS")) return quellen();
        if (enthaelt(zeile, "CURRENTS AND LOCATION")) return stroeme();
        if (enthaelt(zeile, "NEAR ELECTRIC FIELDS") || enthaelt(zeile, "NEAR MAGNETIC FIELDS"))
            return nahfeld(enthaelt(zeile, "ELECTRIC"));
        if (offen_) {
            if (enthaelt(zeile, "INPUT POWER")) offen_->leistungEingang = wertNachGleich(zeile);
            if (enthaelt(zeile, "RADIATED POWER")) offen_->leistungAbgestrahlt = wertNachGleich(zeile);
            if (enthaelt(zeile, "EFFICIENCY")) offen_->wirkungsgrad = wertNachGleich(zeile);
        }
        if (enthaelt(zeile, "RADIATION PATTERNS")) return diagramm();
        if (enthaelt(zeile, "ERROR") || enthaelt(zeile, "WARNING"))
            warnungen_.push_back(Unicode::reparieren(trimmen(zeile)));
    }

    void abschliessen() {
        if (offen_) fertig_.push_back(std::move(*offen_));
        offen_.reset();
    }

    void neueFrequenz(double mhz) {
        abschliessen();
        offen_.emplace();
        offen_->mhz = mhz;
        offen_->mitBoden = boden_;
    }

    void geometrie() {
        tabelle(zeilen_, 12, 12, [&](const Reihe& r, std::size_t) {
            Segment s;
            std::int64_t vorher, nachher;
            if (!ganz(r[0], s.nummer) || !ganz(r[8], vorher) || !ganz(r[10], nachher) || !ganz(r[11], s.tag))
                return;
            s.x = r[1];
            s.y = r[2];
            s.z = r[3];
            s.laenge = r[4];
            s.alpha = r[5];
            s.beta = r[6];
            s.radius = r[7];
            s.vorher = vorher;
            s.nachher = nachher;
            segmente_.insert_or_assign(s.nummer, s);
        });
    }

    void quellen() {
        tabelle(zeilen_, 9, 12, [&](const Reihe& r, std::size_t n) {
            Quelle q;
            if (!offen_ || !ganz(r[0], q.tag) || !ganz(r[1], q.segment)) return;
            const std::size_t o = n < 12 ? 2 : 3;
            q.spannung = {r[o], r[o + 1]};
            q.strom = {r[o + 2], r[o + 3]};
            q.impedanz = {r[o + 4], r[o + 5]};
            if (!offen_->impedanz) offen_->impedanz = q.impedanz;
            offen_->quellen.push_back(q);
        });
    }

    void stroeme() {
        if (!offen_) return tabelle(zeilen_, 10, 10, [](const Reihe&, std::size_t) {});
        const double lambda = offen_->mhz > 0 ? 299.792458 / offen_->mhz : 1.0;
        tabelle(zeilen_, 10, 10, [&](const Reihe& r, std::size_t) {
            std::int64_t nummer;
            if (!ganz(r[0], nummer)) return;
            Segment s;
            if (auto it = segmente_.find(nummer); it != segmente_.end()) {
                s = it->second;
            } else {
                if (!ganz(r[1], s.tag)) return;
                s.nummer = nummer;
                s.x = r[2] * lambda;
                s.y = r[3] * lambda;
                s.z = r[4] * lambda;
                s.laenge = r[5] * lambda;
            }
            s.strom = {r[6], r[7]};
            offen_->segmente.push_back(s);
            offen_->stroemeGeliefert = true;
        });
    }

    void nahfeld(bool elektrisch) {
        tabelle(zeilen_, 9, 9, [&](const Reihe& r, std::size_t) {
            if (!offen_) return;
            Nahfeldpunkt p{r[0], r[1], r[2], {r[3], r[5], r[7]}, {r[4], r[6], r[8]}};
            (elektrisch ? offen_->nahfeldE : offen_->nahfeldH).push_back(std::move(p));
        });
    }

    void diagramm() {
        tabelle(zeilen_, 5, 5, [&](const Reihe& r, std::size_t) {
            if (offen_) offen_->diagramm.push_back({r[0], r[1], r[2], r[3], r[4]});
        });
    }

    Zeilen zeilen_;
    bool boden_ = false;
    std::unordered_map<std::int64_t, Segment> segmente_;
    std::vector<FrequenzErgebnis> fertig_;
    std::vector<std::string> warnungen_;
    std::optional<FrequenzErgebnis> offen_;
};

} // namespace

NECErgebnis lesen(std::string_view text) {
    return Leser(text).lesen();
}

std::vector<double> zahlen(std::string_view zeile) {
    std::vector<double> werte;
    jedeZahl(zeile, [&](double x) {
        werte.push_back(x);
        return true;
    });
    return werte;
}

bool beginntMitZahl(std::string_view zeile) {
    const auto anfang = zeile.find_first_not_of(" \t");
    if (anfang == std::string_view::npos) return false;
    auto rest = zeile.substr(anfang);
    const char c = rest.front();
    if (c != '-' && c != '+' && c != '.') return istZahl(rest);
    rest.remove_prefix(1);
    const auto ziffer = rest.find_first_not_of('.');
    return ziffer != std::string_view::npos && istZahl(rest.substr(ziffer));
}

} // namespace NECKern::NEC2Ausgabe
