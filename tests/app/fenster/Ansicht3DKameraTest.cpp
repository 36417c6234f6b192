#include "Fenster/Ansicht3D/Kamera.hpp"

#include <QLineF>
#include <algorithm>
#include <gtest/gtest.h>
#include <optional>
#include <tuple>
#include <vector>

using Raumbild::Blick;
using Raumbild::Kamera;
using Raumbild::Vek3;

namespace {

// Eine schräge, unsymmetrische Drahtwolke, damit kein Fehler sich zufällig aufhebt.
const std::vector<Vek3> punkte{{-3.2, -5.35, 15}, {-3.2, 5.35, 15}, {0, -5.05, 15.5}, {0, 5.05, 14},
                               {3, -4.8, 16},     {3, 4.8, 15},     {1, 0, 19},       {-2, 1, 12}};

// Raumpunkt in Bildachsen (rechts, oben, zum Betrachter) relativ zum Ziel, in Metern.
Vek3 imBild(const Raumbild::Projektion& p, const Vek3& q) {
    const QPointF b = p.bild(q) - p.mitte;
    return {b.x() / p.massstab, -b.y() / p.massstab, p.tiefe(q)};
}

} // namespace

TEST(Ansicht3DKamera, DrehenHaeltZielInDerMitteUndAbstaendeGleich) {
    Kamera k;
    k.setGroesse({800, 500});
    k.einpassen(punkte);
    for (QPointF zug :
         {QPointF(40, 0), QPointF(0, -70), QPointF(-300, 500), QPointF(1000, 1000), QPointF(7, -900)}) {
        k.drehen(zug);
        const auto p = k.projektion();
        EXPECT_NEAR(QLineF(p.bild(k.ziel()), p.mitte).length(), 0, 1e-9);
        EXPECT_GE(k.elevation(), -90);
        EXPECT_LE(k.elevation(), 90);
        for (const auto& q : punkte)
            EXPECT_NEAR(imBild(p, q).laenge(), (q - k.ziel()).laenge(), 1e-9) << zug.x() << " " << zug.y();
    }
    EXPECT_FALSE(k.eingepasst());
}

TEST(Ansicht3DKamera, ZoomenHaeltDenPunktUnterDemZeiger) {
    Kamera k;
    k.setGroesse({800, 500});
    k.drehen({-60, 25});
    k.einpassen(punkte);
    for (double faktor : {1.2, 0.5, 8.0, 1e-3}) {
        for (const auto& q : punkte) {
            const QPointF zeiger = k.projektion().bild(q);
            Kamera z = k;
            z.zoomen(zeiger, faktor);
            EXPECT_NEAR(QLineF(z.projektion().bild(q), zeiger).length(), 0, 1e-6);
            EXPECT_NEAR(z.massstab(), k.massstab() * faktor, 1e-9 * k.massstab());
        }
    }
}

TEST(Ansicht3DKamera, EinpassenZeigtJedenPunktUndFuelltDasBild) {
    const std::vector<QSizeF> groessen{{800, 500}, {300, 900}, {1200, 200}};
    const std::vector<std::optional<Blick>> blicke{std::nullopt, Blick::oben, Blick::vorne, Blick::seite};
    for (const auto& groesse : groessen)
        for (const auto& blick : blicke) {
            Kamera k;
            if (blick) k.blick(*blick);
            k.setGroesse(groesse);
            k.drehen({13, 0});
            k.einpassen(punkte);
            const QRectF bild(QPointF(0, 0), groesse);
            const auto p = k.projektion();
            QPointF min = p.bild(punkte[0]), max = min;
            for (const auto& q : punkte) {
                const QPointF b = p.bild(q);
                EXPECT_TRUE(bild.contains(b)) << groesse.width() << "×" << groesse.height();
                min = {std::min(min.x(), b.x()), std::min(min.y(), b.y())};
                max = {std::max(max.x(), b.x()), std::max(max.y(), b.y())};
            }
            const QPointF ausdehnung = max - min;
            EXPECT_TRUE(ausdehnung.x() > 0.75 * bild.width() || ausdehnung.y() > 0.75 * bild.height());
            EXPECT_TRUE(k.eingepasst());
        }
}

TEST(Ansicht3DKamera, StandardansichtenLegenDieAchsenWieUeblich) {
    const std::tuple<Blick, Vek3, Vek3> faelle[] = {{Blick::oben, {1, 0, 0}, {0, 1, 0}},
                                                    {Blick::vorne, {1, 0, 0}, {0, 0, 1}},
                                                    {Blick::seite, {0, 1, 0}, {0, 0, 1}}};
    for (const auto& [blick, nachRechts, nachOben] : faelle) {
        Kamera k;
        k.blick(blick);
        const auto p = k.projektion();
        EXPECT_NEAR((p.bild(nachRechts) - p.bild({})).x(), k.massstab(), 1e-9);
        EXPECT_NEAR((p.bild(nachOben) - p.bild({})).y(), -k.massstab(), 1e-9);
    }
}

TEST(Ansicht3DKamera, GroessererRahmenVergroessertDasBild) {
    Kamera k;
    k.setGroesse({400, 300});
    k.einpassen(punkte);
    const auto klein = k.projektion();
    const auto gross = k.projektion(QRectF(0, 0, 800, 600));
    for (const auto& q : punkte)
        EXPECT_NEAR(QLineF(gross.bild(q), klein.bild(q) * 2).length(), 0, 1e-9);
}
