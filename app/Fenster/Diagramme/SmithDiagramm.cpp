#include "Fenster/Diagramme/SmithDiagramm.hpp"

#include "Fenster/Diagramme/Zahltext.hpp"

#include <QFontMetricsF>
#include <QPainter>
#include <QPainterPath>

#include <cmath>
#include <numbers>

using namespace Diagrammmass;

namespace {

constexpr double fangweite = 8; // Bildpunkte um die Ortskurve, in denen der Tooltip erscheint

// Werte der Gitterkreise, normiert auf z0.
constexpr double gitterwerte[] = {0.2, 0.5, 1.0, 2.0, 5.0};

QString wert(double w) {
    return q(Zahltext::text("%g", w));
}

double grad(double bogen) {
    return bogen * 180.0 / std::numbers::pi;
}

} // namespace

SmithDiagramm::SmithDiagramm(QWidget* eltern) : Diagramm("Smith-Diagramm", eltern) {
    setMinimumSize(220, 240);
}

void SmithDiagramm::zeigen(const std::vector<NECKern::Frequenzpunkt>& gang, double z0,
                           std::optional<double> aktuellMhz, std::optional<NECKern::Komplex> aktuellZ) {
    z0_ = z0;
    kurve_.clear();
    kurve_.reserve(gang.size());
    for (const auto& p : gang) {
        if (!p.impedanz) continue;
        if (const auto g = Smith::abbilden(*p.impedanz, z0))
            kurve_.push_back({*g, p.mhz, *p.impedanz, p.swr});
    }
    aktuellMhz_ = aktuellMhz;
    aktuell_.reset();
    if (aktuellZ) aktuell_ = Smith::abbilden(*aktuellZ, z0);
    update();
}

SmithDiagramm::Kreisflaeche SmithDiagramm::flaeche(const QRectF& rahmen) const {
    QFontMetricsF titel(schrift(titelPixel, true)), text(schrift(textPixel)), klein(schrift(kleinPixel));
    const QRectF frei = rahmen.adjusted(innenrand, innenrand + titel.height() + 2, -innenrand,
                                        -innenrand - text.height() - 4);
    const double seitlich = klein.horizontalAdvance("−j0.5") + 6;
    const double oben = klein.height() + 4;
    Kreisflaeche f;
    f.mitte = frei.center();
    f.radius = std::max(10.0, std::min(frei.width() / 2 - seitlich, frei.height() / 2 - oben));
    return f;
}

void SmithDiagramm::gitterMalen(QPainter& p, const Kreisflaeche& f) const {
    const auto kasten = [&](const Smith::Kreis& k) {
        const QPointF m = f.bild(k.mitte);
        const double r = k.radius * f.radius;
        return QRectF(m.x() - r, m.y() - r, 2 * r, 2 * r);
    };
    p.setBrush(Qt::NoBrush);
    p.setPen(QPen(Diagrammfarben::gitter(), 1));
    for (double r : gitterwerte)
        p.drawEllipse(kasten(Smith::widerstandskreis(r)));
    // Nur der Bogen im Einheitskreis: vom Randpunkt jx bis zum Leerlauf, kürzester Weg.
    for (double x : gitterwerte)
        for (double v : {x, -x}) {
            const auto k = Smith::blindkreis(v);
            const auto randpunkt = *Smith::abbilden({0, v}, 1.0);
            const double anfang = grad(std::atan2(randpunkt.y - k.mitte.y, randpunkt.x - k.mitte.x));
            const double ende = grad(std::atan2(-k.mitte.y, 0.0));
            const double weite = std::fmod(ende - anfang + 540.0, 360.0) - 180.0;
            QPainterPath bogen;
            bogen.arcMoveTo(kasten(k), anfang);
            bogen.arcTo(kasten(k), anfang, weite);
            p.drawPath(bogen);
        }
    p.drawLine(f.bild({-1, 0}), f.bild({1, 0}));

    // SWR 1,5 und 2 als gestrichelte Kreise um die Mitte.
    p.setFont(schrift(kleinPixel));
    QFontMetricsF m(p.font());
    const std::pair<double, QColor> kreise[] = {{1.5, Diagrammfarben::gut()},
                                                {2.0, Diagrammfarben::mittel()}};
    for (const auto& [swr, farbe] : kreise) {
        const double r = Smith::gammaBetrag(swr) * f.radius;
        p.setPen(QPen(farbe, 1.2, Qt::DashLine));
        p.drawEllipse(f.mitte, r, r);
        const QString t = "SWR " + wert(swr);
        const double b = m.horizontalAdvance(t) + 4;
        const QRectF schild(f.mitte.x() - b / 2, f.mitte.y() - r - m.height() / 2, b, m.height());
        p.fillRect(schild, QColor(255, 255, 255, 210));
        p.setPen(farbe);
        p.drawText(schild, Qt::AlignCenter, t);
    }

    p.setPen(QPen(Diagrammfarben::achse(), 1.2));
    p.drawEllipse(f.mitte, f.radius, f.radius);

    // Beschriftung: r auf der Achse, x aussen am Rand, 0 und ∞ an den Enden.
    p.setPen(Diagrammfarben::nebentext());
    for (double r : gitterwerte) {
        const QPointF a = f.bild(*Smith::abbilden({r, 0}, 1.0));
        p.drawText(QPointF(a.x() + 2, a.y() - 3), wert(r));
    }
    for (double x : gitterwerte)
        for (double v : {x, -x}) {
            const auto g = *Smith::abbilden({0, v}, 1.0);
            const QString t = (v < 0 ? "−j" : "+j") + wert(x);
            const double b = m.horizontalAdvance(t), h = m.height();
            const double weg = 4 + std::fabs(g.x) * b / 2 + std::fabs(g.y) * h / 2;
            const QPointF c = f.bild({g.x * (1 + weg / f.radius), g.y * (1 + weg / f.radius)});
            p.drawText(QRectF(c.x() - b / 2, c.y() - h / 2, b, h), Qt::AlignCenter, t);
        }
    const QPointF links = f.bild({-1, 0}), rechts = f.bild({1, 0});
    p.drawText(QRectF(links.x() - 20, links.y() - m.height() / 2, 16, m.height()),
               Qt::AlignRight | Qt::AlignVCenter, "0");
    p.drawText(QRectF(rechts.x() + 4, rechts.y() - m.height() / 2, 16, m.height()),
               Qt::AlignLeft | Qt::AlignVCenter, "∞");
}

namespace {

void quadrat(QPainter& p, QPointF m, double r) {
    p.drawRect(QRectF(m.x() - r, m.y() - r, 2 * r, 2 * r));
}

void dreieck(QPainter& p, QPointF m, double r) {
    p.drawPolygon(QPolygonF{
        {m.x(), m.y() - r * 1.2}, {m.x() + r * 1.1, m.y() + r * 0.8}, {m.x() - r * 1.1, m.y() + r * 0.8}});
}

void punkt(QPainter& p, QPointF m, double r) {
    p.drawEllipse(m, r, r);
}

} // namespace

void SmithDiagramm::ortskurveMalen(QPainter& p, const Kreisflaeche& f) const {
    if (!kurve_.empty()) {
        QPolygonF linie;
        linie.reserve(static_cast<qsizetype>(kurve_.size()));
        for (const auto& o : kurve_)
            linie << f.bild(o.g);
        p.setPen(QPen(Diagrammfarben::spur(), 2.0, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
        p.setBrush(Qt::NoBrush);
        p.drawPolyline(linie);
        p.setPen(QPen(Diagrammfarben::hintergrund(), 1));
        p.setBrush(Diagrammfarben::text());
        quadrat(p, linie.front(), 4);
        dreieck(p, linie.back(), 4.5);
    }
    if (aktuell_) {
        p.setPen(QPen(Diagrammfarben::hintergrund(), 1.5));
        p.setBrush(Diagrammfarben::marke());
        punkt(p, f.bild(*aktuell_), 5.5);
    }
}

void SmithDiagramm::legendeMalen(QPainter& p, const QRectF& rahmen) const {
    p.setFont(schrift(textPixel));
    QFontMetricsF m(p.font());
    const double h = m.height();
    double x = rahmen.left() + innenrand;
    const double y = rahmen.bottom() - innenrand - h;
    const auto eintrag = [&](void (*form)(QPainter&, QPointF, double), QColor farbe,
                             const std::string& text) {
        p.setPen(QPen(Diagrammfarben::hintergrund(), 1));
        p.setBrush(farbe);
        form(p, QPointF(x + 5, y + h / 2), 4);
        p.setPen(Diagrammfarben::text());
        p.drawText(QPointF(x + 13, y + m.ascent()), q(text));
        x += 13 + m.horizontalAdvance(q(text)) + 14;
    };
    if (!kurve_.empty()) {
        eintrag(quadrat, Diagrammfarben::text(), Zahltext::text("%.3f MHz", kurve_.front().mhz));
        eintrag(dreieck, Diagrammfarben::text(), Zahltext::text("%.3f MHz", kurve_.back().mhz));
    }
    if (aktuell_)
        eintrag(punkt, Diagrammfarben::marke(),
                aktuellMhz_ ? Zahltext::text("%.3f MHz", *aktuellMhz_) + " gezeigt" : std::string("gezeigt"));
    if (kurve_.empty() && !aktuell_) {
        p.setPen(Diagrammfarben::nebentext());
        p.drawText(QPointF(x, y + m.ascent()), "Noch kein Frequenzgang gerechnet.");
    }
}

void SmithDiagramm::malen(QPainter& p, const QRectF& rahmen) const {
    p.save();
    p.setRenderHint(QPainter::Antialiasing);
    p.fillRect(rahmen, Diagrammfarben::hintergrund());
    titelMalen(p, rahmen, "Smith-Diagramm (" + q(Zahltext::text("%g", z0_)) + " Ω)");
    const Kreisflaeche f = flaeche(rahmen);
    gitterMalen(p, f);
    ortskurveMalen(p, f);
    legendeMalen(p, rahmen);
    p.restore();
}

QString SmithDiagramm::tipp(QPointF ort) const {
    const Kreisflaeche f = flaeche(QRectF(rect()));
    const Ortspunkt* naechster = nullptr;
    double bester = fangweite;
    for (const auto& o : kurve_) {
        const QPointF d = f.bild(o.g) - ort;
        const double a = std::hypot(d.x(), d.y());
        if (a <= bester) {
            bester = a;
            naechster = &o;
        }
    }
    if (!naechster) return {};
    return q(Zahltext::text("%.4f MHz", naechster->mhz) + "\nZ = " + Zahltext::impedanz(naechster->z) +
             "\nSWR " + Zahltext::swr(naechster->swr));
}
