#include "NECKern/Modell.hpp"
#include "NECKern/Unicode.hpp"

#include "TestHilfen.hpp"

#include <filesystem>
#include <gtest/gtest.h>

using namespace NECKern;
using Liste = std::vector<std::string>;

namespace {

std::string datei(const std::string& name) {
    return TestHilfen::dateiLesen(std::filesystem::path(WW_TESTDATEN) / "decks" / name);
}

std::string wiederholt(const std::string& teil, int n) {
    std::string s;
    for (int i = 0; i < n; ++i)
        s += teil;
    return s;
}

// Name und Ausdruck jeder Variablen.
std::vector<std::pair<std::string, std::string>> variablen(const Modell& m) {
    std::vector<std::pair<std::string, std::string>> v;
    for (const auto& x : m.variablen)
        v.emplace_back(x.name, x.ausdruck);
    return v;
}

} // namespace

TEST(Deckdatei, FelderTrennenAnLeerzeichenKommasUndTabs) {
    auto m = Modell::lesen("gw 1,11 0 0 -5, 0 0 5 .001\nFR\t0,,1 0 0\t14.2 0\n", "x");
    ASSERT_EQ(m.karten.size(), 2u);
    EXPECT_EQ(m.karten[0].typ, "GW");
    EXPECT_EQ(m.karten[0].ganz, (Liste{"1", "11"}));
    EXPECT_EQ(m.karten[0].reell, (Liste{"0", "0", "-5", "0", "0", "5", ".001"}));
    EXPECT_EQ(m.karten[1].ganz, (Liste{"0", "1", "0", "0"}));
    EXPECT_EQ(m.karten[1].reell, (Liste{"14.2", "0"}));
}

TEST(Deckdatei, GanzzahlfelderNachKartentypUndRestReell) {
    struct Fall {
        const char* zeile;
        Liste ganz, reell;
    };
    for (const auto& f : std::vector<Fall>{
             {"GE 1 2 3", {"1"}, {"2", "3"}},
             {"EN 5", {}, {"5"}},
             {"ZZ 1 2 3 4 5", {"1", "2", "3", "4"}, {"5"}},
             {"GW 1", {"1"}, {}},
             {"GW 1 2 -l/2-arm*cosd(w) x", {"1", "2"}, {"-l/2-arm*cosd(w)", "x"}},
         }) {
        auto m = Modell::lesen(f.zeile, "x");
        ASSERT_EQ(m.karten.size(), 1u) << f.zeile;
        EXPECT_EQ(m.karten[0].ganz, f.ganz) << f.zeile;
        EXPECT_EQ(m.karten[0].reell, f.reell) << f.zeile;
    }
}

TEST(Deckdatei, SymbolzeilenMitMehrerenZuweisungenUndNotiz) {
    auto m = Modell::lesen("SY a = 2 , b=a*3 ' Notiz, c=9\nSY c\nSY =4\nsy d= \nSY e=1=2,,f =\t3\n", "x");
    EXPECT_EQ(variablen(m), (decltype(variablen(m)){{"a", "2"}, {"b", "a*3"}, {"e", "1=2"}, {"f", "3"}}));
    EXPECT_TRUE(m.karten.empty());
}

TEST(Deckdatei, ZeilenOhneKarteFallenWeg) {
    auto m = Modell::lesen("CM\nCE\n12 GW 1\n'GW 1\nG\n  G1 2\nG \n\t\nEX 0 1 1 0 1 ' Notiz 2 3\n", "Datei");
    EXPECT_EQ(m.kommentar, (Liste{""}));
    ASSERT_EQ(m.karten.size(), 1u);
    EXPECT_EQ(m.karten[0].ganz, (Liste{"0", "1", "1", "0"}));
    EXPECT_EQ(m.karten[0].reell, (Liste{"1"}));
    // Leerer erster Kommentar: der übergebene Name gilt.
    EXPECT_EQ(m.name, "Datei");
}

TEST(Deckdatei, NameAusDemErstenKommentar) {
    EXPECT_EQ(Modell::lesen("CM Dipol\nCM zweiter\n", "datei.nec").name, "Dipol");
    EXPECT_EQ(Modell::lesen("GW 1 1 0 0 0 0 0 1 1\n", "datei.nec").name, "datei.nec");
    auto ohne = Modell::lesen("", "Leer");
    EXPECT_EQ(ohne.schreiben(), "CM Leer\nCE\n");
}

TEST(Deckdatei, AlleUnicodeZeilenumbruecheTrennen) {
    for (const char* umbruch : {"\n", "\r", "\r\n", "\v", "\f", "\xC2\x85", "\xE2\x80\xA8", "\xE2\x80\xA9"}) {
        auto text = std::string("CM a") + umbruch + "GE 0" + umbruch + "EN";
        auto m = Modell::lesen(text, "x");
        EXPECT_EQ(m.kommentar, (Liste{"a"})) << umbruch;
        EXPECT_EQ(m.karten.size(), 2u) << umbruch;
    }
}

TEST(Deckdatei, SchreibenFuelltAufUndSchneidetAb) {
    Modell m;
    m.name = "Test";
    m.variablen.emplace_back("l", "10");
    m.karten.emplace_back("GW", Liste{"1", "11"}, Liste{"0", "0", "-l/2", "0", "0", "l/2", "1mm", "8", "9"});
    m.karten.emplace_back("GW", Liste{"2"}, Liste{"1", "", "3", "4", "5"});
    m.karten.emplace_back("CM", Liste{}, Liste{});
    m.karten.emplace_back("EN", Liste{"1"}, Liste{});
    EXPECT_EQ(m.schreiben(), "CM Test\nCE\nSY l=10\n"
                             "GW 1 11 0 0 -l/2 0 0 l/2 1mm\n"
                             "GW 2 0 1 0 3 4 5 0 0\n"
                             "EN\n");
}

TEST(Kommentar, UmbruchNachBreiteInZeichen) {
    EXPECT_EQ(Modell::kommentarZeilen("", 70), (Liste{"CM "}));
    EXPECT_EQ(Modell::kommentarZeilen("  a   b  ", 70), (Liste{"CM a b"}));
    // Auch die zweite Zeile fasst die volle Breite.
    EXPECT_EQ(Modell::kommentarZeilen("aaa bbb ccc ddd", 7), (Liste{"CM aaa bbb", "CM ccc ddd"}));
    // Ein langes Wort nach kurzem: erst die Zeile ausgeben, dann zerlegen.
    EXPECT_EQ(Modell::kommentarZeilen("ab " + std::string(9, 'y') + " c", 4),
              (Liste{"CM ab", "CM yyyy", "CM yyyy", "CM y c"}));
    // Tabs am Zeilenrand fallen weg, sonst wäre Schreiben nach erneutem Lesen kein Fixpunkt.
    EXPECT_EQ(Modell::kommentarZeilen("ab\t cd", 3), (Liste{"CM ab", "CM cd"}));
    EXPECT_EQ(Modell::kommentarZeilen("a \tb", 70), (Liste{"CM a \tb"}));
}

TEST(Kommentar, ZaehltSichtbareZeichenNichtBytesOderCodepunkte) {
    // 200 × e mit kombinierendem Akut: 200 Zeichen, 400 Codepunkte, 600 Bytes.
    auto e = wiederholt("e\xCC\x81", 200);
    auto zeilen = Modell::kommentarZeilen(e, 70);
    ASSERT_EQ(zeilen.size(), 3u);
    EXPECT_EQ(zeilen[0], "CM " + wiederholt("e\xCC\x81", 70));
    EXPECT_EQ(zeilen[2], "CM " + wiederholt("e\xCC\x81", 60));
    // Umlaute und λ zählen je einmal.
    EXPECT_EQ(Modell::kommentarZeilen(wiederholt("ä", 70) + " λ", 71).size(), 2u);
    EXPECT_EQ(Modell::kommentarZeilen(wiederholt("ä", 69) + " λ", 71).size(), 1u);
    // CR LF ist ein Zeichen, auf dem schnellen Weg für ASCII wie sonst.
    EXPECT_EQ(Unicode::laenge("a\r\nb"), 3u);
    EXPECT_EQ(Unicode::laenge("ä\r\nb"), 3u);
}

TEST(Deckdatei, UngueltigesUtf8WirdRepariert) {
    auto m = Modell::lesen(std::string("CM H\xC3he \xFF\nGW 1 2 \xE2\x82 3\n", 22), "x");
    ASSERT_EQ(m.kommentar.size(), 1u);
    EXPECT_EQ(m.kommentar[0], "H\xEF\xBF\xBDhe \xEF\xBF\xBD");
    EXPECT_EQ(m.karten.at(0).reell, (Liste{"\xEF\xBF\xBD", "3"}));
}

TEST(Deckdatei, UmlautKopfUndKombinierteZeichen) {
    // Nur zwei Buchstaben machen eine Karte, auch jenseits von ASCII.
    auto m = Modell::lesen("äb 1 2\nGẄ 1\nG\xCC\x81W 3\n1A 2\n", "x");
    ASSERT_EQ(m.karten.size(), 3u);
    EXPECT_EQ(m.karten[0].typ, "ÄB");
    EXPECT_EQ(m.karten[1].typ, "GẄ");
    EXPECT_EQ(m.karten[2].typ, "G\xCC\x81W");
    EXPECT_TRUE(Modell::lesen("ßx 1\n", "x").karten.empty());
}

class Rundreise : public ::testing::TestWithParam<const char*> {};

TEST_P(Rundreise, VariablenUndKartenBleibenErhalten) {
    auto original = Modell::lesen(datei(GetParam()), GetParam());
    ASSERT_FALSE(original.karten.empty());
    auto geschrieben = original.schreiben();
    auto wieder = Modell::lesen(geschrieben, "anders");
    EXPECT_EQ(wieder.name, original.name);
    EXPECT_EQ(variablen(wieder), variablen(original));
    ASSERT_EQ(wieder.karten.size(), original.karten.size());
    for (std::size_t i = 0; i < wieder.karten.size(); ++i) {
        const auto& a = original.karten[i];
        const auto& b = wieder.karten[i];
        auto f = Karte::felder(a.typ);
        EXPECT_EQ(b.typ, a.typ);
        for (int k = 0; k < f.ganz; ++k)
            EXPECT_EQ(b.ganz.at(k), k < static_cast<int>(a.ganz.size()) ? a.ganz[k] : "0") << a.typ;
        for (int k = 0; k < f.reell; ++k)
            EXPECT_EQ(b.reell.at(k), k < static_cast<int>(a.reell.size()) ? a.reell[k] : "0") << a.typ;
    }
    EXPECT_EQ(wieder.schreiben(), geschrieben);
}

INSTANTIATE_TEST_SUITE_P(Decks, Rundreise,
                         ::testing::Values("yagi_formeln.nec", "bogen_crlf.nec", "spalten.nec"));
