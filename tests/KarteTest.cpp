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

TEST(Karte, FelderJeTypUndVorgabeFuerUnbekannte) {
    EXPECT_EQ(Karte::felder("LD"), (Karte::Felder{4, 3}));
    // Unbekannte und Kleinschreibung: Vorgabe 4 und 6.
    EXPECT_EQ(Karte::felder("gw"), (Karte::Felder{4, 6}));
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
