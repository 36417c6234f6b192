#include "NECKern/Beispiele.hpp"
#include "NECKern/Uuid.hpp"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <complex>
#include <fcntl.h>
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <iterator>
#include <optional>
#include <set>
#include <spawn.h>
#include <sstream>
#include <sys/wait.h>

using namespace NECKern;
namespace fs = std::filesystem;

extern char** environ;

namespace {

// Gleiche Kennungen wie im Vorbild, damit der Vergleich nur Inhalte prüft.
Modell mitKennungenVon(Modell m, const Modell& vorbild) {
    for (size_t i = 0; i < m.variablen.size() && i < vorbild.variablen.size(); ++i)
        m.variablen[i].id = vorbild.variablen[i].id;
    for (size_t i = 0; i < m.karten.size() && i < vorbild.karten.size(); ++i)
        m.karten[i].id = vorbild.karten[i].id;
    return m;
}

} // namespace

TEST(Beispiele, VierzehnInMenuereihenfolge) {
    std::vector<std::string> namen;
    for (const auto& b : Beispiele::alle())
        namen.push_back(b.name);
    EXPECT_EQ(namen,
              (std::vector<std::string>{
                  "Halbwellendipol 20 m", "Inverted-V 40 m", "3-Element-Yagi 20 m",
                  "Groundplane λ/4 mit Radials", "Quad-Schleife 20 m", "Wendelantenne (Helix) 70 cm",
                  "Dipol 2 m (vertikal)", "Dipol 70 cm (vertikal)", "Yagi 2 m, 5 Elemente",
                  "Yagi 70 cm, 5 Elemente", "Kollinear 70 cm, 2 × 5/8 λ", "Handfunkgerät 2 m, kurze Antenne",
                  "868-MHz-Funkmodul: λ/4-Stab auf Platine", "868-MHz-Funkmodul: Federwendel auf Platine"}));
}

TEST(Beispiele, ErstesBeispielGenauWieVorgesehen) {
    auto m = Beispiele::alle().front().modell();
    EXPECT_EQ(m.name, "Halbwellendipol 20 m");
    EXPECT_EQ(m.z0, 50.0);

    std::vector<std::pair<std::string, std::string>> variablen;
    for (const auto& v : m.variablen) {
        variablen.emplace_back(v.name, v.ausdruck);
        EXPECT_FALSE(v.optimieren || v.minimum || v.maximum) << v.name;
    }
    EXPECT_EQ(variablen,
              (Beispiele::Variablen{{"f", "14.175"}, {"l", "10.25"}, {"h", "10"}, {"rad", "1mm"}}));

    struct Soll {
        std::string typ;
        std::vector<std::string> ganz, reell;
    };
    const std::vector<Soll> karten{{"GW", {"1", "21"}, {"0", "-l/2", "h", "0", "l/2", "h", "rad"}},
                                   {"GE", {"1"}, {}},
                                   {"GN", {"2", "0", "0", "0"}, {"13", "0.005"}},
                                   {"EX", {"0", "1", "11", "0"}, {"1", "0"}},
                                   {"FR", {"0", "1", "0", "0"}, {"f", "0"}},
                                   {"RP", {"0", "19", "73", "1000"}, {"0", "0", "5", "5"}},
                                   {"EN", {}, {}}};
    ASSERT_EQ(m.karten.size(), karten.size());
    for (size_t i = 0; i < karten.size(); ++i) {
        EXPECT_EQ(m.karten[i].typ, karten[i].typ);
        EXPECT_EQ(m.karten[i].ganz, karten[i].ganz) << karten[i].typ;
        EXPECT_EQ(m.karten[i].reell, karten[i].reell) << karten[i].typ;
    }

    // Der Schreiber füllt jede Karte auf ihre Feldzahl auf.
    EXPECT_EQ(m.schreiben(), "CM Halbwellendipol 20 m\n"
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
    EXPECT_EQ(m.deck(), "CM Halbwellendipol 20 m\n"
                        "CM Blanker Draht. Isolierte Litze verkürzt die Resonanz um 2–5 % (NEC-2\n"
                        "CM kennt keine Isolierung).\n"
                        "CE\n"
                        "GW 1 21 0 -5.125 10 0 5.125 10 0.001\n"
                        "GE 1\n"
                        "GN 2 0 0 0 13 0.005 0 0 0 0\n"
                        "EX 0 1 11 0 1 0 0 0 0 0\n"
                        "FR 0 1 0 0 14.175 0\n"
                        "RP 0 19 73 1000 0 0 5 5 0 0\n"
                        "EN\n");
}

TEST(Beispiele, KommentarIstNameUndHinweise) {
    std::set<std::string> namen;
    for (const auto& b : Beispiele::alle()) {
        namen.insert(b.name);
        auto m = b.modell();
        std::vector<std::string> soll{b.name};
        if (auto h = Beispiele::hinweise().find(b.name); h != Beispiele::hinweise().end())
            soll.insert(soll.end(), h->second.begin(), h->second.end());
        EXPECT_EQ(m.kommentar, soll);
        EXPECT_EQ(m.name, b.name);
    }
    for (const auto& [name, texte] : Beispiele::hinweise())
        EXPECT_TRUE(namen.contains(name)) << name;
    EXPECT_EQ(Beispiele::hinweise().at("Kollinear 70 cm, 2 × 5/8 λ").size(), 2u);
    EXPECT_EQ(Beispiele::hinweise().at("Handfunkgerät 2 m, kurze Antenne").size(), 3u);
}

TEST(Beispiele, JedesErgibtEinRechendeckUndEndetMitEN) {
    for (const auto& b : Beispiele::alle()) {
        SCOPED_TRACE(b.name);
        std::string deck;
        ASSERT_NO_THROW(deck = b.modell().deck());
        EXPECT_EQ(deck.find("\nSY"), std::string::npos);
        EXPECT_TRUE(deck.ends_with("\nEN\n"));
        EXPECT_NE(deck.find("\nEX 0 "), std::string::npos);
    }
}

TEST(Beispiele, ZweimalGebautGleichBisAufFrischeKennungen) {
    for (const auto& b : Beispiele::alle()) {
        SCOPED_TRACE(b.name);
        auto eins = b.modell(), zwei = b.modell();
        ASSERT_EQ(eins.karten.size(), zwei.karten.size());
        EXPECT_EQ(mitKennungenVon(zwei, eins), eins);
        std::set<Uuid> kennungen;
        for (const auto& k : eins.karten)
            kennungen.insert(k.id);
        for (const auto& v : eins.variablen)
            kennungen.insert(v.id);
        for (const auto& k : zwei.karten)
            kennungen.insert(k.id);
        EXPECT_EQ(kennungen.size(), 2 * eins.karten.size() + eins.variablen.size());
        EXPECT_NE(eins.variablen.front().id, zwei.variablen.front().id);
    }
}

TEST(Beispiele, SchreibenUndLesenBehaeltNameUndRechendeck) {
    for (const auto& b : Beispiele::alle()) {
        SCOPED_TRACE(b.name);
        auto m = b.modell();
        auto gelesen = Modell::lesen(m.schreiben(), "anderer Name");
        EXPECT_EQ(gelesen.name, b.name);
        EXPECT_EQ(gelesen.deck(), m.deck());
    }
}

namespace {

// Rechnet ein Deck mit nec2c in einem eigenen Ordner; leer, wenn nec2c scheitert.
std::string nec2cBericht(const std::string& deck) {
    auto ordner = fs::temp_directory_path() / ("ww-beispiele-" + Uuid().text());
    fs::create_directories(ordner);
    std::ofstream(ordner / "ein.nec") << deck;
    std::string programm = "/usr/bin/nec2c", ein = (ordner / "ein.nec").string(),
                aus = (ordner / "aus.txt").string(), i = "-i", o = "-o";
    std::vector<char*> argumente{programm.data(), i.data(), ein.data(), o.data(), aus.data(), nullptr};
    posix_spawn_file_actions_t aktionen;
    posix_spawn_file_actions_init(&aktionen);
    posix_spawn_file_actions_addopen(&aktionen, 1, "/dev/null", O_WRONLY, 0);
    pid_t pid = 0;
    int status = -1;
    if (posix_spawn(&pid, programm.c_str(), &aktionen, nullptr, argumente.data(), environ) == 0)
        waitpid(pid, &status, 0);
    posix_spawn_file_actions_destroy(&aktionen);
    std::stringstream bericht;
    if (WIFEXITED(status) && WEXITSTATUS(status) == 0) bericht << std::ifstream(aus).rdbuf();
    fs::remove_all(ordner);
    return bericht.str();
}

// Impedanz der ersten Quelle aus dem Block ANTENNA INPUT PARAMETERS.
std::optional<std::complex<double>> impedanz(const std::string& bericht) {
    auto block = bericht.find("ANTENNA INPUT PARAMETERS");
    if (block == std::string::npos) return std::nullopt;
    std::istringstream zeilen(bericht.substr(block));
    std::string zeile;
    for (int i = 0; i < 4; ++i)
        std::getline(zeilen, zeile);
    std::istringstream felder(zeile);
    std::vector<std::string> wort{std::istream_iterator<std::string>(felder), {}};
    if (wort.size() < 8) return std::nullopt;
    double re = 0, im = 0;
    std::from_chars(wort[6].data(), wort[6].data() + wort[6].size(), re);
    std::from_chars(wort[7].data(), wort[7].data() + wort[7].size(), im);
    return std::complex<double>(re, im);
}

double swr(std::complex<double> z, double z0) {
    double gamma = std::abs(z - z0) / std::max(std::abs(z + z0), 1e-12);
    return gamma >= 1 ? INFINITY : (1 + gamma) / (1 - gamma);
}

} // namespace

// nec2c rechnet jedes Beispiel; wo die Hinweise nichts anderes sagen, passt es an 50 Ω.
TEST(Beispiele, Nec2cBestaetigtAnpassungUndHinweise) {
    if (!fs::exists("/usr/bin/nec2c")) GTEST_SKIP() << "nec2c fehlt";
    using namespace std::complex_literals;
    for (const auto& b : Beispiele::alle()) {
        SCOPED_TRACE(b.name);
        auto z = impedanz(nec2cBericht(b.modell().deck({}, std::nullopt, true)));
        ASSERT_TRUE(z.has_value());
        if (b.name.starts_with("Kollinear")) {
            EXPECT_LT(std::abs(*z - (680.0 - 340.0i)), 0.1 * std::abs(680.0 - 340.0i)) << *z;
        } else if (b.name.starts_with("Handfunk")) {
            EXPECT_NEAR(z->real(), 10, 3) << *z;
            EXPECT_LT(std::abs(z->imag()), 15) << *z;
        } else if (b.name.ends_with("Federwendel auf Platine")) {
            EXPECT_NEAR(z->real(), 20, 10) << *z;
            EXPECT_LT(std::abs(z->imag()), 15) << *z;
        } else {
            EXPECT_LT(swr(*z, 50), 2.0) << *z;
        }
    }
}
