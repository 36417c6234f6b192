#pragma once

// Gemeinsames der Anwendungstests: eine Umgebung mit Attrappen statt Lösern,
// Warten auf die Ereignisschleife, Kinder des Testprozesses zählen.
#include "Modell/AppModell.hpp"

#include "KernAttrappe.hpp"
#include "TestHilfen.hpp"

#include "NECKern/Rechenkerne/ExternerKern.hpp"
#include "NECKern/Rechenkerne/Kernliste.hpp"

#include <QTest>

#include <dirent.h>
#include <fstream>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <unistd.h>
#include <vector>

namespace AppTestHilfen {

using TestHilfen::KernAttrappe;

// Wartet, bis die Bedingung gilt; die Ereignisschleife läuft dabei.
inline bool warten(const std::function<bool()>& bedingung, int ms = 30000) {
    return QTest::qWaitFor(bedingung, ms);
}

// Prozesse, deren Elternprozess dieser Test ist (auch Zombies).
inline int kinder() {
    int n = 0;
    const auto selbst = std::to_string(::getpid());
    for (const auto& e : std::filesystem::directory_iterator("/proc")) {
        const auto name = e.path().filename().string();
        if (name.find_first_not_of("0123456789") != std::string::npos) continue;
        std::ifstream stat(e.path() / "stat");
        std::string zeile;
        std::getline(stat, zeile);
        // pid (name) state ppid …; der Name kann Leerzeichen enthalten.
        const auto klammer = zeile.rfind(')');
        if (klammer == std::string::npos || klammer + 4 > zeile.size()) continue;
        const auto rest = zeile.substr(klammer + 4);
        if (rest.substr(0, rest.find(' ')) == selbst) ++n;
    }
    return n;
}

// Ein externer Kern „zirkon“, der dieses Programm startet.
inline NECKern::KernZeiger externerKern(const std::filesystem::path& programm) {
    return std::make_shared<const NECKern::ExternerKern>("zirkon", "Falsch", "Für Tests", programm,
                                                         std::vector<std::string>{"{ein}", "{aus}"}, false,
                                                         false, false);
}

// Ein gerader Draht aus fünf Segmenten der Länge l längs y.
inline std::vector<NECKern::Segment> draht(double l, double radius = 0.001) {
    std::vector<NECKern::Segment> s;
    for (int i = 0; i < 5; ++i)
        s.push_back({i + 1, 1, 0, (i - 2) * l, 10, l, 0, 90, radius, {}, {}, {}});
    return s;
}

// Eine Antwort mit Draht und Eingangsleistung, dazu Nahfelder, wenn das Deck sie verlangt.
inline NECKern::FrequenzErgebnis mitNahfeld(double mhz, std::string_view deck, bool nahfelder = true) {
    auto f = KernAttrappe::standard(mhz, deck);
    f.segmente = draht(0.5);
    f.leistungEingang = 0.01;
    if (nahfelder && TestHilfen::hatKarte(deck, "NE")) f.nahfeldE = {{0, 0, 2, {1, 0, 0}, {0, 0, 0}}};
    return f;
}

// Das Modell mit `anzahl` Frequenzen ab 14 MHz im Abstand von 0,1 MHz.
inline NECKern::Modell mitFrequenzen(NECKern::Modell m, int anzahl) {
    for (auto& k : m.karten)
        if (k.typ == "FR") k = NECKern::Karte("FR", {"0", std::to_string(anzahl), "0", "0"}, {"14", "0.1"});
    return m;
}

// Eine Seite auf dem Modell, sichtbar in der Breite der Seitenleiste.
template <typename Seite> std::unique_ptr<Seite> seiteZeigen(AppModell& app) {
    auto seite = std::make_unique<Seite>(app);
    seite->resize(520, 1000);
    seite->show();
    return seite;
}

// Ein ausführbares Skript mit diesem Inhalt.
inline std::filesystem::path skript(const std::filesystem::path& pfad, const char* inhalt) {
    std::ofstream(pfad) << inhalt;
    std::filesystem::permissions(pfad, std::filesystem::perms::owner_all);
    return pfad;
}

// Ein Python, das statt einer virtuellen Umgebung ein pip anlegt, das nichts tut.
inline constexpr const char* stillesPython = R"(#!/bin/sh
mkdir -p "$3/bin"
printf '#!/bin/sh\nexit 0\n' > "$3/bin/pip"
chmod +x "$3/bin/pip"
)";

// Die Umgebung eines Tests: Hauptkern und nec2c sind Attrappen, Ordner privat.
class AppTest : public testing::Test {
  protected:
    AppTest() { nec2c->kennungWert = "nec2c"; }

    AppModell::Umgebung umgebung() {
        AppModell::Umgebung u;
        u.kerneFinden = [this] {
            ++kernsuchen;
            return kerne;
        };
        u.nec2c = [this] { return nec2c; };
        u.datenOrdner = temp.ordner() / "daten" / "Wellenwerk";
        u.parallel = 2;
        return u;
    }

    // Mit diesen Pythons; die Kernsuche liest wie nach einer Installation den Kernordner der Daten.
    AppModell::Umgebung mitKernordner(std::vector<std::filesystem::path> pythons) {
        auto u = umgebung();
        u.pythonKandidaten = std::move(pythons);
        u.kerneFinden = [this, ordner = u.datenOrdner / "Kerne"] {
            ++kernsuchen;
            return NECKern::Kernliste::kerneFinden(ordner, std::nullopt);
        };
        return u;
    }

    // Ein Modell ohne Rechnung beim Start; gewählt ist der Hauptkern.
    std::unique_ptr<AppModell> anwendung(const std::string& kennung = "attrappe") {
        auto app = std::make_unique<AppModell>(umgebung());
        app->setKernKennung(kennung);
        return app;
    }

    // Läufe eines Kerns mit genau diesem Deck; der Gütetest rechnet ein anderes.
    static int laeufeMit(const KernAttrappe& kern, const std::string& deck) {
        int n = 0;
        for (const auto& l : kern.laeufe())
            if (l.deck == deck) ++n;
        return n;
    }

    // Wartet auf das Ende des Rechengangs samt Gütetest.
    static bool fertig(const AppModell& app) {
        return warten([&] { return app.ergebnis() && !app.rechnetGerade() && !app.gueteLaeuft(); });
    }

    TestHilfen::PrivaterTemp temp;
    std::shared_ptr<KernAttrappe> haupt = std::make_shared<KernAttrappe>();
    std::shared_ptr<KernAttrappe> nec2c = std::make_shared<KernAttrappe>();
    Kerne kerne{nec2c, haupt};
    int kernsuchen = 0;
};

} // namespace AppTestHilfen
