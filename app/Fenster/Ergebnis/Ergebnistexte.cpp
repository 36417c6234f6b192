#include "Fenster/Ergebnis/Ergebnistexte.hpp"

#include <cmath>
#include <fmt/printf.h>

namespace Ergebnistexte {

namespace {

const char* vorzeichen(double im) {
    return std::signbit(im) ? "−" : "+";
}

} // namespace

std::string impedanz(const NECKern::Komplex& z) {
    return fmt::sprintf("%.2f %s j%.2f Ω", z.re, vorzeichen(z.im), std::fabs(z.im));
}

std::string komplex(const NECKern::Komplex& z, const char* einheit) {
    return fmt::sprintf("%.4g %s j%.4g %s", z.re, vorzeichen(z.im), std::fabs(z.im), einheit);
}

std::string leistung(const std::optional<double>& watt) {
    return watt ? fmt::sprintf("%.4g W", *watt) : "–";
}

std::string winkel(double grad) {
    const double gerundet = std::round(grad * 10) / 10;
    const double null = gerundet == 0 ? 0.0 : gerundet; // kein "-0°"
    return std::fabs(null - std::round(null)) < 1e-9 ? fmt::sprintf("%.0f°", null)
                                                     : fmt::sprintf("%.1f°", null);
}

std::string richtung(const NECKern::Richtung& r) {
    return "Elevation " + winkel(90 - r.theta) + ", Azimut " + winkel(r.phi);
}

QColor hintergrund(NECKern::Urteile::Farbe farbe) {
    switch (farbe) {
    case NECKern::Urteile::Farbe::gruen:
        return {0x2E, 0x7D, 0x32};
    case NECKern::Urteile::Farbe::gelb:
        return {0xF9, 0xA8, 0x25};
    case NECKern::Urteile::Farbe::orange:
        return {0xE6, 0x51, 0x00};
    }
    return {};
}

QColor schrift(NECKern::Urteile::Farbe farbe) {
    return farbe == NECKern::Urteile::Farbe::gelb ? QColor(0x21, 0x21, 0x21) : QColor(Qt::white);
}

QString name(NECKern::Urteile::Farbe farbe) {
    switch (farbe) {
    case NECKern::Urteile::Farbe::gruen:
        return "gruen";
    case NECKern::Urteile::Farbe::gelb:
        return "gelb";
    case NECKern::Urteile::Farbe::orange:
        return "orange";
    }
    return {};
}

} // namespace Ergebnistexte
