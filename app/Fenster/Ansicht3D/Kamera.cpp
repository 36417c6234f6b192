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
    Vek3 min{unendlich, unendlich, unendlich}, max{-unendlich, -unendlich, -unendlich};
    for (const auto& q : punkte) {
        if (!q.endlich()) continue;
        const Vek3 b{q.punkt(p.rechts), q.punkt(p.oben), q.punkt(p.zumBetrachter)};
        min = {std::min(min.x, b.x), std::min(min.y, b.y), std::min(min.z, b.z)};
        max = {std::max(max.x, b.x), std::max(max.y, b.y), std::max(max.z, b.z)};
    }
    // Das Ziel liegt in der Mitte der Hülle, auch in der Tiefe: um sie dreht sich die Antenne.
    const Vek3 mitte = (min + max) * 0.5;
    const Vek3 ziel = p.rechts * mitte.x + p.oben * mitte.y + p.zumBetrachter * mitte.z;
    if (!ziel.endlich()) return;
    ziel_ = ziel;

    const double rand = std::max(20.0, 0.06 * std::min(groesse_.width(), groesse_.height()));
    const double breite = std::max(groesse_.width() - 2 * rand, 1.0);
    const double hoehe = std::max(groesse_.height() - 2 * rand, 1.0);
    const Vek3 ausdehnung = max - min;
    if (!(ausdehnung.x > 0 || ausdehnung.y > 0)) return;
    double massstab = unendlich;
    if (ausdehnung.x > 0) massstab = breite / ausdehnung.x;
    if (ausdehnung.y > 0) massstab = std::min(massstab, hoehe / ausdehnung.y);
    massstab_ = begrenzt(massstab);
}

} // namespace Raumbild
