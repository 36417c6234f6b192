#pragma once

#include <cmath>

// Rechnen im Raum der Antenne, in Metern; z zeigt nach oben.
namespace Raumbild {

struct Vek3 {
    double x = 0, y = 0, z = 0;

    Vek3 operator+(const Vek3& b) const { return {x + b.x, y + b.y, z + b.z}; }
    Vek3 operator-(const Vek3& b) const { return {x - b.x, y - b.y, z - b.z}; }
    Vek3 operator*(double f) const { return {x * f, y * f, z * f}; }
    bool operator==(const Vek3&) const = default;

    double punkt(const Vek3& b) const { return x * b.x + y * b.y + z * b.z; }
    Vek3 kreuz(const Vek3& b) const { return {y * b.z - z * b.y, z * b.x - x * b.z, x * b.y - y * b.x}; }
    double laenge() const { return std::sqrt(punkt(*this)); }
    bool endlich() const { return std::isfinite(x) && std::isfinite(y) && std::isfinite(z); }
};

} // namespace Raumbild
