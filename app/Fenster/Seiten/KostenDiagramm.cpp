#include "Fenster/Seiten/KostenDiagramm.hpp"

#include "Fenster/Diagramme/Achsen.hpp"

#include <QPainter>
#include <QPainterPath>

#include <algorithm>
#include <cmath>
#include <fmt/printf.h>

namespace {

const QColor feingitter(242, 242, 242);

QString text(const std::string& s) {
    return QString::fromStdString(s);
}

// Dekaden, die alle positiven Kosten einschliessen; Kosten 0 liegen am unteren Rand.
std::pair<int, int> dekaden(const OptVerlauf& v) {
    double klein = INFINITY, gross = 0;
    for (const auto& s : v)
        if (std::isfinite(s.kosten) && s.kosten > 0) {
            klein = std::min(klein, s.kosten);
            gross = std::max(gross, s.kosten);
        }
    if (gross == 0) return {-4, 0};
    const int unten = static_cast<int>(std::floor(std::log10(klein)));
    const int oben = static_cast<int>(std::ceil(std::log10(gross)));
    return {unten, std::max(oben, unten + 1)};
}

} // namespace

KostenDiagramm::KostenDiagramm(QWidget* eltern) : Diagramm("optimierer", eltern) {
    setMinimumHeight(200);
}

void KostenDiagramm::setVerlauf(OptVerlauf verlauf) {
    verlauf_ = std::move(verlauf);
    update();
}

void KostenDiagramm::malen(QPainter& p, const QRectF& rahmen) const {
    p.save();
    p.setRenderHint(QPainter::Antialiasing);
    p.fillRect(rahmen, Diagrammfarben::hintergrund());
    const auto schriftart = schrift(Diagrammmass::textPixel);
    p.setFont(schriftart);
    const QFontMetricsF masse(schriftart);
    const double zeile = masse.height();

    const auto bereich = dekaden(verlauf_);
    const int unten = bereich.first;
    const int oben = bereich.second;
    const int dekadenSchritt = oben - unten > 8 ? 2 : 1;
    // Die längste Beschriftung steht unten: die kleinste Zahl hat die meisten Stellen.
    const double breitesteMarke =
        std::max(masse.horizontalAdvance(text(fmt::sprintf("%g", 5 * std::pow(10.0, unten)))),
                 masse.horizontalAdvance(text(fmt::sprintf("%g", std::pow(10.0, oben)))));

    const QRectF feld(rahmen.left() + breitesteMarke + 14, rahmen.top() + zeile + 12,
                      rahmen.width() - breitesteMarke - 30, rahmen.height() - 3 * zeile - 26);
    if (feld.width() < 40 || feld.height() < 40) {
        p.restore();
        return;
    }

    int letzterSchritt = 10;
    for (const auto& s : verlauf_)
        letzterSchritt = std::max(letzterSchritt, s.schritt);
    const auto teilung = Achsen::teilen(0, letzterSchritt, 6);
    const double xSchritt = teilung.schritt;
    const double xBis = teilung.bis;
    auto x = [&](double schritt) { return feld.left() + feld.width() * schritt / xBis; };
    auto y = [&](double kosten) {
        const double l = kosten > 0 ? std::clamp(std::log10(kosten), double(unten), double(oben)) : unten;
        return feld.bottom() - feld.height() * (l - unten) / (oben - unten);
    };

    // Gitter: Zwischenlinien bei 2 … 9, Dekaden kräftiger und beschriftet; bei
    // wenigen Dekaden auch 2 und 5, sonst stünden nur zwei Zahlen an der Achse.
    const bool fein = oben - unten <= 2;
    auto marke = [&](double wert) {
        p.setPen(Diagrammfarben::text());
        p.drawText(QRectF(rahmen.left(), y(wert) - zeile / 2, breitesteMarke + 8, zeile),
                   Qt::AlignRight | Qt::AlignVCenter, text(fmt::sprintf("%g", wert)));
    };
    for (int k = unten; k < oben; ++k)
        for (int f = 2; f <= 9; ++f) {
            const double wert = f * std::pow(10.0, k);
            p.setPen(QPen(feingitter, 1));
            p.drawLine(QPointF(feld.left(), y(wert)), QPointF(feld.right(), y(wert)));
            if (fein && (f == 2 || f == 5)) marke(wert);
        }
    for (int k = unten; k <= oben; k += dekadenSchritt) {
        const double wert = std::pow(10.0, k);
        p.setPen(QPen(Diagrammfarben::gitter(), 1));
        p.drawLine(QPointF(feld.left(), y(wert)), QPointF(feld.right(), y(wert)));
        marke(wert);
    }
    for (double s = 0; s <= xBis + 1e-9; s += xSchritt) {
        p.setPen(QPen(Diagrammfarben::gitter(), 1));
        p.drawLine(QPointF(x(s), feld.top()), QPointF(x(s), feld.bottom()));
        p.setPen(Diagrammfarben::text());
        p.drawText(QRectF(x(s) - 40, feld.bottom() + 4, 80, zeile), Qt::AlignHCenter | Qt::AlignTop,
                   text(fmt::sprintf("%g", s)));
    }
    p.setPen(QPen(Diagrammfarben::achse(), 1));
    p.drawRect(feld);

    p.setPen(Diagrammfarben::nebentext());
    p.drawText(QRectF(feld.left(), rahmen.top() + 4, feld.width(), zeile), Qt::AlignLeft | Qt::AlignVCenter,
               "Kosten (logarithmisch)");
    p.drawText(QRectF(feld.left(), feld.bottom() + zeile + 6, feld.width(), zeile),
               Qt::AlignHCenter | Qt::AlignTop, "Schritt");

    if (verlauf_.empty()) {
        p.drawText(feld, Qt::AlignCenter | Qt::TextWordWrap,
                   "Noch kein Verlauf – „Optimieren“ startet die Suche.");
        p.restore();
        return;
    }

    QPainterPath linie;
    for (const auto& s : verlauf_) {
        if (std::isnan(s.kosten)) continue;
        const QPointF punkt(x(s.schritt), y(std::isinf(s.kosten) ? std::pow(10.0, oben) : s.kosten));
        if (linie.elementCount() == 0)
            linie.moveTo(punkt);
        else
            linie.lineTo(punkt);
    }
    p.setPen(QPen(Diagrammfarben::spur(), 2));
    p.setBrush(Qt::NoBrush);
    p.drawPath(linie);
    if (verlauf_.size() <= 60) {
        p.setBrush(Diagrammfarben::spur());
        p.setPen(Qt::NoPen);
        for (int i = 0; i < linie.elementCount(); ++i)
            p.drawEllipse(QPointF(linie.elementAt(i).x, linie.elementAt(i).y), 2.5, 2.5);
    }

    const auto& letzter = verlauf_.back();
    p.setPen(Diagrammfarben::text());
    p.drawText(QRectF(feld.left(), rahmen.top() + 4, feld.width(), zeile), Qt::AlignRight | Qt::AlignVCenter,
               text(fmt::sprintf("Schritt %d: %.4g", letzter.schritt, letzter.kosten)));
    p.restore();
}
