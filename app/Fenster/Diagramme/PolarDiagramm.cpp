#include "Fenster/Diagramme/PolarDiagramm.hpp"

#include "Fenster/Diagramme/Zahltext.hpp"

#include <QActionGroup>
#include <QFontMetricsF>
#include <QMenu>
#include <QPainter>
#include <QPainterPath>

#include <algorithm>
#include <cmath>
#include <numbers>

using namespace Diagrammmass;

namespace {

constexpr double wertPixel = 12;

double bogen(double grad) {
    return grad * std::numbers::pi / 180.0;
}

QRectF textblock(const std::vector<std::string>& zeilen, const QFont& f) {
    QFontMetricsF m(f);
    double breite = 0;
    for (const auto& z : zeilen)
        breite = std::max(breite, m.horizontalAdvance(q(z)));
    return {0, 0, breite, m.height() * static_cast<double>(zeilen.size())};
}

void zeilenMalen(QPainter& p, QPointF oben, const std::vector<std::string>& zeilen, Qt::Alignment seite) {
    QFontMetricsF m(p.font());
    double y = oben.y();
    for (const auto& z : zeilen) {
        const double breite = m.horizontalAdvance(q(z));
        const double x = seite & Qt::AlignRight ? oben.x() - breite : oben.x();
        p.drawText(QPointF(x, y + m.ascent()), q(z));
        y += m.height();
    }
}

} // namespace

PolarDiagramm::PolarDiagramm(Schnitt art, QWidget* eltern)
    : Diagramm(art == Schnitt::elevation ? "Elevation" : "Azimut", eltern), art_(art) {
    setMinimumSize(200, 180);
}

void PolarDiagramm::zeigen(std::optional<NECKern::FrequenzErgebnis> aktuell) {
    std::optional<Polar::Schnittdaten> neu;
    if (aktuell) neu = Polar::schnitt(*aktuell, art_);
    if (neu && schnitt_ && *neu == *schnitt_) return;
    if (schnitt_) vorher_ = schnitt_;
    schnitt_ = neu;
    maximum_ = 0;
    vorRueck_.reset();
    oeffnung_.reset();
    if (!aktuell)
        meldung_ = "Noch kein Ergebnis.";
    else if (!neu)
        meldung_ = Polar::fehlt(*aktuell, art_);
    else {
        maximum_ = aktuell->maxGewinn()->gesamt;
        vorRueck_ = aktuell->vorRueck();
        oeffnung_ = Polar::oeffnungswinkel(*neu);
    }
    update();
}

void PolarDiagramm::setBoden(double db) {
    if (!(db >= 10) || db == boden_) return;
    boden_ = db;
    update();
}

void PolarDiagramm::menueErgaenzen(QMenu& menue) {
    auto* untermenue = menue.addMenu("Skala bis unter das Maximum");
    auto* gruppe = new QActionGroup(untermenue);
    for (int db : {20, 30, 40, 50, 60}) {
        auto* eintrag = untermenue->addAction(QString("%1 dB").arg(db));
        eintrag->setCheckable(true);
        eintrag->setChecked(boden_ == db);
        gruppe->addAction(eintrag);
        connect(eintrag, &QAction::triggered, this, [this, db] { setBoden(db); });
    }
}

std::vector<std::string> PolarDiagramm::werte() const {
    std::vector<std::string> zeilen{"Gewinn max. " + Zahltext::text("%.2f", maximum_) + " dBi"};
    zeilen.push_back("Vor/Rück " +
                     (vorRueck_ ? Zahltext::text("%.2f", *vorRueck_) + " dB" : std::string("–")));
    zeilen.push_back("Öffnung (−3 dB) " +
                     (oeffnung_ ? Zahltext::text("%.1f", *oeffnung_) + "°" : std::string("–")));
    return zeilen;
}

QPointF PolarDiagramm::ort(const Kreis& k, double winkel, double anteil) const {
    const double w = bogen(winkel);
    return {k.mitte.x() + k.radius * anteil * std::cos(w), k.mitte.y() - k.radius * anteil * std::sin(w)};
}

// Der grösste Kreis in `flaeche`, dessen Winkelbeschriftung den Block nicht berührt.
PolarDiagramm::Kreis PolarDiagramm::kreis(const QRectF& flaeche, const QRectF& block) const {
    QFontMetricsF klein(schrift(kleinPixel));
    const double lb = klein.horizontalAdvance("−90°") + 6, lh = klein.height() + 4;
    Kreis k;
    k.halb = nurOben();
    if (k.halb) {
        k.mitte = {flaeche.center().x(), flaeche.bottom() - klein.height() / 2};
        k.radius = std::min(flaeche.width() / 2 - lb, flaeche.height() - klein.height() / 2 - lh);
    } else {
        k.mitte = flaeche.center();
        k.radius = std::min(flaeche.width() / 2 - lb, flaeche.height() / 2 - lh);
    }
    if (!block.isEmpty() && !(k.halb && block.top() >= k.mitte.y())) {
        const double dx = std::max({block.left() - k.mitte.x(), 0.0, k.mitte.x() - block.right()});
        const double dy = std::max({block.top() - k.mitte.y(), 0.0, k.mitte.y() - block.bottom()});
        const double d = std::hypot(dx, dy);
        const double weg = d > 0 ? (dx / d) * lb + (dy / d) * lh : lh;
        k.radius = std::min(k.radius, d - weg);
    }
    k.radius = std::max(k.radius, 10.0);
    return k;
}

PolarDiagramm::Anordnung PolarDiagramm::anordnen(const QRectF& flaeche, QSizeF block) const {
    Anordnung ecke;
    ecke.block = QRectF(QPointF(), block);
    if (nurOben())
        ecke.block.moveTopRight(flaeche.topRight());
    else
        ecke.block.moveBottomLeft(flaeche.bottomLeft());
    ecke.kreis = kreis(flaeche, ecke.block);

    Anordnung unten;
    unten.block = QRectF(QPointF(), block);
    unten.block.moveBottomLeft(flaeche.bottomLeft());
    unten.kreis = kreis(flaeche.adjusted(0, 0, 0, -block.height() - 4), {});
    return unten.kreis.radius > ecke.kreis.radius ? unten : ecke;
}

bool PolarDiagramm::nurOben() const {
    return art_ == Schnitt::elevation && schnitt_ &&
           std::all_of(schnitt_->punkte.begin(), schnitt_->punkte.end(),
                       [](const Polar::Punkt& pt) { return pt.winkel <= 180.0 + 1e-6; });
}

void PolarDiagramm::gitterMalen(QPainter& p, const Kreis& k) const {
    const double letzte = k.halb ? 180.0 : 330.0;
    p.setFont(schrift(kleinPixel));
    const QFontMetricsF m(p.font());
    const double strahl = Polar::strahlSchritt(k.radius, m.horizontalAdvance(q("330°")));
    p.setBrush(Qt::NoBrush);
    p.setPen(QPen(Diagrammfarben::gitter(), 1));
    const int ringe = static_cast<int>(std::floor(boden_ / 10.0 + 1e-9));
    for (int i = 1; i <= ringe; ++i) {
        const double r = k.radius * (1.0 - i * 10.0 / boden_);
        if (r <= 0.5) continue;
        const QRectF box(k.mitte.x() - r, k.mitte.y() - r, 2 * r, 2 * r);
        if (k.halb)
            p.drawArc(box, 0, 180 * 16);
        else
            p.drawEllipse(box);
    }
    for (double w = 0; w <= letzte + 1e-9; w += strahl)
        p.drawLine(k.mitte, ort(k, w, 1.0));
    p.setPen(QPen(Diagrammfarben::achse(), 1.2));
    const QRectF aussen(k.mitte.x() - k.radius, k.mitte.y() - k.radius, 2 * k.radius, 2 * k.radius);
    if (k.halb) {
        p.drawArc(aussen, 0, 180 * 16);
        p.drawLine(ort(k, 0, 1.0), ort(k, 180, 1.0));
    } else {
        p.drawEllipse(aussen);
    }

    p.setPen(Diagrammfarben::nebentext());
    for (double w = 0; w <= letzte + 1e-9; w += strahl) {
        const QString t = q(Polar::winkeltext(art_, w));
        const double b = m.horizontalAdvance(t), h = m.height();
        const double weg = 6 + std::fabs(std::cos(bogen(w))) * b / 2 + std::fabs(std::sin(bogen(w))) * h / 2;
        const QPointF mitte = ort(k, w, 1.0 + weg / k.radius);
        p.drawText(QRectF(mitte.x() - b / 2, mitte.y() - h / 2, b, h), Qt::AlignCenter, t);
    }
    // Ringwerte in dBi rechts neben dem senkrechten Strahl, auf hellem Grund.
    const int ringzahl = Polar::ringzahlSchritt(k.radius * 10.0 / boden_, m.height());
    for (int i = 0; i < ringe; i += ringzahl) {
        const double anteil = 1.0 - i * 10.0 / boden_;
        const QString t = q(Zahltext::text("%.1f", maximum_ - i * 10.0) + (i == 0 ? " dBi" : ""));
        const QPointF punkt = ort(k, 90, anteil);
        const QRectF box(punkt.x() + 3, punkt.y() + 1, m.horizontalAdvance(t) + 2, m.height());
        p.fillRect(box, QColor(255, 255, 255, 190));
        p.drawText(box, Qt::AlignCenter, t);
    }
}

void PolarDiagramm::spurMalen(QPainter& p, const Kreis& k, const Polar::Schnittdaten& s, bool alt) const {
    QPolygonF linie;
    linie.reserve(static_cast<qsizetype>(s.punkte.size()) + 1);
    for (const auto& pt : s.punkte)
        linie << ort(k, pt.winkel, Polar::radius(pt.gewinn, maximum_, boden_, alt ? 1.08 : 1.0));
    if (alt) {
        p.setPen(QPen(Diagrammfarben::spurAlt(), 1.5));
        p.setBrush(Qt::NoBrush);
    } else {
        QColor fuellung = Diagrammfarben::spur();
        fuellung.setAlpha(28);
        p.setPen(QPen(Diagrammfarben::spur(), 2.0, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
        p.setBrush(fuellung);
    }
    if (s.geschlossen) {
        p.drawPolygon(linie);
        return;
    }
    if (!alt) {
        QPolygonF flaeche = linie;
        flaeche << k.mitte;
        p.setPen(Qt::NoPen);
        p.drawPolygon(flaeche);
        p.setPen(QPen(Diagrammfarben::spur(), 2.0, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    }
    p.drawPolyline(linie);
}

void PolarDiagramm::malen(QPainter& p, const QRectF& rahmen) const {
    p.save();
    p.setRenderHint(QPainter::Antialiasing);
    p.fillRect(rahmen, Diagrammfarben::hintergrund());
    const QRectF flaeche = rahmen.adjusted(innenrand, innenrand - 2, -innenrand, -innenrand);

    const std::string ueberschrift =
        schnitt_ ? Polar::titel(*schnitt_) : (art_ == Schnitt::elevation ? "Elevation" : "Azimut");
    QRectF titel = textblock({ueberschrift}, schrift(titelPixel, true));
    titel.moveTopLeft(flaeche.topLeft());
    p.setPen(Diagrammfarben::text());
    p.setFont(schrift(titelPixel, true));
    zeilenMalen(p, titel.topLeft(), {ueberschrift}, Qt::AlignLeft);

    if (!schnitt_) {
        p.setFont(schrift(wertPixel));
        p.setPen(Diagrammfarben::nebentext());
        p.drawText(flaeche.adjusted(0, titel.height() + 4, 0, 0), Qt::AlignCenter | Qt::TextWordWrap,
                   q(meldung_));
        p.restore();
        return;
    }

    auto zeilen = werte();
    if (vorher_) zeilen.push_back("blass: vorige Rechnung");
    const QRectF kreisflaeche = flaeche.adjusted(0, titel.height() + 4, 0, 0);
    const Anordnung lage = anordnen(kreisflaeche, textblock(zeilen, schrift(wertPixel)).size());
    const Kreis& k = lage.kreis;

    gitterMalen(p, k);
    if (vorher_) spurMalen(p, k, *vorher_, true);
    spurMalen(p, k, *schnitt_, false);

    const auto spitze = std::max_element(schnitt_->punkte.begin(), schnitt_->punkte.end(),
                                         [](const auto& a, const auto& b) { return a.gewinn < b.gewinn; });
    p.setPen(Qt::NoPen);
    p.setBrush(Diagrammfarben::spur());
    p.drawEllipse(ort(k, spitze->winkel, 1.0), 3.5, 3.5);

    p.setFont(schrift(wertPixel));
    const bool rechts = lage.block.right() >= flaeche.right() - 0.5;
    const QPointF anfang = rechts ? lage.block.topRight() : lage.block.topLeft();
    const auto seite = rechts ? Qt::AlignRight : Qt::AlignLeft;
    p.setPen(Diagrammfarben::text());
    zeilenMalen(p, anfang, {zeilen.begin(), zeilen.begin() + 3}, seite);
    if (vorher_) {
        p.setPen(Diagrammfarben::nebentext());
        zeilenMalen(p, anfang + QPointF(0, 3 * QFontMetricsF(p.font()).height()), {zeilen.back()}, seite);
    }
    p.restore();
}
