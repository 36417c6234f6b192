#include "NECKern/Optimierer.hpp"
#include "NECKern/Json.hpp"

#include "KernAttrappe.hpp"

#include <cmath>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

using namespace NECKern;
using TestHilfen::KernAttrappe;

namespace {

Variable variable(const std::string& name, const std::string& ausdruck, bool optimieren = true) {
    Variable v(name, ausdruck);
    v.optimieren = optimieren;
    return v;
}

// Zwei Variablen a, b stehen als Koordinaten im Deck; die Attrappe macht daraus
// R = 50 + 100·(a − 3)² und X = 40·(b − 1,5). Mit einem R-Ziel 50 Ω und einem
// Resonanzziel sind die Kosten 10·(a − 3)² + 4·|b − 1,5|.
Modell flaeche(const std::string& a, const std::string& b) {
    Modell m;
    m.name = "Fläche";
    auto va = variable("a", a);
    va.minimum = 0;
    va.maximum = 5;
    m.variablen = {va, variable("b", b)};
    m.karten = {Karte("GW", {"1", "1"}, {"a", "b", "0", "0", "0", "1", "0.001"}),
                Karte("GE", {"0"}, {}),
                Karte("FR", {"0", "1", "0", "0"}, {"14", "0"}),
                Karte("NE", {"0", "1", "1", "1"}, {"0", "0", "1", "0", "0", "0"}),
                Karte("RP", {"0", "1", "2", "1000"}, {"90", "0", "0", "180"}),
                Karte("EN", {}, {})};
    return m;
}

std::shared_ptr<KernAttrappe> flaechenKern() {
    auto kern = std::make_shared<KernAttrappe>();
    kern->antwort = [](double, std::string_view deck) {
        auto gw = TestHilfen::kartenzahlen(deck, "GW");
        FrequenzErgebnis f;
        f.impedanz = Komplex{50 + 100 * std::pow(gw[2] - 3, 2), 40 * (gw[3] - 1.5)};
        return f;
    };
    return kern;
}

const std::vector<Ziel> flaechenZiele{Ziel(Ziel::Art::impedanzR, 14, 50), Ziel(Ziel::Art::resonanz, 14, 0)};

std::vector<Optimierer::Stand> suchen(Optimierer& o, int maxSchritte) {
    std::vector<Optimierer::Stand> staende;
    o.starten(maxSchritte, [&](const Optimierer::Stand& s) { staende.push_back(s); });
    return staende;
}

FrequenzErgebnis ergebnis(double mhz, std::optional<Komplex> z, std::vector<Richtung> diagramm = {}) {
    FrequenzErgebnis f;
    f.mhz = mhz;
    f.impedanz = z;
    f.diagramm = std::move(diagramm);
    return f;
}

} // namespace

TEST(Ziel, GespeicherteForm) {
    Ziel z(Ziel::Art::vorRueck, 14.15, 20, 0.5);
    nlohmann::ordered_json j = z;
    EXPECT_EQ(j.dump(), R"({"id":")" + z.id.text() +
                            R"(","art":"vorRueck","mhz":14.15,"sollwert":20.0,"gewicht":0.5})");
    EXPECT_EQ(j.get<Ziel>(), z);
    j["art"] = "Vor/Rück";
    EXPECT_THAT([&] { (void)j.get<Ziel>(); },
                testing::ThrowsMessage<DatenFehler>("Ziel: die Zielart „Vor/Rück“ ist unbekannt."));
}

TEST(Optimierer, KostentermeJeZielart) {
    const std::vector<Richtung> zwoelf{{90, 0, 0, 0, 12}, {90, 180, 0, 0, 2}};
    const std::vector<Richtung> sieben{{90, 0, 0, 0, 7}, {90, 180, 0, 0, -3}};
    struct Fall {
        Ziel ziel;
        FrequenzErgebnis f;
        double kosten;
    };
    const Fall faelle[] = {
        {Ziel(Ziel::Art::gewinn, 14, 10, 2), ergebnis(14, std::nullopt, zwoelf), 0},
        {Ziel(Ziel::Art::gewinn, 14, 10, 2), ergebnis(14, std::nullopt, sieben), 2 * 3},
        {Ziel(Ziel::Art::gewinn, 14, 10, 1), ergebnis(14, std::nullopt), 40},
        {Ziel(Ziel::Art::vorRueck, 14, 20, 1), ergebnis(14, std::nullopt, zwoelf), 2},
        {Ziel(Ziel::Art::vorRueck, 14, 5, 1), ergebnis(14, std::nullopt, zwoelf), 0},
        {Ziel(Ziel::Art::vorRueck, 14, 20, 1), ergebnis(14, std::nullopt), 4},
        {Ziel(Ziel::Art::swr, 14, 1.5, 2), ergebnis(14, Komplex{100, 0}), 1},
        {Ziel(Ziel::Art::swr, 14, 1.5, 1), ergebnis(14, std::nullopt), 98.5},
        {Ziel(Ziel::Art::resonanz, 14, 99, 1), ergebnis(14, Komplex{50, -25}), 2.5},
        {Ziel(Ziel::Art::resonanz, 14, 0, 1), ergebnis(14, std::nullopt), 100},
        {Ziel(Ziel::Art::impedanzR, 14, 50, 3), ergebnis(14, Komplex{40, 7}), 3},
        {Ziel(Ziel::Art::impedanzR, 14, 50, 1), ergebnis(14, std::nullopt), 100},
        // Ein Ziel bei einer nicht gerechneten Frequenz zählt nicht.
        {Ziel(Ziel::Art::resonanz, 14.1, 0, 1), ergebnis(14, std::nullopt), 0},
    };
    for (const auto& fall : faelle)
        EXPECT_DOUBLE_EQ(Optimierer::kostenAus({fall.f}, {fall.ziel}, 50), fall.kosten)
            << Ziel::text(fall.ziel.art) << " " << fall.ziel.sollwert;

    auto summe = Optimierer::kostenAus({ergebnis(14, Komplex{60, -10}), ergebnis(21, Komplex{30, 5})},
                                       {Ziel(Ziel::Art::resonanz, 21, 0), Ziel(Ziel::Art::impedanzR, 14, 50),
                                        Ziel(Ziel::Art::resonanz, 14, 0)},
                                       50);
    EXPECT_DOUBLE_EQ(summe, 0.5 + 1 + 1);
}

TEST(Optimierer, KostenFindenDieZielfrequenzAuchWennDerKernSieGerundetMeldet) {
    auto kern = std::make_shared<KernAttrappe>();
    kern->rundet = true; // meldet 14.1234567 als 14.123 wie nec2c
    Modell m = flaeche("1", "2");
    Optimierer o(m, kern, {Ziel(Ziel::Art::resonanz, 14.1234567, 0)});
    EXPECT_NEAR(o.kosten({}), 0.01234567, 1e-12);
    // Mehr Stellen als das Deck trägt ("%.9g"): gerechnet wird bei 14.1234568.
    Optimierer genauer(m, kern, {Ziel(Ziel::Art::resonanz, 14.12345678912, 0)});
    EXPECT_NEAR(genauer.kosten({}), 0.01234568, 1e-12);
}

TEST(Optimierer, JedeZielfrequenzEinLaufOhneUnnoetigeKarten) {
    auto kern = std::make_shared<KernAttrappe>();
    Modell m = flaeche("1", "2");
    Optimierer nurImpedanz(m, kern, {Ziel(Ziel::Art::swr, 7, 1), Ziel(Ziel::Art::resonanz, 14, 0)});
    // Bei 7 MHz Z = 57 − j7 Ω, bei 14 MHz Z = 64 Ω (X = 0).
    double gamma = std::hypot(7, 7) / std::hypot(107, 7);
    EXPECT_DOUBLE_EQ(nurImpedanz.kosten({{"a", 2}}), (1 + gamma) / (1 - gamma) - 1);
    auto laeufe = kern->laeufe();
    ASSERT_EQ(laeufe.size(), 2u);
    for (const auto& lauf : laeufe) {
        EXPECT_THAT(lauf.deck, testing::HasSubstr("GW 1 1 2 2 0"));
        EXPECT_THAT(lauf.deck, testing::Not(testing::HasSubstr("\nRP ")));
        EXPECT_THAT(lauf.deck, testing::Not(testing::HasSubstr("\nNE ")));
        EXPECT_EQ(lauf.anzahl, 1);
    }

    auto kern2 = std::make_shared<KernAttrappe>();
    Optimierer mitGewinn(m, kern2, {Ziel(Ziel::Art::gewinn, 14, 10), Ziel(Ziel::Art::resonanz, 14, 0)});
    EXPECT_DOUBLE_EQ(mitGewinn.kosten({}), 10 - 7 + 0);
    ASSERT_EQ(kern2->laeufe().size(), 1u);
    EXPECT_THAT(kern2->laeufe().front().deck, testing::HasSubstr("\nRP "));
}

TEST(Optimierer, FindetDasMinimumUndHaeltDieGrenzen) {
    Optimierer o(flaeche("1", "2"), flaechenKern(), flaechenZiele);
    auto staende = suchen(o, 300);
    auto ende = o.starten(0, {});
    // b darf nur 1,6…2,4 (±20 %) und bleibt an der unteren Grenze; a sucht frei in 0…5.
    EXPECT_NEAR(staende.back().werte.at("a"), 3, 1e-3);
    EXPECT_DOUBLE_EQ(staende.back().werte.at("b"), 1.6);
    EXPECT_NEAR(staende.back().kosten, 0.4, 1e-5);
    EXPECT_EQ(staende.front().schritt, 0);
    for (std::size_t i = 1; i < staende.size(); ++i) {
        EXPECT_EQ(staende[i].schritt, static_cast<int>(i));
        EXPECT_LE(staende[i].kosten, staende[i - 1].kosten);
    }
    EXPECT_LT(staende.size(), 301u); // beendet durch die Kostenspanne, nicht die Schrittzahl
    EXPECT_EQ(ende.size(), 2u);

    // Negative Startwerte geben geordnete Grenzen: b sucht in −2,4…−1,6.
    Optimierer negativ(flaeche("1", "-2"), flaechenKern(), {Ziel(Ziel::Art::resonanz, 14, 0)});
    EXPECT_DOUBLE_EQ(negativ.starten(100, {}).at("b"), -1.6);
}

TEST(Optimierer, Abbruchregeln) {
    // Schon im Ziel: nach der Startbewertung fertig, ein Lauf je Ecke.
    Optimierer amZiel(flaeche("3", "1.5"), flaechenKern(), flaechenZiele);
    auto staende = suchen(amZiel, 50);
    ASSERT_EQ(staende.size(), 1u);
    EXPECT_EQ(staende[0].kosten, 0);
    EXPECT_EQ(amZiel.kernlaeufe(), 3);

    // Überall gleiche Kosten: die Spanne ist null.
    auto flach = std::make_shared<KernAttrappe>();
    flach->antwort = [](double, std::string_view) { return ergebnis(0, Komplex{100, 0}); };
    Optimierer eben(flaeche("1", "2"), flach, flaechenZiele);
    EXPECT_EQ(suchen(eben, 50).size(), 1u);

    Optimierer fuenf(flaeche("1", "2"), flaechenKern(), flaechenZiele);
    EXPECT_EQ(suchen(fuenf, 5).back().schritt, 5);
    Optimierer keiner(flaeche("1", "2"), flaechenKern(), flaechenZiele);
    EXPECT_EQ(suchen(keiner, 0).size(), 1u);

    Optimierer abbruch(flaeche("1", "2"), flaechenKern(), flaechenZiele);
    std::vector<int> schritte;
    abbruch.starten(50, [&](const Optimierer::Stand& s) {
        schritte.push_back(s.schritt);
        if (s.schritt == 2) abbruch.abbrechen();
    });
    EXPECT_EQ(schritte, (std::vector<int>{0, 1, 2}));
    EXPECT_TRUE(abbruch.abgebrochen());
}

TEST(Optimierer, VorausrechnenAendertDenSuchwegNicht) {
    Optimierer nacheinander(flaeche("1", "2"), flaechenKern(), flaechenZiele, {1, false});
    Optimierer voraus(flaeche("1", "2"), flaechenKern(), flaechenZiele, {4, true});
    auto a = suchen(nacheinander, 60);
    auto b = suchen(voraus, 60);
    ASSERT_EQ(a.size(), b.size());
    for (std::size_t i = 0; i < a.size(); ++i) {
        EXPECT_EQ(a[i].kosten, b[i].kosten) << i;
        EXPECT_EQ(a[i].werte, b[i].werte) << i;
    }
    EXPECT_GT(voraus.kernlaeufe(), nacheinander.kernlaeufe());
}

TEST(Optimierer, FehlerBeendenDieSucheOhneWeitereLaeufe) {
    auto kern = flaechenKern();
    kern->fehler = [](double, int nummer) { return nummer == 4 ? "nec2c: kaputt" : ""; };
    Optimierer o(flaeche("1", "2"), kern, flaechenZiele, {1, false});
    EXPECT_THAT([&] { o.starten(50, {}); }, testing::ThrowsMessage<KernFehler>("nec2c: kaputt"));
    EXPECT_EQ(kern->laeufe().size(), 5u);

    auto ohneMarke = flaeche("1", "2");
    for (auto& v : ohneMarke.variablen)
        v.optimieren = false;
    Optimierer keine(ohneMarke, kern, flaechenZiele);
    EXPECT_THAT([&] { keine.starten(50, {}); },
                testing::ThrowsMessage<KernFehler>("Keine Variable zum Optimieren markiert"));

    auto unendlich = flaeche("1/0", "2");
    Optimierer o2(unendlich, kern, flaechenZiele);
    EXPECT_THAT(
        [&] { o2.starten(50, {}); },
        testing::ThrowsMessage<KernFehler>("Die Variable „a“ hat keinen endlichen Wert zum Optimieren."));
}

TEST(Optimierer, UebernehmenSchreibtFuenfStellen) {
    Modell m;
    m.variablen = {variable("a", "1"), variable("b", "2"), variable("c", "3"), variable("a", "a*2")};
    auto neu = Optimierer::uebernehmen(m, {{"a", 0.123456789}, {"b", 1234567.0}, {"fehlt", 1}});
    std::vector<std::string> ausdruecke;
    for (const auto& v : neu.variablen)
        ausdruecke.push_back(v.ausdruck);
    EXPECT_EQ(ausdruecke, (std::vector<std::string>{"0.12346", "1.2346e+06", "3", "0.12346"}));
}
