#include "Fenster/Ansicht3D/Kamera.hpp"

#include <algorithm>
#include <cmath>
#include <limits>
#include <numbers>

namespace Raumbild {

namespace {

constexpr double grad = std::numbers::pi / 180.0;
constexpr double kleinsterMassstab = 1e-6; // Bildpunkte je Meter
constexpr double groessterMassstab = 1e9;

double begrenzt(double massstab) {
    return std::clamp(massstab, kleinsterMassstab, groessterMassstab);
}

} // namespace

QPointF Projektion::bild(const Vek3& p) const {
    const Vek3 d = p - ziel;
    return {mitte.x() + massstab * d.punkt(rechts), mitte.y() - massstab * d.punkt(oben)};
}

double Projektion::tiefe(const Vek3& p) const {
    return (p - ziel).punkt(zumBetrachter);
}

Vek3 Projektion::raum(const QPointF& bildpunkt) const {
    return ziel + rechts * ((bildpunkt.x() - mitte.x()) / massstab) -
           oben * ((bildpunkt.y() - mitte.y()) / massstab);
}

Projektion Kamera::projektion(const QRectF& rahmen) const {
    const double a = azimut_ * grad;
    const double e = elevation_ * grad;
    Projektion p;
    p.ziel = ziel_;
    p.zumBetrachter = {std::cos(e) * std::cos(a), std::cos(e) * std::sin(a), std::sin(e)};
    p.rechts = {-std::sin(a), std::cos(a), 0};
    p.oben = p.zumBetrachter.kreuz(p.rechts);
    double faktor = 1;
    if (groesse_.width() > 0 && groesse_.height() > 0 && !rahmen.isEmpty())
        faktor = std::min(rahmen.width() / groesse_.width(), rahmen.height() / groesse_.height());
    p.massstab = massstab_ * faktor;
    p.mitte = rahmen.center();
    return p;
}

void Kamera::drehen(const QPointF& verschiebung) {
    azimut_ = std::remainder(azimut_ - verschiebung.x() * gradJePunkt, 360.0);
    elevation_ = std::clamp(elevation_ + verschiebung.y() * gradJePunkt, -90.0, 90.0);
    eingepasst_ = false;
}

void Kamera::schieben(const QPointF& verschiebung) {
    const auto p = projektion();
    ziel_ = p.raum(p.mitte - verschiebung);
    eingepasst_ = false;
}

void Kamera::zoomen(const QPointF& zeiger, double faktor) {
    if (!(faktor > 0) || !std::isfinite(faktor)) return;
    const auto vorher = projektion();
    const Vek3 unterZeiger = vorher.raum(zeiger);
    massstab_ = begrenzt(massstab_ * faktor);
    const auto nachher = projektion();
    // Ziel so verschieben, dass unterZeiger wieder auf den Zeiger fällt.
    ziel_ = ziel_ + (unterZeiger - nachher.raum(zeiger));
    eingepasst_ = false;
}

void Kamera::blick(Blick b) {
    switch (b) {
    case Blick::oben:
        azimut_ = -90;
        elevation_ = 90;
        break;
    case Blick::vorne:
        azimut_ = -90;
        elevation_ = 0;
        break;
    case Blick::seite:
        azimut_ = 0;
        elevation_ = 0;
        break;
    }
}

void Kamera::einpassen(std::span<const Vek3> punkte) {
    eingepasst_ = true;
    const auto p = projektion();
    constexpr double unendlich = std::numeric_limits<double>::infinity();
    double links = unendlich, rechts = -unendlich, unten = unendlich, oben = -unendlich;
    Vek3 summe;
    int anzahl = 0;
    for (const auto& q : punkte) {
        if (!q.endlich()) continue;
        links = std::min(links, q.punkt(p.rechts));
        rechts = std::max(rechts, q.punkt(p.rechts));
        unten = std::min(unten, q.punkt(p.oben));
        oben = std::max(oben, q.punkt(p.oben));
        summe = summe + q;
        ++anzahl;
    }
    if (anzahl == 0) return;

    // Die Tiefe des Ziels ist der Schwerpunkt: um ihn dreht sich die Antenne.
    const Vek3 schwerpunkt = summe * (1.0 / anzahl);
    const double tiefe = schwerpunkt.punkt(p.zumBetrachter);
    ziel_ = p.rechts * ((links + rechts) / 2) + p.oben * ((unten + oben) / 2) + p.zumBetrachter * tiefe;

    const double rand = std::max(20.0, 0.06 * std::min(groesse_.width(), groesse_.height()));
    const double breite = std::max(groesse_.width() - 2 * rand, 1.0);
    const double hoehe = std::max(groesse_.height() - 2 * rand, 1.0);
    const double ausdehnung = std::max(rechts - links, oben - unten);
    if (ausdehnung <= 0) return;
    double massstab = std::numeric_limits<double>::infinity();
    if (rechts > links) massstab = breite / (rechts - links);
    if (oben > unten) massstab = std::min(massstab, hoehe / (oben - unten));
    massstab_ = begrenzt(massstab);
}

} // namespace Raumbild
