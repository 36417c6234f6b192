// Das Bild der 3D-Ansicht: Boden, Achsen, Drähte und Körper nach Tiefe sortiert,
// darüber Marken, Legenden, Hinweise und Massstab.
#include "Fenster/Ansicht3D/Ansicht3D.hpp"
#include "Fenster/Ansicht3D/Farbskala.hpp"
#include "Fenster/Ansicht3D/Masstab.hpp"

#include <QFontMetricsF>
#include <QLinearGradient>
#include <QPainter>
#include <algorithm>
#include <array>
#include <cmath>
#include <fmt/format.h>
#include <functional>
#include <utility>
#include <vector>

namespace {

using namespace Raumbild;

const QColor hintergrund(250, 250, 251);
const QColor drahtFarbe(52, 58, 68);
const QColor saumFarbe(30, 33, 40);
const QColor hervorFarbe(255, 150, 30);
const QColor textFarbe(60, 64, 72);
const QColor hinweisFarbe(165, 82, 0);
const QColor speiseFarbe(220, 40, 30);
const QColor lastFarbe(245, 170, 0);

constexpr double koerperDeckkraft = 0.5;

enum class Farbmodus { schlicht, betrag, momentan };

// Was ein Bild ausser der Szene braucht.
struct Bild {
    const Szene& szene;
    const Projektion& p;
    Farbmodus modus;
    bool db;
    double phase;
    std::optional<std::int64_t> hervorgehoben;
    bool koerper;
};

QFont kleineSchrift(const QFont& schrift) {
    QFont klein = schrift;
    klein.setPointSizeF(schrift.pointSizeF() * 0.85);
    return klein;
}

QString q(const std::string& text) {
    return QString::fromStdString(text);
}

// Die Breite wächst mit dem Drahtradius, bleibt aber lesbar und überdeckt nichts.
double strichbreite(const Drahtstueck& s, const Projektion& p) {
    return std::clamp(2 * s.radius * p.massstab, 2.5, 12.0);
}

QColor stueckFarbe(const Drahtstueck& s, const Bild& b) {
    const double maximum = b.szene.maxStrom;
    switch (b.modus) {
    case Farbmodus::momentan:
        return Farbskala::momentan((s.strom.re * std::cos(b.phase) - s.strom.im * std::sin(b.phase)) /
                                   maximum);
    case Farbmodus::betrag:
        if (b.db) return Farbskala::strom(20 * std::log10(s.betrag / maximum) / Diagrammnetz::dynamik + 1);
        return Farbskala::strom(s.betrag / maximum);
    case Farbmodus::schlicht:
        break;
    }
    return drahtFarbe;
}

// Der Schein unter dem im Editor gewählten Draht, vor allem anderen gemalt, damit er
// nichts verdeckt.
void hervorhebungMalen(QPainter& maler, const Bild& b) {
    if (!b.hervorgehoben) return;
    for (const auto& s : b.szene.stuecke) {
        if (s.tag != *b.hervorgehoben) continue;
        maler.setPen(QPen(hervorFarbe, strichbreite(s, b.p) + 8, Qt::SolidLine, Qt::RoundCap));
        maler.drawLine(b.p.bild(s.anfang), b.p.bild(s.ende));
    }
}

// Drähte einer Folge ohne Körperteile dazwischen: erst alle Säume, dann die Farben,
// sonst läge der dunkle Saum eines Segments als Punkt über dem Nachbarn. Eckige Enden
// schliessen Knicke ohne die teuren Rundungen.
void stueckeMalen(QPainter& maler, const Bild& b, const std::vector<std::int32_t>& folge) {
    const auto& stuecke = b.szene.stuecke;
    auto linie = [&](std::int32_t i) {
        const auto& s = stuecke[static_cast<std::size_t>(i)];
        return QLineF(b.p.bild(s.anfang), b.p.bild(s.ende));
    };
    auto breite = [&](std::int32_t i) { return strichbreite(stuecke[static_cast<std::size_t>(i)], b.p); };
    QPen stift(drahtFarbe, 1, Qt::SolidLine, Qt::SquareCap);
    if (b.modus != Farbmodus::schlicht) {
        // Ein dunkler Saum hält auch die hellen Enden der Skala vom Hintergrund ab.
        stift.setColor(saumFarbe);
        for (auto i : folge) {
            stift.setWidthF(breite(i) + 2);
            maler.setPen(stift);
            maler.drawLine(linie(i));
        }
    }
    for (auto i : folge) {
        if (b.modus != Farbmodus::schlicht)
            stift.setColor(stueckFarbe(stuecke[static_cast<std::size_t>(i)], b));
        stift.setWidthF(breite(i));
        maler.setPen(stift);
        maler.drawLine(linie(i));
    }
}

struct Netzbild {
    std::vector<QPointF> punkte;
    std::vector<double> tiefe;
};

Netzbild netzProjizieren(const Bild& b) {
    Netzbild nb;
    const auto& netz = b.szene.netz;
    nb.punkte.resize(netz.punkte.size());
    nb.tiefe.resize(netz.punkte.size());
    for (std::size_t i = 0; i < netz.punkte.size(); ++i) {
        const Vek3 p = b.szene.koerperPunkt(i);
        nb.punkte[i] = b.p.bild(p);
        nb.tiefe[i] = b.p.tiefe(p);
    }
    return nb;
}

// Gefärbt nach dem mittleren Gewinn, schattiert nach der Neigung zum Betrachter, damit
// der Körper trotz Durchsicht räumlich wirkt.
QColor viereckFarbe(const Bild& b, const std::array<std::int32_t, 4>& v) {
    const auto& netz = b.szene.netz;
    auto punkt = [&](int k) { return netz.punkte[static_cast<std::size_t>(v[static_cast<std::size_t>(k)])]; };
    double gewinn = 0;
    for (auto k : v)
        gewinn += netz.gewinn[static_cast<std::size_t>(k)] / 4;
    const Vek3 normale = (punkt(2) - punkt(0)).kreuz(punkt(3) - punkt(1));
    const double laenge = normale.laenge();
    const double neigung = laenge > 0 ? std::fabs(normale.punkt(b.p.zumBetrachter)) / laenge : 1;
    QColor farbe = Farbskala::gewinn((gewinn - netz.maximum) / Diagrammnetz::dynamik + 1);
    const double licht = 0.55 + 0.45 * neigung;
    farbe.setRgbF(static_cast<float>(farbe.redF() * licht), static_cast<float>(farbe.greenF() * licht),
                  static_cast<float>(farbe.blueF() * licht), static_cast<float>(koerperDeckkraft));
    return farbe;
}

// Drähte und Körpervierecke von hinten nach vorn, damit Nahes Fernes verdeckt.
void tiefensortiertMalen(QPainter& maler, const Bild& b) {
    struct Element {
        double tiefe;
        std::int32_t index;
        bool viereck;
    };
    const auto& stuecke = b.szene.stuecke;
    const auto& vierecke = b.szene.netz.vierecke;
    std::vector<Element> elemente;
    elemente.reserve(stuecke.size() + (b.koerper ? vierecke.size() : 0));
    for (std::size_t i = 0; i < stuecke.size(); ++i)
        elemente.push_back({b.p.tiefe(stuecke[i].mitte), static_cast<std::int32_t>(i), false});
    Netzbild nb;
    if (b.koerper) {
        nb = netzProjizieren(b);
        for (std::size_t i = 0; i < vierecke.size(); ++i) {
            double tiefe = 0;
            for (auto k : vierecke[i])
                tiefe += nb.tiefe[static_cast<std::size_t>(k)] / 4;
            elemente.push_back({tiefe, static_cast<std::int32_t>(i), true});
        }
    }
    std::sort(elemente.begin(), elemente.end(),
              [](const Element& x, const Element& y) { return x.tiefe < y.tiefe; });

    const QPen netzlinie(QColor(0, 0, 0, 16), 0);
    std::vector<std::int32_t> folge;
    auto folgeMalen = [&] {
        if (folge.empty()) return;
        maler.setRenderHint(QPainter::Antialiasing, true);
        stueckeMalen(maler, b, folge);
        folge.clear();
    };
    for (const auto& e : elemente) {
        const auto i = static_cast<std::size_t>(e.index);
        if (!e.viereck) {
            folge.push_back(e.index);
            continue;
        }
        folgeMalen();
        // Ohne Kantenglättung bleiben zwischen durchsichtigen Nachbarn keine Nähte.
        maler.setRenderHint(QPainter::Antialiasing, false);
        const auto& v = vierecke[i];
        const std::array<QPointF, 4> ecken{
            nb.punkte[static_cast<std::size_t>(v[0])], nb.punkte[static_cast<std::size_t>(v[1])],
            nb.punkte[static_cast<std::size_t>(v[2])], nb.punkte[static_cast<std::size_t>(v[3])]};
        maler.setPen(netzlinie);
        maler.setBrush(viereckFarbe(b, v));
        maler.drawConvexPolygon(ecken.data(), 4);
    }
    folgeMalen();
    maler.setRenderHint(QPainter::Antialiasing, true);
}

// Gitter in der Ebene z = 0 unter der Antenne, in runden Schritten.
void bodenMalen(QPainter& maler, const Bild& b) {
    const auto& g = b.szene.grenzen;
    const double halb =
        std::max({(g.max.x - g.min.x) * 0.7, (g.max.y - g.min.y) * 0.7, g.diagonale() * 0.5, 1e-3});
    const double schritt = Masstab::schritt(2 * halb / 10);
    if (!(schritt > 0)) return;
    const double mx = std::round((g.min.x + g.max.x) / 2 / schritt) * schritt;
    const double my = std::round((g.min.y + g.max.y) / 2 / schritt) * schritt;
    const int n = static_cast<int>(std::ceil(halb / schritt));
    const double r = n * schritt;
    const std::array<QPointF, 4> flaeche{b.p.bild({mx - r, my - r, 0}), b.p.bild({mx + r, my - r, 0}),
                                         b.p.bild({mx + r, my + r, 0}), b.p.bild({mx - r, my + r, 0})};
    maler.setPen(Qt::NoPen);
    maler.setBrush(QColor(150, 130, 90, 28));
    maler.drawConvexPolygon(flaeche.data(), 4);
    maler.setPen(QPen(QColor(120, 110, 90, 110), 0));
    for (int k = -n; k <= n; ++k) {
        const double d = k * schritt;
        maler.drawLine(b.p.bild({mx + d, my - r, 0}), b.p.bild({mx + d, my + r, 0}));
        maler.drawLine(b.p.bild({mx - r, my + d, 0}), b.p.bild({mx + r, my + d, 0}));
    }
}

const std::array<std::pair<Vek3, QColor>, 3> achsen{
    {{{1, 0, 0}, QColor(200, 40, 40)}, {{0, 1, 0}, QColor(30, 150, 50)}, {{0, 0, 1}, QColor(40, 90, 210)}}};
const std::array<const char*, 3> achsNamen{"x", "y", "z"};

void achsenMalen(QPainter& maler, const Bild& b) {
    const double laenge = Masstab::schritt(std::max(b.szene.grenzen.diagonale(), 1e-3) / 3);
    const QPointF ursprung = b.p.bild({});
    for (std::size_t i = 0; i < achsen.size(); ++i) {
        const auto& [richtung, farbe] = achsen[i];
        const QPointF spitze = b.p.bild(richtung * laenge);
        maler.setPen(QPen(farbe, 1.5));
        maler.drawLine(ursprung, spitze);
        const QPointF weiter = spitze - ursprung;
        const double l = std::hypot(weiter.x(), weiter.y());
        const QPointF aussen = l > 1 ? spitze + weiter * (9 / l) : spitze + QPointF(6, -6);
        maler.drawText(QRectF(aussen - QPointF(8, 8), QSizeF(16, 16)), Qt::AlignCenter, achsNamen[i]);
    }
}

// Kleines Achsenkreuz in der Ecke: die Lage der Achsen, auch wenn der Ursprung ausserhalb liegt.
void kreuzMalen(QPainter& maler, const Bild& b, const QPointF& mitte) {
    constexpr double laenge = 20;
    std::array<std::size_t, 3> reihe{0, 1, 2};
    auto tiefe = [&](std::size_t i) { return achsen[i].first.punkt(b.p.zumBetrachter); };
    std::sort(reihe.begin(), reihe.end(), [&](std::size_t x, std::size_t y) { return tiefe(x) < tiefe(y); });
    for (auto i : reihe) {
        const auto& [richtung, farbe] = achsen[i];
        const QPointF spitze =
            mitte + QPointF(richtung.punkt(b.p.rechts), -richtung.punkt(b.p.oben)) * laenge;
        maler.setPen(QPen(farbe, 2, Qt::SolidLine, Qt::RoundCap));
        maler.drawLine(mitte, spitze);
        const QPointF richtungImBild = spitze - mitte;
        const double l = std::hypot(richtungImBild.x(), richtungImBild.y());
        const QPointF aussen = l > 1 ? spitze + richtungImBild * (8 / l) : spitze;
        maler.drawText(QRectF(aussen - QPointF(8, 8), QSizeF(16, 16)), Qt::AlignCenter, achsNamen[i]);
    }
}

void massstabMalen(QPainter& maler, const Bild& b, const QRectF& rahmen) {
    const double meter = Masstab::schritt(110 / b.p.massstab);
    if (!(meter > 0)) return;
    const double laenge = meter * b.p.massstab;
    const QPointF links(rahmen.left() + 16, rahmen.bottom() - 14);
    const QPointF rechts = links + QPointF(laenge, 0);
    maler.setPen(QPen(textFarbe, 1.5));
    maler.drawLine(links, rechts);
    maler.drawLine(links, links - QPointF(0, 5));
    maler.drawLine(rechts, rechts - QPointF(0, 5));
    maler.drawText(QRectF(links.x(), links.y() - 22, laenge, 16), Qt::AlignCenter, q(Masstab::text(meter)));
    kreuzMalen(maler, b, {rahmen.left() + 40, rahmen.bottom() - 68});
}

void markenMalen(QPainter& maler, const Bild& b) {
    maler.setPen(QPen(Qt::white, 1.5));
    for (const auto& s : b.szene.stuecke) {
        if (!s.last) continue;
        const QPointF m = b.p.bild(s.mitte);
        // Grösser als die Speisemarke: sitzen beide auf einem Segment, bleibt die Raute sichtbar.
        const std::array<QPointF, 4> raute{m + QPointF(0, -8.5), m + QPointF(8.5, 0), m + QPointF(0, 8.5),
                                           m + QPointF(-8.5, 0)};
        maler.setBrush(lastFarbe);
        maler.drawConvexPolygon(raute.data(), 4);
    }
    for (const auto& s : b.szene.stuecke) {
        if (!s.speisung) continue;
        maler.setBrush(speiseFarbe);
        maler.drawEllipse(b.p.bild(s.mitte), 5.5, 5.5);
    }
}

// Erklärt die Marken unten rechts, über dem Bedienhinweis des Bildschirms.
void markenLegende(QPainter& maler, const Bild& b, const QRectF& rahmen) {
    const bool speisung = std::any_of(b.szene.stuecke.begin(), b.szene.stuecke.end(),
                                      [](const Drahtstueck& s) { return s.speisung; });
    const bool last = std::any_of(b.szene.stuecke.begin(), b.szene.stuecke.end(),
                                  [](const Drahtstueck& s) { return s.last; });
    const QFontMetricsF fm(maler.font());
    double x = rahmen.right() - 10;
    const double y = rahmen.bottom() - 30;
    auto eintrag = [&](const QString& text, const QColor& farbe, bool raute) {
        x -= fm.horizontalAdvance(text);
        maler.setPen(textFarbe);
        maler.drawText(QPointF(x, y + fm.ascent() / 2 - 1), text);
        x -= 12;
        maler.setPen(QPen(Qt::white, 1.5));
        maler.setBrush(farbe);
        if (raute) {
            const std::array<QPointF, 4> r{QPointF(x, y - 6), QPointF(x + 6, y), QPointF(x, y + 6),
                                           QPointF(x - 6, y)};
            maler.drawConvexPolygon(r.data(), 4);
        } else {
            maler.drawEllipse(QPointF(x, y), 5.5, 5.5);
        }
        x -= 18;
    };
    if (last) eintrag("Last", lastFarbe, true);
    if (speisung) eintrag("Speisung", speiseFarbe, false);
}

struct Legendenmass {
    QRectF balken;
    QRectF titel;
    QRectF ganz; // Balken und Beschriftung, zum Anklicken
};

Legendenmass legendenmass(const QRectF& rahmen, int platz) {
    const double hoehe = std::clamp((rahmen.height() - 130) / 2, 50.0, 150.0);
    const double oben = rahmen.top() + 12 + platz * (hoehe + 48);
    Legendenmass m;
    m.balken = QRectF(rahmen.right() - 66, oben + 22, 12, hoehe);
    m.titel = QRectF(rahmen.right() - 246, oben, 240, 18);
    m.ganz = QRectF(rahmen.right() - 72, oben + 16, 72, hoehe + 14);
    return m;
}

void legendeMalen(QPainter& maler, const Legendenmass& m, const QString& titel,
                  const std::function<QColor(double)>& farbe,
                  const std::vector<std::pair<double, std::string>>& marken) {
    QLinearGradient verlauf(m.balken.bottomLeft(), m.balken.topLeft());
    for (int i = 0; i <= 10; ++i)
        verlauf.setColorAt(i / 10.0, farbe(i / 10.0));
    maler.setPen(QPen(textFarbe, 0.8));
    maler.setBrush(verlauf);
    maler.drawRect(m.balken);
    maler.drawText(m.titel, Qt::AlignRight | Qt::AlignVCenter, titel);
    for (const auto& [t, text] : marken) {
        const double y = m.balken.bottom() - t * m.balken.height();
        maler.drawLine(QPointF(m.balken.right(), y), QPointF(m.balken.right() + 4, y));
        maler.drawText(QRectF(m.balken.right() + 6, y - 8, 50, 16), Qt::AlignLeft | Qt::AlignVCenter,
                       q(text));
    }
}

void stromLegendeMalen(QPainter& maler, const Bild& b, const Legendenmass& m) {
    const double ma = b.szene.maxStrom * 1000;
    const std::string einheit = b.szene.jeVolt ? "mA/V" : "mA";
    if (b.modus == Farbmodus::momentan) {
        legendeMalen(maler, m, q("Momentanstrom in " + einheit),
                     [](double t) { return Farbskala::momentan(2 * t - 1); },
                     {{1, fmt::format("{:.3g}", ma)}, {0.5, "0"}, {0, fmt::format("{:.3g}", -ma)}});
        return;
    }
    if (b.db) {
        legendeMalen(maler, m, "|I| in dB", Farbskala::strom,
                     {{1, "0"}, {2 / 3.0, "-10"}, {1 / 3.0, "-20"}, {0, "-30"}});
        return;
    }
    legendeMalen(maler, m, q("|I| in " + einheit), Farbskala::strom,
                 {{1, fmt::format("{:.3g}", ma)}, {0.5, fmt::format("{:.3g}", ma / 2)}, {0, "0"}});
}

void gewinnLegendeMalen(QPainter& maler, const Bild& b, const Legendenmass& m) {
    const double g = b.szene.netz.maximum;
    std::vector<std::pair<double, std::string>> marken;
    for (int k = 0; k <= 3; ++k)
        marken.emplace_back(1 - k / 3.0, fmt::format("{:.1f}", g - 10 * k));
    legendeMalen(maler, m, "Gewinn in dBi", Farbskala::gewinn, marken);
}

std::vector<QString> hinweise(const Szene& szene, bool koerper) {
    std::vector<QString> zeilen;
    if (!szene.stroeme) zeilen.push_back("Dieser Kern liefert keine Segmentströme");
    if (koerper && szene.netz.art == Diagrammnetz::Art::keinDiagramm)
        zeilen.push_back("Ohne Strahlungsdiagramm gibt es kein 3D-Diagramm.");
    if (koerper && szene.netz.art == Diagrammnetz::Art::schnitt)
        zeilen.push_back("Das Diagramm ist nur ein Schnitt; der Körper braucht ein Raster aus θ und φ.");
    return zeilen;
}

void kopfMalen(QPainter& maler, const Szene& szene, bool koerper, const QRectF& rahmen) {
    const QFontMetricsF fm(maler.font());
    double y = rahmen.top() + 8 + fm.ascent();
    maler.setPen(textFarbe);
    maler.drawText(QPointF(rahmen.left() + 10, y), q(fmt::format("{:.6g} MHz", szene.mhz)));
    maler.setPen(hinweisFarbe);
    for (const auto& zeile : hinweise(szene, koerper)) {
        y += fm.lineSpacing();
        maler.drawText(QPointF(rahmen.left() + 10, y), zeile);
    }
}

} // namespace

QRectF Ansicht3D::stromLegende(const QRectF& rahmen) const {
    const bool betrag = szene_ && szene_->stroeme && szene_->maxStrom > 0 && strom_ && !animationLaeuft();
    return betrag ? legendenmass(rahmen, 0).ganz : QRectF();
}

void Ansicht3D::malen(QPainter& maler, const QRectF& rahmen) const {
    maler.save();
    maler.setClipRect(rahmen);
    maler.fillRect(rahmen, hintergrund);
    maler.setRenderHint(QPainter::Antialiasing, true);
    maler.setRenderHint(QPainter::TextAntialiasing, true);
    maler.setFont(font());
    if (!szene_) {
        QFont gross = font();
        gross.setPointSizeF(font().pointSizeF() * 1.3);
        maler.setFont(gross);
        maler.setPen(QColor(130, 134, 142));
        maler.drawText(rahmen, Qt::AlignCenter, "Noch nicht gerechnet");
        maler.restore();
        return;
    }

    const auto& szene = *szene_;
    const auto p = projektion(rahmen);
    const bool stroeme = szene.stroeme && szene.maxStrom > 0;
    Farbmodus modus = Farbmodus::schlicht;
    if (stroeme && animationLaeuft())
        modus = Farbmodus::momentan;
    else if (stroeme && strom_)
        modus = Farbmodus::betrag;
    const bool koerper = diagramm3D_ && szene.netz.art == Diagrammnetz::Art::koerper;
    const Bild b{szene, p, modus, stromInDb_, phase_, hervorgehoben_, koerper};

    if (szene.mitBoden) bodenMalen(maler, b);
    maler.setFont(kleineSchrift(font()));
    achsenMalen(maler, b);
    hervorhebungMalen(maler, b);
    tiefensortiertMalen(maler, b);
    markenMalen(maler, b);
    markenLegende(maler, b, rahmen);
    int platz = 0;
    if (modus != Farbmodus::schlicht) stromLegendeMalen(maler, b, legendenmass(rahmen, platz++));
    if (koerper) gewinnLegendeMalen(maler, b, legendenmass(rahmen, platz));
    massstabMalen(maler, b, rahmen);
    maler.setFont(font());
    kopfMalen(maler, szene, diagramm3D_, rahmen);
    maler.restore();
}
