#pragma once

#include <QString>

#include <array>
#include <optional>

// Die Seiten unten rechts im Fenster, in der Reihenfolge des Seitenwählers.
enum class Seite { ergebnis, gang, optimierer, kern };

inline constexpr std::array<Seite, 4> alleSeiten{Seite::ergebnis, Seite::gang, Seite::optimierer,
                                                 Seite::kern};

// Der Titel im Seitenwähler: "Ergebnis", "Frequenzgang", "Optimierer", "Rechenkern".
QString titel(Seite seite);
std::optional<Seite> seiteMitTitel(const QString& titel);
