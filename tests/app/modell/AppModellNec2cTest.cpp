// Die eingebaute Yagi durch das ganze Anwendungsmodell mit dem echten nec2c.
#include "Modell/AppModell.hpp"

#include "AppTestHilfen.hpp"

#include "NECKern/Rechenkerne/Nec2cKern.hpp"

#include <gtest/gtest.h>

using namespace NECKern;

TEST(AppModellMitNec2c, RechnetDieYagiMitBefundenGueteUndSwr) {
    TestHilfen::PrivaterTemp temp;
    auto u = AppModell::Umgebung::standard();
    u.nec2c = [] { return std::make_shared<const Nec2cKern>(TestHilfen::nec2c); };
    u.kerneFinden = [&] { return Kerne{u.nec2c()}; };
    AppModell app(u);
    app.rechnen(false);
    ASSERT_TRUE(AppTestHilfen::warten([&] { return app.guete().has_value(); }));
    EXPECT_FALSE(app.rechnetGerade());
    EXPECT_FALSE(app.fehler());

    const auto* f = app.aktuell();
    ASSERT_NE(f, nullptr);
    EXPECT_NEAR(f->impedanz->re, 29.02, 0.01);
    EXPECT_NEAR(f->impedanz->im, -7.20, 0.01);
    EXPECT_EQ(f->segmente.size(), 63u);
    EXPECT_EQ(app.swrAnzeige()->wert, "1.78");
    EXPECT_EQ(app.swrAnzeige()->farbe, Urteile::Farbe::gelb);
    EXPECT_NEAR(*app.guete(), 1.0, 0.01);
    EXPECT_EQ(app.gueteUrteil()->wort, "gut");
    for (const auto& b : app.befunde())
        EXPECT_NE(b.stufe, Stufe::fehler) << b.text;
    EXPECT_FALSE(app.gegenprobe());
    EXPECT_TRUE(temp.eintraege().empty());
}
