#include "NECKern/Beispiele.hpp"
#include "NECKern/Rechenkerne/Nec2cKern.hpp"
#include "NECKern/Uuid.hpp"

#include "TestHilfen.hpp"

#include <complex>
#include <gtest/gtest.h>
#include <set>

using namespace NECKern;

TEST(Beispiele, ErstesBeispielGenauWieVorgesehen) {
    // Der Schreiber füllt jede Karte auf ihre Feldzahl auf.
    EXPECT_EQ(Beispiele::alle().front().modell().schreiben(),
              "CM Halbwellendipol 20 m\n"
              "CM Blanker Draht. Isolierte Litze verkürzt die Resonanz um 2–5 % (NEC-2\n"
              "CM kennt keine Isolierung).\n"
              "CE\n"
              "SY f=14.175\n"
              "SY l=10.25\n"
              "SY h=10\n"
              "SY rad=1mm\n"
              "GW 1 21 0 -l/2 h 0 l/2 h rad\n"
              "GE 1\n"
              "GN 2 0 0 0 13 0.005 0 0 0 0\n"
              "EX 0 1 11 0 1 0 0 0 0 0\n"
              "FR 0 1 0 0 f 0\n"
              "RP 0 19 73 1000 0 0 5 5 0 0\n"
              "EN\n");
}

// Jedes Beispiel: Kommentar aus Name und Hinweisen, frische Kennungen bei jedem Bau, und
// Schreiben und Lesen verschiebt nichts.
TEST(Beispiele, KommentarKennungenUndRundreise) {
    std::set<std::string> namen;
    for (const auto& b : Beispiele::alle()) {
        SCOPED_TRACE(b.name);
        namen.insert(b.name);
        auto eins = b.modell(), zwei = b.modell();
        std::vector<std::string> kommentar{b.name};
        if (auto h = Beispiele::hinweise().find(b.name); h != Beispiele::hinweise().end())
            kommentar.insert(kommentar.end(), h->second.begin(), h->second.end());
        EXPECT_EQ(eins.kommentar, kommentar);

        std::set<Uuid> kennungen;
        for (const auto* m : {&eins, &zwei}) {
            for (const auto& k : m->karten)
                kennungen.insert(k.id);
            for (const auto& v : m->variablen)
                kennungen.insert(v.id);
        }
        EXPECT_EQ(kennungen.size(), 2 * (eins.karten.size() + eins.variablen.size()));

        const auto gelesen = Modell::lesen(eins.schreiben(), "anderer Name");
        EXPECT_EQ(gelesen.name, b.name);
        EXPECT_EQ(gelesen.deck(), eins.deck());
    }
    for (const auto& [name, texte] : Beispiele::hinweise())
        EXPECT_TRUE(namen.contains(name)) << name;
}

// nec2c rechnet jedes Beispiel; wo die Hinweise nichts anderes sagen, passt es an 50 Ω.
TEST(Beispiele, Nec2cBestaetigtAnpassungUndHinweise) {
    TestHilfen::PrivaterTemp temp;
    const Nec2cKern nec2c(TestHilfen::nec2c);
    for (const auto& b : Beispiele::alle()) {
        SCOPED_TRACE(b.name);
        const auto e = nec2c.rechnen(b.modell().deck({}, std::nullopt, true));
        ASSERT_EQ(e.frequenzen.size(), 1u);
        const auto& f = e.frequenzen[0];
        ASSERT_TRUE(f.impedanz);
        const std::complex<double> z(f.impedanz->re, f.impedanz->im);
        if (b.name.starts_with("Kollinear")) {
            EXPECT_LT(std::abs(z - std::complex<double>(680, -340)),
                      0.1 * std::abs(std::complex<double>(680, -340)))
                << z;
        } else if (b.name.starts_with("Handfunk")) {
            EXPECT_NEAR(z.real(), 10, 3) << z;
            EXPECT_LT(std::abs(z.imag()), 15) << z;
        } else if (b.name.ends_with("Federwendel auf Platine")) {
            EXPECT_NEAR(z.real(), 20, 10) << z;
            EXPECT_LT(std::abs(z.imag()), 15) << z;
        } else {
            EXPECT_LT(*f.swr(50), 2.0) << z;
        }
    }
}
