#pragma once

#include <string>

// Runde Längen für Massstabsbalken und Bodengitter.
namespace Raumbild::Masstab {

// Die grösste Länge der Form 1, 2 oder 5 · 10ⁿ, die höchstens so lang ist; 0 ohne solche.
double schritt(double hoechstens);
// „2 m“, „50 cm“, „5 mm“, „1.5 km“ mit Dezimalpunkt.
std::string text(double meter);

} // namespace Raumbild::Masstab
