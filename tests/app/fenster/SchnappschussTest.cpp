// Das echte Programm: Bild des Fensters, offscreen und unter Xvfb, mit einem
// Kern aus dem Kernordner, der nur das Deck abschreibt.
#include "TestHilfen.hpp"

#include "NECKern/Rechenkerne/Ascii.hpp"
#include "NECKern/Rechenkerne/Prozess.hpp"

#include <QImage>

#include <gtest/gtest.h>

namespace fs = std::filesystem;

namespace {

bool einfarbig(const QImage& bild) {
    const auto erste = bild.pixel(0, 0);
    for (int y = 0; y < bild.height(); y += 7)
        for (int x = 0; x < bild.width(); x += 7)
            if (bild.pixel(x, y) != erste) return false;
    return true;
}

} // namespace

class Schnappschuss : public testing::Test {
  protected:
    void SetUp() override {
        // Der Kern „arcanum“ formt das Deck nicht um: er bekommt, was das Fenster rechnet.
        const auto kerne = temp.ordner() / "daten" / "Wellenwerk" / "Kerne";
        fs::create_directories(kerne);
        std::ofstream(kerne / "arcanum") << "#!/bin/sh\ncp \"$1\" \"" << deck.string() << "\"\nexit 3\n";
        fs::permissions(kerne / "arcanum", fs::perms::owner_all);
    }

    // Startet das Fenster und gibt den Exit-Code zurück.
    int starten(std::vector<std::string> vorne) {
        TestHilfen::Umgebung daten("XDG_DATA_HOME", (temp.ordner() / "daten").c_str());
        TestHilfen::Umgebung sprache("LC_ALL", "de_DE.UTF-8");
        vorne.insert(vorne.end(), {WW_APP, "--kern", "arcanum", "--schnappschuss", bild.string()});
        const auto programm = vorne.front();
        vorne.erase(vorne.begin());
        auto ende = NECKern::Prozess::ausfuehren(programm, vorne, temp.ordner(), 120);
        fehlerausgabe = ende.fehlerausgabe;
        return ende.status;
    }

    void bildPruefen() {
        QImage b(QString::fromStdString(bild.string()));
        ASSERT_FALSE(b.isNull()) << fehlerausgabe;
        EXPECT_GE(b.width(), 1200);
        EXPECT_GE(b.height(), 760);
        EXPECT_FALSE(einfarbig(b));
    }

    TestHilfen::PrivaterTemp temp;
    fs::path bild = temp.ordner() / "fenster.png";
    fs::path deck = temp.ordner() / "deck.nec";
    std::string fehlerausgabe;
};

TEST_F(Schnappschuss, OffscreenMitDeutschemGebietsschemaUndDemDeckDerBefehlszeile) {
    TestHilfen::Umgebung plattform("QT_QPA_PLATFORM", "offscreen");
    ASSERT_EQ(starten({}), 0) << fehlerausgabe;
    bildPruefen();

    // Das Deck des Fensters unter de_DE.UTF-8 ist Byte für Byte das der Befehlszeile.
    NECKern::Prozess::Arbeitsordner ordner;
    const auto aus = ordner.pfad() / "deck.txt";
    NECKern::Prozess::ausfuehren(fs::path(WW_HILFEN_ORDNER) / "umleiten",
                                 {aus.string(), WW_CLI, "deck", "--beispiel", "3-Element-Yagi"},
                                 ordner.pfad(), 60);
    EXPECT_EQ(TestHilfen::dateiLesen(deck), NECKern::ascii(TestHilfen::dateiLesen(aus)));
}

TEST_F(Schnappschuss, UnterXvfb) {
    TestHilfen::Umgebung plattform("QT_QPA_PLATFORM", "xcb");
    ASSERT_EQ(starten({"/usr/bin/xvfb-run", "-a", "-s", "-screen 0 1600x1000x24"}), 0) << fehlerausgabe;
    bildPruefen();
}
