#include "NECKern/Rechenkerne/Prozess.hpp"
#include "NECKern/Rechenkerne/KernFehler.hpp"

#include "TestHilfen.hpp"

#include <atomic>
#include <chrono>
#include <csignal>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <thread>

using namespace NECKern;
using TestHilfen::falscherKern;
using TestHilfen::PrivaterTemp;
namespace fs = std::filesystem;

namespace {

using Uhr = std::chrono::steady_clock;

double sekundenSeit(Uhr::time_point start) {
    return std::chrono::duration<double>(Uhr::now() - start).count();
}

// Jeder Test mit eigenem TMPDIR und einem Arbeitsordner darin.
class ProzessTest : public testing::Test {
  protected:
    Prozess::Ende falsch(const std::vector<std::string>& argumente, double zeitlimit = 30) {
        return Prozess::ausfuehren(falscherKern, argumente, ordner.pfad(), zeitlimit);
    }

    PrivaterTemp temp;
    Prozess::Arbeitsordner ordner;
};

} // namespace

TEST_F(ProzessTest, ArbeitsordnerSindNeuPrivatUndVerschieden) {
    const auto a = Prozess::arbeitsordner();
    const auto b = Prozess::arbeitsordner();
    EXPECT_NE(a, b);
    EXPECT_EQ(a.parent_path(), temp.ordner());
    EXPECT_THAT(a.filename().string(), testing::MatchesRegex("nec-[0-9A-F]{8}"));
    EXPECT_EQ(fs::status(a).permissions(), fs::perms::owner_all);
}

TEST_F(ProzessTest, ArbeitsordnerVerschwindetMitSeinemInhalt) {
    {
        Prozess::Arbeitsordner weiterer;
        fs::create_directories(weiterer.pfad() / "tief" / "innen");
        EXPECT_EQ(temp.eintraege().size(), 2u);
    }
    EXPECT_EQ(temp.eintraege(), std::vector<std::string>{ordner.pfad().filename().string()});
}

TEST_F(ProzessTest, ArbeitsordnerOhneTemporaeresVerzeichnisWirftDeutsch) {
    ::setenv("TMPDIR", (temp.ordner() / "gibtsnicht").c_str(), 1);
    EXPECT_THAT([] { Prozess::arbeitsordner(); }, testing::ThrowsMessage<KernFehler>(testing::StartsWith(
                                                      "Das temporäre Verzeichnis ist nicht verfügbar: ")));
}

TEST_F(ProzessTest, ExitCodeUndFehlerausgabe) {
    struct Fall {
        std::vector<std::string> argumente;
        int status;
        std::string fehlerausgabe;
    };
    const Fall faelle[] = {
        {{"ende", "3", "kaputt\n"}, 3, "kaputt\n"},
        {{"ende", "255", "Gr\xfc\xdf"}, 255, "Gr\uFFFD\uFFFD"}, // ungültiges UTF-8 wird repariert
        {{"signal"}, SIGUSR1, ""},
    };
    for (const auto& [argumente, status, text] : faelle) {
        const auto ende = falsch(argumente);
        EXPECT_EQ(ende.status, status) << argumente[0];
        EXPECT_EQ(ende.fehlerausgabe, text) << argumente[0];
    }
}

TEST_F(ProzessTest, LaeuftImOrdnerOhneFremdeDateideskriptoren) {
    EXPECT_EQ(falsch({"ordner"}).fehlerausgabe, fs::canonical(ordner.pfad()).string());
    EXPECT_EQ(falsch({"offen"}).fehlerausgabe, "0 1 2 ");
}

TEST_F(ProzessTest, VolleFehlerleitungHaeltDasProgrammNichtAn) {
    const auto ende = falsch({"laut"});
    EXPECT_EQ(ende.status, 0);
    EXPECT_EQ(ende.fehlerausgabe, std::string(1u << 20, 'x'));
}

TEST_F(ProzessTest, ZeitlimitBeendetEinHaengendesProgramm) {
    const auto start = Uhr::now();
    const auto ende = falsch({"haengen"}, 1);
    EXPECT_EQ(ende.status, SIGTERM);
    EXPECT_GE(sekundenSeit(start), 0.9);
    EXPECT_LT(sekundenSeit(start), 10);
    // Wer SIGTERM übergeht, bekommt SIGKILL.
    EXPECT_EQ(falsch({"stur"}, 1).status, SIGKILL); // unter Last braucht das nachrangige Programm eine Weile
}

TEST_F(ProzessTest, StartfehlerWirftSofort) {
    const auto fehlt = ordner.pfad() / "fehlt";
    EXPECT_THAT([&] { Prozess::ausfuehren(fehlt, {}, ordner.pfad(), 300); },
                testing::ThrowsMessage<KernFehler>(
                    "Das Programm „" + fehlt.string() +
                    "“ konnte nicht gestartet werden: Datei oder Verzeichnis nicht gefunden."));

    const auto nichtAusfuehrbar = ordner.pfad() / "text";
    { std::ofstream(nichtAusfuehrbar) << "#!/bin/sh\n"; }
    const auto start = Uhr::now();
    EXPECT_THAT([&] { Prozess::ausfuehren(nichtAusfuehrbar, {}, ordner.pfad(), 300); },
                testing::ThrowsMessage<KernFehler>("Das Programm „" + nichtAusfuehrbar.string() +
                                                   "“ konnte nicht gestartet werden: keine Berechtigung."));
    // Keine PATH-Suche: ein blosser Name ist kein Programm.
    EXPECT_THROW(Prozess::ausfuehren("nec2c", {}, ordner.pfad(), 300), KernFehler);
    EXPECT_LT(sekundenSeit(start), 5);
}

TEST_F(ProzessTest, VieleLaeufeZugleich) {
    std::vector<std::thread> faeden;
    std::atomic<int> richtig = 0;
    for (int i = 0; i < 8; ++i)
        faeden.emplace_back([&, i] {
            for (int k = 0; k < 10; ++k) {
                Prozess::Arbeitsordner eigener;
                const auto ende = Prozess::ausfuehren(
                    falscherKern, {"ende", std::to_string(i + k), std::to_string(i * k)}, eigener.pfad(), 30);
                if (ende.status == i + k && ende.fehlerausgabe == std::to_string(i * k)) ++richtig;
            }
        });
    for (auto& f : faeden)
        f.join();
    EXPECT_EQ(richtig, 80);
    EXPECT_EQ(temp.eintraege().size(), 1u);
}

TEST_F(ProzessTest, StoppwunschBeendetAuchEinSturesProgramm) {
    for (const char* art : {"haengen", "stur"}) {
        std::stop_source stopp;
        std::jthread spaeter([&] {
            std::this_thread::sleep_for(std::chrono::milliseconds(100));
            stopp.request_stop();
        });
        EXPECT_THAT([&] { Prozess::ausfuehren(falscherKern, {art}, ordner.pfad(), 300, stopp.get_token()); },
                    testing::ThrowsMessage<KernFehler>("Rechnung abgebrochen."))
            << art;
    }
    // Nach dem Stoppwunsch startet nichts mehr.
    std::stop_source schon;
    schon.request_stop();
    EXPECT_THROW(Prozess::ausfuehren(falscherKern, {"ordner"}, ordner.pfad(), 300, schon.get_token()),
                 KernFehler);
}
