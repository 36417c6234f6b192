#include "Fenster/Diagramme/GangDiagramm.hpp"

#include "Fenster/Diagramme/Achsen.hpp"
#include "Fenster/Diagramme/Zahltext.hpp"

#include <QFontMetricsF>
#include <QPainter>

#include <algorithm>
#include <cmath>

using namespace Diagrammmass;

namespace {

constexpr double swrOben = 10;

QColor farbeR() {
    return {200, 75, 35};
}
QColor farbeX() {
    return {135, 60, 170};
}
QColor farbeGewinn() {
    return {0, 128, 128};
}
QColor farbeVorRueck() {
    return {170, 110, 0};
}
QColor farbeBand() {
    return {60, 170, 90, 38};
}

std::optional<double> wirk(const NECKern::Frequenzpunkt& p) {
    return p.impedanz ? std::optional<double>(p.impedanz->re) : std::nullopt;
}
std::optional<double> blind(const NECKern::Frequenzpunkt& p) {
    return p.impedanz ? std::optional<double>(p.impedanz->im) : std::nullopt;
}
std::optional<double> swrWert(const NECKern::Frequenzpunkt& p) {
    return p.swr;
}
std::optional<double> gewinnWert(const NECKern::Frequenzpunkt& p) {
    return p.gewinn;
}
std::optional<double> vorRueckWert(const NECKern::Frequenzpunkt& p) {
    return p.vorRueck;
}

// Kleinster und grösster endlicher Wert über alle Punkte und Reihen.
std::pair<double, double>
spanne(const std::vector<NECKern::Frequenzpunkt>& gang,
       std::initializer_list<std::optional<double> (*)(const NECKern::Frequenzpunkt&)> reihen) {
    double a = INFINITY, b = -INFINITY;
    for (const auto& p : gang)
        for (auto reihe : reihen)
            if (const auto w = reihe(p); w && std::isfinite(*w)) {
                a = std::min(a, *w);
                b = std::max(b, *w);
            }
    if (a > b) return {0, 1};
    return {a, b};
}

} // namespace

struct GangDiagramm::Feld {
    QRectF bereich;
    double fVon = 0, fBis = 1;
    double x(double mhz) const { return bereich.left() + (mhz - fVon) / (fBis - fVon) * bereich.width(); }
};

GangDiagramm::GangDiagramm(QWidget* eltern) : Diagramm("Frequenzgang", eltern) {
    setMinimumSize(360, 260);
}

void GangDiagramm::zeigen(const std::vector<NECKern::Frequenzpunkt>& gang, double z0) {
    gang_ = gang;
    z0_ = z0;
    baender_ = NECKern::Gangmarken::swrBaender(gang_);
    resonanzen_ = NECKern::Gangmarken::resonanzen(gang_);
    mitGewinn_ = std::any_of(gang_.begin(), gang_.end(), [](const auto& p) { return p.gewinn.has_value(); });
    mitVorRueck_ =
        std::any_of(gang_.begin(), gang_.end(), [](const auto& p) { return p.vorRueck.has_value(); });
    update();
}

std::string GangDiagramm::zusammenfassung() const {
    return NECKern::Gangmarken::zusammenfassung(gang_);
}

double GangDiagramm::kopfMalen(QPainter& p, const QRectF& rahmen) const {
    const QString titel = "Frequenzgang (SWR gegen " + q(Zahltext::text("%g", z0_)) + " Ω)";
    titelMalen(p, rahmen, titel);
    QFontMetricsF t(p.font());

    // Legende rechtsbündig in der Titelzeile.
    p.setFont(schrift(textPixel));
    QFontMetricsF m(p.font());
    std::vector<std::pair<QString, QPen>> eintraege{{"SWR", QPen(Diagrammfarben::spur(), 2.2)},
                                                    {"R", QPen(farbeR(), 1.5)},
                                                    {"X", QPen(farbeX(), 1.5, Qt::DashLine)}};
    if (mitGewinn_) eintraege.push_back({"Gewinn", QPen(farbeGewinn(), 1.5)});
    if (mitVorRueck_) eintraege.push_back({"Vor/Rück", QPen(farbeVorRueck(), 1.5, Qt::DashLine)});
    double breite = 0;
    for (const auto& [name, stift] : eintraege)
        breite += m.horizontalAdvance(name) + 34;
    const bool eigeneZeile = t.horizontalAdvance(titel) + 16 + breite > rahmen.width() - 2 * innenrand;
    double x = eigeneZeile ? rahmen.left() + innenrand + breite - 12 : rahmen.right() - innenrand;
    const double y =
        rahmen.top() + innenrand + t.height() * (eigeneZeile ? 1.5 : 0.5) + (eigeneZeile ? 2 : 0);
    for (auto it = eintraege.rbegin(); it != eintraege.rend(); ++it) {
        x -= m.horizontalAdvance(it->first);
        p.setPen(Diagrammfarben::text());
        p.drawText(QPointF(x, y + m.ascent() - m.height() / 2), it->first);
        x -= 22;
        p.setPen(it->second);
        p.drawLine(QPointF(x, y), QPointF(x + 18, y));
        x -= 12;
    }

    p.setPen(Diagrammfarben::text());
    const double oben = rahmen.top() + innenrand + t.height() * (eigeneZeile ? 2 : 1) + 2;
    p.drawText(QRectF(rahmen.left() + innenrand, oben, rahmen.width() - 2 * innenrand, m.height()),
               Qt::AlignLeft | Qt::AlignVCenter, q(zusammenfassung()));
    return oben + m.height() - rahmen.top();
}

void GangDiagramm::linieMalen(QPainter& p, const Feld& f, const Wert& wert,
                              const std::function<double(double)>& y, const QPen& stift) const {
    p.setPen(stift);
    QPolygonF linie;
    const auto abschliessen = [&] {
        if (linie.size() > 1) p.drawPolyline(linie);
        linie.clear();
    };
    for (const auto& punkt : gang_) {
        const auto w = wert(punkt);
        if (!w || std::isnan(*w)) {
            abschliessen();
            continue;
        }
        linie << QPointF(f.x(punkt.mhz), y(*w));
    }
    abschliessen();
}

void GangDiagramm::frequenzachseMalen(QPainter& p, const Feld& f, bool beschriften) const {
    const auto teilung =
        Achsen::teilen(f.fVon, f.fBis, std::max(2, static_cast<int>(f.bereich.width() / 60)), false);
    const int stellen = Achsen::stellen(teilung);
    p.setFont(schrift(kleinPixel));
    QFontMetricsF m(p.font());
    for (double s : teilung.striche) {
        const double x = f.x(s);
        p.setPen(QPen(Diagrammfarben::gitter(), 1));
        p.drawLine(QPointF(x, f.bereich.top()), QPointF(x, f.bereich.bottom()));
        if (!beschriften) continue;
        const QString t = q(Zahltext::text(("%." + std::to_string(stellen) + "f").c_str(), s));
        const double b = m.horizontalAdvance(t);
        p.setPen(Diagrammfarben::nebentext());
        p.drawText(QRectF(x - b / 2 - 2, f.bereich.bottom() + 3, b + 4, m.height()), Qt::AlignCenter, t);
    }
    if (beschriften) {
        p.setPen(Diagrammfarben::nebentext());
        p.drawText(QRectF(f.bereich.right() - 60, f.bereich.bottom() + 3 + m.height(), 60 + 40, m.height()),
                   Qt::AlignRight | Qt::AlignVCenter, "MHz");
    }
}

void GangDiagramm::swrFeldMalen(QPainter& p, const Feld& f, bool frequenzenBeschriften) const {
    const QRectF& b = f.bereich;
    const auto ySwr = [&](double s) {
        const double t = std::log10(std::clamp(std::isnan(s) ? swrOben : s, 1.0, swrOben));
        return b.bottom() - t * b.height();
    };
    const auto [rMin, rMax] = spanne(gang_, {wirk, blind});
    const auto teilung = Achsen::teilen(std::min(rMin, 0.0), std::max(rMax, 0.0),
                                        std::max(2, static_cast<int>(b.height() / 45)));
    const auto yOhm = [&](double w) {
        return b.bottom() - (w - teilung.von) / (teilung.bis - teilung.von) * b.height();
    };

    p.setFont(schrift(kleinPixel));
    QFontMetricsF m(p.font());
    for (const auto& band : baender_)
        p.fillRect(QRectF(QPointF(f.x(band.von), b.top()), QPointF(f.x(band.bis), b.bottom())), farbeBand());
    frequenzachseMalen(p, f, frequenzenBeschriften);

    // Linke Achse: SWR logarithmisch.
    for (double s : {1.0, 1.5, 2.0, 3.0, 5.0, 10.0}) {
        const double y = ySwr(s);
        QPen stift(Diagrammfarben::gitter(), 1);
        if (s == 1.5) stift = QPen(Diagrammfarben::gut(), 1.2, Qt::DashLine);
        if (s == 2.0) stift = QPen(Diagrammfarben::mittel(), 1.2, Qt::DashLine);
        p.setPen(stift);
        p.drawLine(QPointF(b.left(), y), QPointF(b.right(), y));
        p.setPen(Diagrammfarben::nebentext());
        p.drawText(QRectF(b.left() - 44, y - m.height() / 2, 40, m.height()),
                   Qt::AlignRight | Qt::AlignVCenter, q(Zahltext::text("%g", s)));
    }
    // Rechte Achse: R und X in Ω.
    const int stellen = Achsen::stellen(teilung);
    for (double w : teilung.striche) {
        const double y = yOhm(w);
        if (w == 0) {
            p.setPen(QPen(farbeX(), 0.8, Qt::DotLine));
            p.drawLine(QPointF(b.left(), y), QPointF(b.right(), y));
        }
        p.setPen(Diagrammfarben::nebentext());
        p.drawText(QRectF(b.right() + 4, y - m.height() / 2, 52, m.height()),
                   Qt::AlignLeft | Qt::AlignVCenter,
                   q(Zahltext::text(("%." + std::to_string(stellen) + "f").c_str(), w)));
    }
    p.setPen(Diagrammfarben::nebentext());
    p.drawText(QRectF(b.left() - 44, b.top() - m.height() - 2, 60, m.height()),
               Qt::AlignLeft | Qt::AlignBottom, "SWR");
    p.drawText(QRectF(b.right() - 40, b.top() - m.height() - 2, 96, m.height()),
               Qt::AlignRight | Qt::AlignBottom, "R, X (Ω)");

    p.save();
    p.setClipRect(b.adjusted(-1, -1, 1, 1));
    linieMalen(p, f, wirk, yOhm, QPen(farbeR(), 1.5));
    linieMalen(p, f, blind, yOhm, QPen(farbeX(), 1.5, Qt::DashLine));
    linieMalen(p, f, swrWert, ySwr,
               QPen(Diagrammfarben::spur(), 2.2, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    p.restore();

    // Resonanzen als senkrechte Linien mit ihrer Frequenz unten im Feld.
    for (double r : resonanzen_) {
        const double x = f.x(r);
        p.setPen(QPen(Diagrammfarben::text(), 1, Qt::DashLine));
        p.drawLine(QPointF(x, b.top()), QPointF(x, b.bottom()));
        const QString t = "X = 0: " + q(Zahltext::text("%.3f MHz", r));
        const double breite = m.horizontalAdvance(t) + 6;
        const double links = std::clamp(x - breite / 2, b.left(), b.right() - breite);
        const QRectF kasten(links, b.bottom() - m.height() - 4, breite, m.height() + 2);
        p.fillRect(kasten, QColor(255, 255, 255, 215));
        p.setPen(Diagrammfarben::text());
        p.drawText(kasten, Qt::AlignCenter, t);
    }
    // Breite jedes Bandes oben im Band, wenn sie hineinpasst.
    for (const auto& band : baender_) {
        const QString t =
            q((band.offenUnten || band.offenOben ? "≥ " : "") + Zahltext::text("%.0f kHz", band.breiteKhz()));
        const double links = f.x(band.von), rechts = f.x(band.bis);
        if (m.horizontalAdvance(t) + 6 > rechts - links) continue;
        p.setPen(Diagrammfarben::gut().darker(130));
        p.drawText(QRectF(links, b.top() + 2, rechts - links, m.height()), Qt::AlignCenter, t);
    }
    p.setPen(QPen(Diagrammfarben::achse(), 1));
    p.setBrush(Qt::NoBrush);
    p.drawRect(b);
}

void GangDiagramm::gewinnFeldMalen(QPainter& p, const Feld& f) const {
    const QRectF& b = f.bereich;
    const auto [a, z] = spanne(gang_, {gewinnWert, vorRueckWert});
    const auto teilung = Achsen::teilen(a, z, std::max(2, static_cast<int>(b.height() / 35)));
    const auto y = [&](double w) {
        return b.bottom() - (w - teilung.von) / (teilung.bis - teilung.von) * b.height();
    };
    frequenzachseMalen(p, f, true);
    p.setFont(schrift(kleinPixel));
    QFontMetricsF m(p.font());
    const int stellen = Achsen::stellen(teilung);
    for (double w : teilung.striche) {
        p.setPen(QPen(Diagrammfarben::gitter(), 1));
        p.drawLine(QPointF(b.left(), y(w)), QPointF(b.right(), y(w)));
        p.setPen(Diagrammfarben::nebentext());
        p.drawText(QRectF(b.left() - 44, y(w) - m.height() / 2, 40, m.height()),
                   Qt::AlignRight | Qt::AlignVCenter,
                   q(Zahltext::text(("%." + std::to_string(stellen) + "f").c_str(), w)));
    }
    p.drawText(QRectF(b.left() - 44, b.top() - m.height() - 2, 160, m.height()),
               Qt::AlignLeft | Qt::AlignBottom, "Gewinn (dBi), Vor/Rück (dB)");
    p.save();
    p.setClipRect(b.adjusted(-1, -1, 1, 1));
    linieMalen(p, f, gewinnWert, y, QPen(farbeGewinn(), 1.5));
    linieMalen(p, f, vorRueckWert, y, QPen(farbeVorRueck(), 1.5, Qt::DashLine));
    p.restore();
    p.setPen(QPen(Diagrammfarben::achse(), 1));
    p.setBrush(Qt::NoBrush);
    p.drawRect(b);
}

void GangDiagramm::malen(QPainter& p, const QRectF& rahmen) const {
    p.save();
    p.setRenderHint(QPainter::Antialiasing);
    p.fillRect(rahmen, Diagrammfarben::hintergrund());
    if (gang_.empty()) {
        p.setFont(schrift(textPixel));
        p.setPen(Diagrammfarben::nebentext());
        p.drawText(rahmen, Qt::AlignCenter, "Noch kein Frequenzgang gerechnet.");
        p.restore();
        return;
    }
    const double kopf = kopfMalen(p, rahmen) + 6;
    const double zeile = QFontMetricsF(schrift(kleinPixel)).height();
    QRectF flaeche =
        rahmen.adjusted(innenrand + 46, kopf + zeile + 4, -innenrand - 56, -innenrand - 2 * zeile - 4);
    Feld oben{flaeche, gang_.front().mhz, gang_.back().mhz};
    if (oben.fBis <= oben.fVon) oben.fBis = oben.fVon + 1e-3;
    if (!mitGewinn_ && !mitVorRueck_) {
        swrFeldMalen(p, oben, true);
        p.restore();
        return;
    }
    const double abstand = zeile + 10;
    const double hoeheOben = (flaeche.height() - abstand) * 0.64;
    oben.bereich.setHeight(hoeheOben);
    Feld unten = oben;
    unten.bereich = QRectF(flaeche.left(), flaeche.top() + hoeheOben + abstand, flaeche.width(),
                           flaeche.height() - hoeheOben - abstand);
    swrFeldMalen(p, oben, false);
    gewinnFeldMalen(p, unten);
    p.restore();
}
