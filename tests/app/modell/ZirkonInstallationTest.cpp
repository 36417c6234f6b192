#include "AppTestHilfen.hpp"

#include "Modell/ZirkonInstallation.hpp"

#include <fmt/format.h>
#include <gtest/gtest.h>

using AppTestHilfen::AppTest;
using AppTestHilfen::warten;
namespace fs = std::filesystem;

class ZirkonInstallieren : public AppTest {
  protected:
    std::string installieren(std::vector<fs::path> pythons) {
        app = std::make_unique<AppModell>(mitKernordner(std::move(pythons)));
        app->zirkonInstallieren();
        EXPECT_TRUE(warten([&] { return app->installation() != ZirkonInstallation::laeuft; }));
        return app->installation().value_or("");
    }
    std::unique_ptr<AppModell> app;
};

TEST_F(ZirkonInstallieren, OhnePythonSofortDieAnleitung) {
    EXPECT_EQ(installieren({temp.ordner() / "a", temp.ordner() / "b"}),
              "Kein Python 3 gefunden (brew install python)");
}

TEST_F(ZirkonInstallieren, GelungenMachtDieDreiKerneOhneNeustartVerfuegbar) {
    const auto python = AppTestHilfen::skript(temp.ordner() / "python3", AppTestHilfen::stillesPython);
    EXPECT_EQ(installieren({temp.ordner() / "fehlt", python}),
              "zirkon installiert (B-Spline im NEC-2- und NEC-5-Format, Klinge)");
    EXPECT_EQ(kernsuchen, 2);
    for (const auto& k : app->kerne()) {
        if (k->kennung() == "nec2c") continue;
        EXPECT_EQ(k->verfuegbar(), k->kennung().starts_with("zirkon")) << k->kennung();
    }
    EXPECT_EQ(TestHilfen::dateiLesen(temp.ordner() / "daten" / "Wellenwerk" / "Kerne" / "zirkon"),
              "#!/bin/zsh\nexec \"${0:A:h}/../zirkon-venv/bin/zirkon-nec2c\" < \"$1\" > \"$2\"\n");
}

TEST_F(ZirkonInstallieren, GescheitertZeigtDieLetzten300Bytes) {
    std::string alles;
    for (int i = 0; i < 100; ++i)
        alles += fmt::format("Fehler Nummer {:03}; ", i);
    // Ein Python, das viel Fehlerausgabe schreibt und scheitert.
    const auto python = AppTestHilfen::skript(temp.ordner() / "python3", R"(#!/bin/sh
i=0
while [ $i -lt 100 ]; do printf 'Fehler Nummer %03d; ' $i >&2; i=$((i+1)); done
exit 1
)");
    EXPECT_EQ(installieren({python}), "Installation fehlgeschlagen: " + alles.substr(alles.size() - 300));
    EXPECT_EQ(kernsuchen, 1);
}
