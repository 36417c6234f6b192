#include "Fenster/Ansicht3D/Farbskala.hpp"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>

namespace Raumbild::Farbskala {

namespace {

struct Rgb {
    int r, g, b;
};

// Stützstellen in gleichen Abständen, dazwischen linear.
template <std::size_t N> QColor stuetzen(const std::array<Rgb, N>& tabelle, double t) {
    if (std::isnan(t)) t = 0;
    const double lage = std::clamp(t, 0.0, 1.0) * static_cast<double>(N - 1);
    const auto i = std::min(static_cast<std::size_t>(lage), N - 2);
    const double f = lage - static_cast<double>(i);
    auto mischen = [f](int a, int b) { return static_cast<int>(std::lround(a + (b - a) * f)); };
    const Rgb& a = tabelle[i];
    const Rgb& b = tabelle[i + 1];
    return QColor(mischen(a.r, b.r), mischen(a.g, b.g), mischen(a.b, b.b));
}

constexpr std::array<Rgb, 11> stromTabelle{{{68, 1, 84},
                                            {72, 36, 117},
                                            {65, 68, 135},
                                            {53, 95, 141},
                                            {42, 120, 142},
                                            {33, 145, 140},
                                            {34, 168, 132},
                                            {68, 191, 112},
                                            {122, 209, 81},
                                            {189, 223, 38},
                                            {253, 231, 37}}};

constexpr std::array<Rgb, 11> gewinnTabelle{{{13, 8, 135},
                                             {65, 4, 157},
                                             {106, 0, 168},
                                             {143, 13, 164},
                                             {177, 42, 144},
                                             {204, 71, 120},
                                             {225, 100, 98},
                                             {242, 132, 75},
                                             {252, 166, 54},
                                             {252, 206, 37},
                                             {240, 249, 33}}};

constexpr std::array<Rgb, 5> momentanTabelle{
    {{59, 76, 192}, {141, 176, 254}, {221, 221, 221}, {244, 154, 123}, {180, 4, 38}}};

} // namespace

QColor strom(double t) {
    return stuetzen(stromTabelle, t);
}

QColor gewinn(double t) {
    return stuetzen(gewinnTabelle, t);
}

QColor momentan(double t) {
    return stuetzen(momentanTabelle, std::isnan(t) ? 0.5 : (t + 1) / 2);
}

} // namespace Raumbild::Farbskala
