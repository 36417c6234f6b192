#include "Fenster/Seite.hpp"

QString titel(Seite seite) {
    switch (seite) {
    case Seite::ergebnis:
        return QStringLiteral("Ergebnis");
    case Seite::gang:
        return QStringLiteral("Frequenzgang");
    case Seite::optimierer:
        return QStringLiteral("Optimierer");
    case Seite::kern:
        break;
    }
    return QStringLiteral("Rechenkern");
}

std::optional<Seite> seiteMitTitel(const QString& gesucht) {
    for (auto s : alleSeiten)
        if (titel(s).compare(gesucht, Qt::CaseInsensitive) == 0) return s;
    return std::nullopt;
}
