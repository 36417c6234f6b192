#include "NECKern/Json.hpp"
#include "NECKern/Modell.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

using namespace NECKern;
using nlohmann::ordered_json;

TEST(Karte, TypWirdGrossGespeichert) {
    EXPECT_EQ(Karte("ex", {"0"}, {}).typ, "EX");
}

TEST(Karte, FelderJeTypWieDieNec2EingabeUndVorgabeFuerUnbekannte) {
    // Eine falsche Zahl hier verschiebt beim Lesen eine Koordinate in ein Ganzzahlfeld.
    const std::pair<const char*, Karte::Felder> faelle[] = {
        {"GW", {2, 7}}, {"GA", {2, 4}}, {"GH", {2, 8}}, {"GS", {2, 1}}, {"GM", {2, 7}}, {"GR", {2, 0}},
        {"GX", {2, 0}}, {"GE", {1, 0}}, {"GN", {4, 6}}, {"LD", {4, 3}}, {"FR", {4, 2}}, {"EK", {1, 0}},
        {"KH", {0, 1}}, {"XQ", {1, 0}}, {"PT", {4, 0}}, {"PQ", {4, 0}}, {"EN", {0, 0}}, {"GF", {1, 0}},
        {"GC", {2, 3}}, {"SP", {2, 6}}, {"SM", {2, 6}}, {"SC", {2, 6}}, {"GD", {4, 4}}, {"CP", {4, 0}},
        {"PL", {4, 0}}, {"NX", {0, 0}}, {"WG", {0, 0}}, {"CM", {4, 6}}, {"ZZ", {4, 6}}, {"gw", {4, 6}}};
    for (const auto& [typ, felder] : faelle)
        EXPECT_EQ(Karte::felder(typ), felder) << typ;
}

TEST(Karte, FlaechenUndZweiterBodenBehaltenIhreFelder) {
    const auto m = Modell::lesen("SM 4 4 -0.5 -0.5 0 0.5 -0.5 0\nSC 0 0 0.5 0.5 0\nSP 0 1 0.1 0 0 90 0 0.01\n"
                                 "GD 0 0 0 0 5 0.001 20 -10\n",
                                 "x");
    EXPECT_EQ(m.schreiben(), "CM x\nCE\nSM 4 4 -0.5 -0.5 0 0.5 -0.5 0\nSC 0 0 0.5 0.5 0 0 0 0\n"
                             "SP 0 1 0.1 0 0 90 0 0.01\nGD 0 0 0 0 5 0.001 20 -10\n");
}

TEST(Gespeichert, SchluesselInDerFestenReihenfolge) {
    Modell m;
    m.variablen.emplace_back("a", "1");
    m.karten.emplace_back("GW", std::vector<std::string>{"1"}, std::vector<std::string>{"a"}, "Notiz");
    const ordered_json j = m;
    const auto schluessel = [](const ordered_json& o) {
        std::vector<std::string> s;
        for (const auto& [k, _] : o.items())
            s.push_back(k);
        return s;
    };
    EXPECT_EQ(schluessel(j), (std::vector<std::string>{"name", "kommentar", "variablen", "karten", "z0"}));
    EXPECT_EQ(schluessel(j["karten"][0]), (std::vector<std::string>{"id", "typ", "ganz", "reell", "text"}));
    EXPECT_EQ(j["variablen"][0].contains("minimum"), false);
}

TEST(Gespeichert, HinUndZurueckGleich) {
    Modell m;
    m.name = "Höhe λ";
    m.kommentar = {"eins", ""};
    Variable v("l", "c0/f");
    v.optimieren = true;
    v.minimum = 1.5;
    m.variablen.push_back(v);
    m.karten.emplace_back("EX", std::vector<std::string>{"0", "1"}, std::vector<std::string>{}, "Text");
    m.z0 = 75;
    ordered_json j = m;
    EXPECT_EQ(ordered_json::parse(j.dump()).get<Modell>(), m);
}

TEST(Gespeichert, VariableOhneGrenzenUndKarteOhneText) {
    auto v =
        ordered_json::parse(
            R"({"id":"0F8B2C7E-1111-4A2B-8C3D-1234567890AB","name":"a","ausdruck":"1","optimieren":true})")
            .get<Variable>();
    EXPECT_FALSE(v.minimum || v.maximum);

    auto ohneText = ordered_json::parse(
        R"({"id":"0F8B2C7E-1111-4A2B-8C3D-1234567890AB","typ":"GW","ganz":[],"reell":[]})");
    EXPECT_THAT([&] { (void)ohneText.get<Karte>(); },
                testing::ThrowsMessage<DatenFehler>("Karte: der Schlüssel „text“ fehlt."));
    auto falscheId = ordered_json::parse(R"({"id":"kaputt","typ":"GW","ganz":[],"reell":[],"text":""})");
    EXPECT_THROW((void)falscheId.get<Karte>(), DatenFehler);
}

TEST(Uuid, VersionVierInGrossschreibung) {
    Uuid a, b;
    auto t = a.text();
    ASSERT_EQ(t.size(), 36u);
    EXPECT_EQ(t[14], '4');
    EXPECT_NE(std::string("89AB").find(t[19]), std::string::npos);
    EXPECT_EQ(t.find_first_of("abcdef"), std::string::npos);
    EXPECT_NE(a, b);
    EXPECT_EQ(Uuid::ausText(t), a);
    EXPECT_EQ(Uuid::ausText("zu kurz"), std::nullopt);
}
