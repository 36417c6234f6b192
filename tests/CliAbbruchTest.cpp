// Ctrl+C und SIGTERM: wellenwerk-cli beendet jeden Löser, den es gestartet hat,
// räumt dessen Arbeitsordner weg und endet mit 128 + Signal.
#include "TestHilfen.hpp"

#include <charconv>
#include <chrono>
#include <csignal>
#include <fcntl.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <spawn.h>
#include <sys/wait.h>
#include <thread>

extern char** environ;

namespace fs = std::filesystem;
using namespace std::chrono_literals;

namespace {

// Die Kinder aller Fäden eines Prozesses.
std::vector<pid_t> kinder(pid_t pid) {
    std::vector<pid_t> liste;
    std::error_code egal;
    for (const auto& faden : fs::directory_iterator(fs::path("/proc") / std::to_string(pid) / "task", egal)) {
        const auto text = TestHilfen::dateiLesen(faden.path() / "children");
        for (const char *p = text.data(), *ende = p + text.size(); p < ende; ++p) {
            pid_t kind = 0;
            const auto [weiter, fehler] = std::from_chars(p, ende, kind);
            if (fehler == std::errc()) liste.push_back(kind);
            p = weiter;
        }
    }
    return liste;
}

// Mit SIGINT und SIGTERM auf Vorgabe: eine Shell ohne Jobsteuerung vererbt sie sonst übergangen.
pid_t starten(std::vector<std::string> argumente, const fs::path& fehlerausgabe) {
    std::vector<char*> argv;
    for (auto& a : argumente)
        argv.push_back(a.data());
    argv.push_back(nullptr);
    posix_spawn_file_actions_t aktionen;
    posix_spawn_file_actions_init(&aktionen);
    posix_spawn_file_actions_addopen(&aktionen, STDERR_FILENO, fehlerausgabe.c_str(), O_WRONLY | O_CREAT,
                                     0644);
    posix_spawnattr_t attribute;
    posix_spawnattr_init(&attribute);
    sigset_t signale;
    sigemptyset(&signale);
    posix_spawnattr_setsigmask(&attribute, &signale);
    sigaddset(&signale, SIGINT);
    sigaddset(&signale, SIGTERM);
    posix_spawnattr_setsigdefault(&attribute, &signale);
    posix_spawnattr_setflags(&attribute, POSIX_SPAWN_SETSIGDEF | POSIX_SPAWN_SETSIGMASK);
    pid_t pid = -1;
    if (posix_spawn(&pid, argv[0], &aktionen, &attribute, argv.data(), environ) != 0) pid = -1;
    posix_spawnattr_destroy(&attribute);
    posix_spawn_file_actions_destroy(&aktionen);
    return pid;
}

} // namespace

TEST(CliAbbruch, SignalBeendetJedenLoeserUndRaeumtSeineOrdnerWeg) {
    NECKern::Prozess::Arbeitsordner daten;
    fs::create_directories(daten.pfad() / "Wellenwerk" / "Kerne");
    fs::create_symlink(TestHilfen::falscherKern, daten.pfad() / "Wellenwerk" / "Kerne" / "arcanum");
    TestHilfen::Umgebung xdg("XDG_DATA_HOME", daten.pfad().c_str());
    TestHilfen::Umgebung art("FALSCHER_KERN", "haengen");
    const auto deck = (fs::path(WW_TESTDATEN) / "dipol.nec").string();

    for (const auto& [signal, erwartet] : {std::pair{SIGINT, 130}, std::pair{SIGTERM, 143}}) {
        TestHilfen::PrivaterTemp temp; // TMPDIR des Programms: hier entstehen die Arbeitsordner
        const auto fehler = daten.pfad() / ("fehler" + std::to_string(signal));
        const pid_t cli = starten({WW_CLI, "rechnen", "--kern", "arcanum", deck}, fehler);
        ASSERT_GT(cli, 0);
        std::vector<pid_t> loeser;
        for (int i = 0; i < 1500 && loeser.empty(); ++i) {
            std::this_thread::sleep_for(20ms);
            loeser = kinder(cli);
        }
        ASSERT_FALSE(loeser.empty()) << "Der hängende Kern wurde nie gestartet.";

        ::kill(cli, signal);
        int status = 0;
        for (int i = 0; i < 1500 && ::waitpid(cli, &status, WNOHANG) == 0; ++i)
            std::this_thread::sleep_for(20ms);
        if (::kill(cli, SIGKILL) == 0) ::waitpid(cli, &status, 0); // hängt es, endet der Test trotzdem
        EXPECT_TRUE(WIFEXITED(status) && WEXITSTATUS(status) == erwartet) << "Status " << status;
        for (const auto pid : loeser)
            EXPECT_NE(::kill(pid, 0), 0) << "Löser " << pid << " läuft noch";
        EXPECT_EQ(temp.eintraege(), std::vector<std::string>{});
        EXPECT_THAT(TestHilfen::dateiLesen(fehler), testing::EndsWith("Rechnung abgebrochen.\n"));
    }
}
