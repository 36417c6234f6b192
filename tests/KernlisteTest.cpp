#include "NECKern/Rechenkerne/Kernliste.hpp"
#include "NECKern/Rechenkerne/ExternerKern.hpp"
#include "NECKern/Rechenkerne/Nec2cKern.hpp"

#include "Nec2cVergleich.hpp"
#include "TestHilfen.hpp"

#include <gtest/gtest.h>

using namespace NECKern;
using TestHilfen::PrivaterTemp;
using TestHilfen::Umgebung;
namespace fs = std::filesystem;

namespace {

const ExternerKern& extern_(const KernZeiger& k) {
    auto e = dynamic_cast<const ExternerKern*>(k.get());
    if (!e) throw std::logic_error(k->kennung() + " ist kein externer Kern");
    return *e;
}

} // namespace

TEST(Kernliste, KernordnerFolgtXdgSonstDemHeimordner) {
    {
        Umgebung xdg("XDG_DATA_HOME", "/daten/x");
        EXPECT_EQ(Kernliste::kernordner(), fs::path("/daten/x/Wellenwerk/Kerne"));
    }
    Umgebung heim("HOME", "/heim/anna");
    for (const char* xdg : {static_cast<const char*>(nullptr), "", "relativ/daten"}) {
        Umgebung u("XDG_DATA_HOME", xdg);
        EXPECT_EQ(Kernliste::kernordner(), fs::path("/heim/anna/.local/share/Wellenwerk/Kerne"));
    }
}

TEST(Kernliste, FuenfKerneInFesterFolgeMitSchalternAusDerKennung) {
    auto kerne = Kernliste::kerneFinden("/k", std::nullopt);
    ASSERT_EQ(kerne.size(), 5u);
    EXPECT_EQ(kerne[0]->kennung(), "nec2c");
    EXPECT_NE(dynamic_cast<const Nec2cKern*>(kerne[0].get()), nullptr);

    struct Erwartet {
        const char* kennung;
        bool helix, tags, feldkarten;
    };
    const Erwartet erwartet[] = {
        {"zirkon", true, false, true},
        {"zirkon5", true, true, false},
        {"zirkon-klinge", true, true, false},
        {"arcanum", false, false, false},
    };
    for (std::size_t i = 0; i < 4; ++i) {
        const auto& e = erwartet[i];
        const auto& k = extern_(kerne[i + 1]);
        EXPECT_EQ(k.kennung(), e.kennung);
        EXPECT_EQ(k.programm(), fs::path("/k") / e.kennung);
        EXPECT_EQ(k.argumente(), (std::vector<std::string>{"{ein}", "{aus}"}));
        EXPECT_EQ(k.helixAufloesen(), e.helix) << e.kennung;
        EXPECT_EQ(k.eindeutigeTags(), e.tags) << e.kennung;
        EXPECT_EQ(k.feldkartenEinzeln(), e.feldkarten) << e.kennung;
        EXPECT_FALSE(k.verfuegbar());
    }
}

TEST(Kernliste, MitgebrachteLaufzeitTreibtNurDieZirkonKerne) {
    auto kerne = Kernliste::kerneFinden("/k", fs::path("/app/zirkon"));
    // Reihenfolge wie oben: zirkon, zirkon5, zirkon-klinge.
    const char* befehle[] = {"zirkon-nec2c", "zirkon-nec5", "zirkon-nec5-klinge-2p"};
    for (std::size_t i = 0; i < 3; ++i) {
        const auto& k = extern_(kerne[i + 1]);
        EXPECT_EQ(k.programm(), fs::path("/app/zirkon/python/bin/python3.12"));
        EXPECT_EQ(k.argumente(), (std::vector<std::string>{"-I", "-B", "/app/zirkon/zirkon_starten.py",
                                                           befehle[i], "{ein}", "{aus}"}));
    }
    EXPECT_EQ(extern_(kerne[4]).programm(), fs::path("/k/arcanum"));
    // ww-tests bringt keine Laufzeit mit.
    EXPECT_FALSE(Kernliste::zirkonEingebettet().has_value());
}

TEST(Kernliste, WahlNimmtDenErstenVerfuegbarenSonstNec2c) {
    PrivaterTemp temp;
    const auto zirkon = [](const char* name, const fs::path& programm) {
        return std::make_shared<const ExternerKern>("zirkon", name, "", programm, std::vector<std::string>{},
                                                    false, false, false);
    };
    const auto huelle = fs::path(WW_HILFEN_ORDNER) / "nec2cHuelle";
    const auto da = zirkon("da", huelle);
    const std::vector<KernZeiger> kerne{zirkon("fehlt", temp.ordner() / "fehlt"), da,
                                        zirkon("auch da", huelle)};
    EXPECT_EQ(Kernliste::waehlen(kerne, "zirkon"), da);
    EXPECT_EQ(Kernliste::waehlen(kerne, "arcanum")->kennung(), "nec2c");
    EXPECT_EQ(Kernliste::waehlen({kerne[0]}, "zirkon")->kennung(), "nec2c");
    EXPECT_EQ(Kernliste::waehlen({}, "nec2c")->kennung(), "nec2c");
}

TEST(Kernliste, KerneAusDemKernordnerRechnenWieNec2c) {
    PrivaterTemp temp;
    Umgebung xdg("XDG_DATA_HOME", temp.ordner().c_str());
    auto ordner = temp.ordner() / "Wellenwerk" / "Kerne";
    fs::create_directories(ordner);
    for (auto kennung : {"zirkon", "zirkon5", "zirkon-klinge", "arcanum"})
        fs::create_symlink(fs::path(WW_HILFEN_ORDNER) / "nec2cHuelle", ordner / kennung);

    // Die Umformungen je Schalter vergleicht ExternerKernTest mit nec2c; hier nur der Weg dorthin.
    const std::string deck = "CE\nGW 1 11 0 0 -2.5 0 0 2.5 0.005\nGE 0\nEX 0 1 6 0 1 0\nXQ 0\nEN\n";
    auto direkt = Nec2cKern(TestHilfen::nec2c).rechnen(deck);
    auto kerne = Kernliste::kerneFinden();
    for (std::size_t i = 1; i < kerne.size(); ++i) {
        SCOPED_TRACE(kerne[i]->kennung());
        EXPECT_EQ(Kernliste::waehlen(kerne, kerne[i]->kennung()), kerne[i]);
        TestHilfen::erwarteWieNec2c(kerne[i]->rechnen(deck), direkt);
    }
}
