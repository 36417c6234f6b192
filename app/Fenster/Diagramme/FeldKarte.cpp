#include "Fenster/Diagramme/FeldKarte.hpp"

#include "Fenster/Diagramme/Achsen.hpp"
#include "Fenster/Diagramme/Zahltext.hpp"

#include <QFontMetricsF>
#include <QLinearGradient>
#include <QPainter>

#include <algorithm>
#include <cmath>
#include <fmt/format.h>

namespace FS = NECKern::Feldstaerke;

using namespace Diagrammmass;

namespace {

constexpr double achsenbreite = 44; // Platz für die Meterangaben links und unten

// Ohne Referenz: hell (klein) bis dunkelblau (gross), logarithmisch über die Spanne.
QColor neutral(double e, double eMin, double eMax) {
    double t = 0;
    if (eMin > 0 && eMax > eMin && e > 0)
        t = std::log(e / eMin) / std::log(eMax / eMin);
    else if (eMax > eMin)
        t = (e - eMin) / (eMax - eMin);
    t = std::clamp(std::isnan(t) ? 0.0 : t, 0.0, 1.0);
    const auto mischen = [t](int a, int b) { return static_cast<int>(std::lround(a + (b - a) * t)); };
    return QColor(mischen(235, 25), mischen(240, 60), mischen(250, 140));
}

// Text mit Zeilenumbruch ab `oben`; gibt die Unterkante zurück.
double absatz(QPainter& p, const QRectF& flaeche, double oben, const QString& text) {
    const QRectF rest(flaeche.left(), oben, flaeche.width(), std::max(0.0, flaeche.bottom() - oben));
    QRectF gebraucht;
    // Zahl und Einheit bleiben auf einer Zeile.
    QString ungetrennt = text;
    for (const char* einheit : {" %", " V/m", " W", " m,", " MHz"})
        ungetrennt.replace(QString(einheit), QString(einheit).replace(' ', QChar(0x00A0)));
    ungetrennt.replace("/m", QString("/") + QChar(0x2060) + "m");
    p.drawText(rest, Qt::AlignLeft | Qt::AlignTop | Qt::TextWordWrap, ungetrennt, &gebraucht);
    return gebraucht.bottom();
}

} // namespace

FeldKarte::FeldKarte(QWidget* eltern) : Diagramm("Feldstaerke", eltern) {
    setMinimumSize(360, 300);
}

QColor FeldKarte::farbe(FS::Klasse k) {
    switch (k) {
    case FS::Klasse::gruen:
        return {46, 160, 67};
    case FS::Klasse::gelb:
        return {240, 200, 30};
    case FS::Klasse::orange:
        return {240, 130, 30};
    case FS::Klasse::rot:
        return {215, 40, 40};
    }
    return Diagrammfarben::gitter();
}

void FeldKarte::zeigen(std::optional<FeldErgebnis> feld, const std::vector<NECKern::Segment>& draehte) {
    feld_ = std::move(feld);
    raster_ = feld_ ? Feldraster::rechnen(*feld_) : Feldraster::Raster{};
    draehte_.clear();
    draehte_.reserve(draehte.size());
    for (const auto& s : draehte)
        draehte_.push_back(s.enden());
    update();
}

FeldKarte::Anordnung FeldKarte::anordnen(const QRectF& rahmen) const {
    const double titel =
        QFontMetricsF(schrift(titelPixel, true)).height() + QFontMetricsF(schrift(kleinPixel)).height() + 8;
    const QRectF frei = rahmen.adjusted(innenrand, innenrand + titel, -innenrand, -innenrand);
    Anordnung a;
    // Breit: Karte links, Text rechts; schmal: Text unter der Karte.
    if (frei.width() >= frei.height() * 1.3) {
        const double seite = std::min(frei.height() - achsenbreite / 2, frei.width() * 0.6 - achsenbreite);
        a.karte = QRectF(frei.left() + achsenbreite, frei.top(), seite, seite);
        a.text = QRectF(a.karte.right() + 16, frei.top(), frei.right() - a.karte.right() - 16, frei.height());
    } else {
        const double seite = std::min(frei.width() - achsenbreite - 8, frei.height() * 0.6);
        a.karte = QRectF(frei.left() + achsenbreite, frei.top(), seite, seite);
        const double oben = a.karte.bottom() + achsenbreite / 2 + 8;
        a.text = QRectF(frei.left(), oben, frei.width(), frei.bottom() - oben);
    }
    return a;
}

// Gleicher Massstab in x und y; das Raster füllt die Karte in der längeren Richtung.
QPointF FeldKarte::bildpunkt(const QRectF& karte, double x, double y) const {
    const int n = std::max(raster_.n, 1);
    const double dx = n > 1 ? (raster_.xMax - raster_.xMin) / (n - 1) : 1.0;
    const double dy = n > 1 ? (raster_.yMax - raster_.yMin) / (n - 1) : 1.0;
    const double breite = std::max(raster_.xMax - raster_.xMin + dx, 1e-9);
    const double hoehe = std::max(raster_.yMax - raster_.yMin + dy, 1e-9);
    const double massstab = std::min(karte.width() / breite, karte.height() / hoehe);
    const double mx = (raster_.xMin + raster_.xMax) / 2, my = (raster_.yMin + raster_.yMax) / 2;
    return {karte.center().x() + (x - mx) * massstab, karte.center().y() - (y - my) * massstab};
}

QRectF FeldKarte::zellrechteck(const QRectF& karte, const Feldraster::Zelle& z) const {
    const int n = std::max(raster_.n, 1);
    const QPointF links = bildpunkt(karte, raster_.xMin, raster_.yMax);
    const QPointF rechts = bildpunkt(karte, raster_.xMax, raster_.yMin);
    const double bx = n > 1 ? (rechts.x() - links.x()) / (n - 1) : karte.width();
    const double by = n > 1 ? (rechts.y() - links.y()) / (n - 1) : karte.height();
    // Auf ganze Bildpunkte gerundete Kanten: benachbarte Zellen stossen ohne Fuge aneinander.
    const double x0 = std::round(links.x() + (z.spalte - 0.5) * bx),
                 x1 = std::round(links.x() + (z.spalte + 0.5) * bx);
    const double y0 = std::round(rechts.y() - (z.zeile + 0.5) * by),
                 y1 = std::round(rechts.y() - (z.zeile - 0.5) * by);
    return {QPointF(x0, y0), QPointF(x1, y1)};
}

QColor FeldKarte::zellfarbe(const Feldraster::Zelle& z) const {
    if (!raster_.referenz) return neutral(z.eEff, raster_.eMin, raster_.eMax);
    return z.klasse ? farbe(*z.klasse) : Diagrammfarben::gitter();
}

void FeldKarte::karteMalen(QPainter& p, const QRectF& karte) const {
    p.setRenderHint(QPainter::Antialiasing, false);
    QRectF gesamt;
    for (const auto& z : raster_.zellen) {
        const QRectF r = zellrechteck(karte, z);
        p.fillRect(r, zellfarbe(z));
        gesamt = gesamt.united(r);
    }
    p.setRenderHint(QPainter::Antialiasing, true);

    // Drähte von oben, hell umrandet, damit sie auf jeder Farbe zu sehen sind.
    p.save();
    p.setClipRect(gesamt);
    for (const QColor& farbe : {QColor(255, 255, 255, 220), QColor(20, 20, 20)}) {
        p.setPen(QPen(farbe, farbe.alpha() == 255 ? 1.8 : 4.0, Qt::SolidLine, Qt::RoundCap));
        for (const auto& [a, b] : draehte_)
            p.drawLine(bildpunkt(karte, a[0], a[1]), bildpunkt(karte, b[0], b[1]));
    }
    p.restore();
    p.setPen(QPen(Diagrammfarben::achse(), 1));
    p.setBrush(Qt::NoBrush);
    p.drawRect(gesamt);

    // Meterangaben an der unteren und linken Kante.
    p.setFont(schrift(kleinPixel));
    QFontMetricsF m(p.font());
    p.setPen(Diagrammfarben::nebentext());
    const auto tx = Achsen::teilen(raster_.xMin, raster_.xMax, 4, false);
    for (double x : tx.striche) {
        const QPointF a = bildpunkt(karte, x, raster_.yMin);
        const QString t = q(Zahltext::text("%g", x));
        p.drawLine(QPointF(a.x(), gesamt.bottom()), QPointF(a.x(), gesamt.bottom() + 3));
        p.drawText(QRectF(a.x() - 30, gesamt.bottom() + 4, 60, m.height()), Qt::AlignCenter, t);
    }
    const auto ty = Achsen::teilen(raster_.yMin, raster_.yMax, 4, false);
    for (double y : ty.striche) {
        const QPointF a = bildpunkt(karte, raster_.xMin, y);
        p.drawLine(QPointF(gesamt.left() - 3, a.y()), QPointF(gesamt.left(), a.y()));
        p.drawText(QRectF(gesamt.left() - 44, a.y() - m.height() / 2, 39, m.height()),
                   Qt::AlignRight | Qt::AlignVCenter, q(Zahltext::text("%g", y)));
    }
    p.drawText(QRectF(gesamt.right() - 60, gesamt.bottom() + 4 + m.height(), 60, m.height()),
               Qt::AlignRight | Qt::AlignVCenter, "x (m)");
    p.drawText(QRectF(gesamt.left() - 44, gesamt.top() - m.height() - 2, 60, m.height()),
               Qt::AlignLeft | Qt::AlignBottom, "y (m)");
}

void FeldKarte::textMalen(QPainter& p, const QRectF& flaeche) const {
    const auto& f = *feld_;
    p.setFont(schrift(textPixel));
    QFontMetricsF m(p.font());
    double y = flaeche.top();
    const std::string legende = FS::legende(f.leistung, f.hoehe, f.mhz);

    if (raster_.referenz) {
        // Farbfelder der vier Klassen, dann die Legendenzeile.
        double x = flaeche.left();
        for (auto k : {FS::Klasse::gruen, FS::Klasse::gelb, FS::Klasse::orange, FS::Klasse::rot}) {
            p.fillRect(QRectF(x, y + 2, 12, m.height() - 4), farbe(k));
            p.setPen(Diagrammfarben::text());
            const QString name = q(FS::name(k));
            p.drawText(QPointF(x + 16, y + m.ascent()), name);
            x += 16 + m.horizontalAdvance(name) + 12;
        }
        y += m.height() + 4;
        y = absatz(p, flaeche, y, q(legende)) + 8;
        const auto spitze = std::max_element(raster_.zellen.begin(), raster_.zellen.end(),
                                             [](const auto& a, const auto& b) { return a.eEff < b.eEff; });
        if (spitze != raster_.zellen.end())
            y = absatz(p, flaeche, y,
                       q("Höchstwert " + Zahltext::kurz(spitze->eEff) + " V/m" + " = " +
                         Zahltext::text("%.0f %%", spitze->verhaeltnis * 100) + " der Referenz (" +
                         Zahltext::kurz(raster_.referenz->e) + " V/m" + ")")) +
                8;
    } else {
        // Neutrale Skala: Verlauf von klein nach gross mit den Grenzwerten.
        QLinearGradient verlauf(flaeche.left(), 0, flaeche.left() + 160, 0);
        for (double t : {0.0, 0.5, 1.0})
            verlauf.setColorAt(t, neutral(raster_.eMin * std::pow(raster_.eMax / raster_.eMin, t),
                                          raster_.eMin, raster_.eMax));
        p.fillRect(QRectF(flaeche.left(), y + 2, 160, m.height() - 4), verlauf);
        p.setPen(Diagrammfarben::text());
        p.drawText(QPointF(flaeche.left() + 168, y + m.ascent()),
                   q(Zahltext::kurz(raster_.eMin) + " … " + Zahltext::kurz(raster_.eMax) + " V/m"));
        y += m.height() + 4;
        y = absatz(p, flaeche, y, q(legende.substr(0, legende.find(" · ")))) + 4;
        y = absatz(p, flaeche, y,
                   q("Für " + Zahltext::text("%.4f MHz", f.mhz) +
                     " gibt es keinen ICNIRP-Referenzwert; die Karte zeigt E_eff ohne Vergleich.")) +
            8;
    }
    p.setFont(schrift(kleinPixel));
    p.setPen(Diagrammfarben::nebentext());
    absatz(p, flaeche, y, FS::erklaerung);
}

void FeldKarte::malen(QPainter& p, const QRectF& rahmen) const {
    p.save();
    p.setRenderHint(QPainter::Antialiasing);
    p.fillRect(rahmen, Diagrammfarben::hintergrund());
    QString titel = "Feldstärke";
    if (feld_) titel += " in " + q(Zahltext::text("%.1f", feld_->hoehe)) + " m Höhe";
    titelMalen(p, rahmen, titel);
    if (!feld_ || raster_.zellen.empty()) {
        p.setFont(schrift(textPixel));
        p.setPen(Diagrammfarben::nebentext());
        p.drawText(rahmen, Qt::AlignCenter,
                   feld_ ? "Die Karte hat keine Punkte." : "Noch keine Feldstärke gerechnet.");
        p.restore();
        return;
    }
    const Anordnung a = anordnen(rahmen);
    karteMalen(p, a.karte);
    textMalen(p, a.text);
    p.restore();
}

QString FeldKarte::tipp(QPointF ort) const {
    if (!feld_) return {};
    const QRectF karte = anordnen(QRectF(rect())).karte;
    for (const auto& z : raster_.zellen) {
        if (!zellrechteck(karte, z).contains(ort)) continue;
        const std::string vergleich = raster_.referenz
                                          ? Zahltext::text("%.0f %%", z.verhaeltnis * 100) + " der Referenz"
                                          : std::string("kein Vergleich (keine Referenz)");
        return q(fmt::format("x {} m, y {} m\nE_eff {} V/m\nH_eff {} A/m\n{}", Zahltext::text("%.2f", z.x),
                             Zahltext::text("%.2f", z.y), Zahltext::kurz(z.eEff), Zahltext::kurz(z.hEff),
                             vergleich));
    }
    return {};
}
