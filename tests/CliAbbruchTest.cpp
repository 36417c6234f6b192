// Ctrl+C und SIGTERM: wellenwerk-cli beendet jeden Löser, den es gestartet hat,
// räumt dessen Arbeitsordner weg und endet mit 128 + Signal.
#include "TestHilfen.hpp"

#include <charconv>
#include <chrono>
#include <csignal>
#include <fcntl.h>
#include <fstream>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <spawn.h>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>

extern char** environ;

namespace fs = std::filesystem;
using namespace std::chrono_literals;

namespace {

// Elternprozess und Name eines Prozesses aus /proc/PID/stat; der Name steht in
// Klammern und darf Leerzeichen enthalten, darum ab der letzten Klammer lesen.
struct Eintrag {
    pid_t eltern = 0;
    std::string name;
};

std::optional<Eintrag> prozess(const fs::path& ordner) {
    std::ifstream datei(ordner / "stat");
    std::string zeile;
    if (!std::getline(datei, zeile)) return std::nullopt;
    const auto auf = zeile.find('('), zu = zeile.rfind(')');
    if (auf == std::string::npos || zu == std::string::npos || zu + 4 >= zeile.size()) return std::nullopt;
    const auto rest = std::string_view(zeile).substr(zu + 4); // ") S " überspringen
    Eintrag e;
    e.name = zeile.substr(auf + 1, zu - auf - 1);
    std::from_chars(rest.data(), rest.data() + rest.size(), e.eltern);
    return e;
}

std::vector<pid_t> loeser(pid_t eltern, const std::string& name) {
    std::vector<pid_t> liste;
    for (const auto& e : fs::directory_iterator("/proc")) {
        pid_t pid = 0;
        const auto n = e.path().filename().string();
        if (std::from_chars(n.data(), n.data() + n.size(), pid).ec != std::errc()) continue;
        const auto p = prozess(e.path());
        if (p && p->eltern == eltern && p->name == name) liste.push_back(pid);
    }
    return liste;
}

bool lebt(pid_t pid) {
    return ::kill(pid, 0) == 0;
}

// Startet wellenwerk-cli mit zusätzlichen Umgebungsvariablen; stdout und stderr in Dateien.
pid_t starten(const std::vector<std::string>& argumente, const std::vector<std::string>& umgebung,
              const fs::path& ordner) {
    std::vector<std::string> env(umgebung);
    for (char** e = environ; *e; ++e) {
        const std::string_view eintrag(*e);
        const bool ersetzt = std::any_of(umgebung.begin(), umgebung.end(), [&](const std::string& u) {
            return eintrag.starts_with(u.substr(0, u.find('=') + 1));
        });
        if (!ersetzt) env.emplace_back(eintrag);
    }
    std::vector<std::string> argv{WW_CLI};
    argv.insert(argv.end(), argumente.begin(), argumente.end());
    auto zeiger = [](std::vector<std::string>& v) {
        std::vector<char*> z;
        for (auto& s : v)
            z.push_back(s.data());
        z.push_back(nullptr);
        return z;
    };
    auto argvZ = zeiger(argv), envZ = zeiger(env);
    posix_spawn_file_actions_t aktionen;
    posix_spawn_file_actions_init(&aktionen);
    posix_spawn_file_actions_addopen(&aktionen, STDOUT_FILENO, (ordner / "aus.txt").c_str(),
                                     O_WRONLY | O_CREAT | O_TRUNC, 0644);
    posix_spawn_file_actions_addopen(&aktionen, STDERR_FILENO, (ordner / "fehler.txt").c_str(),
                                     O_WRONLY | O_CREAT | O_TRUNC, 0644);
    // Ein übergangenes SIGINT (etwa aus einer Shell ohne Jobsteuerung) erbte das Programm sonst.
    posix_spawnattr_t attribute;
    posix_spawnattr_init(&attribute);
    sigset_t standard, keine;
    sigemptyset(&standard);
    sigaddset(&standard, SIGINT);
    sigaddset(&standard, SIGTERM);
    sigemptyset(&keine);
    posix_spawnattr_setsigdefault(&attribute, &standard);
    posix_spawnattr_setsigmask(&attribute, &keine);
    posix_spawnattr_setflags(&attribute, POSIX_SPAWN_SETSIGDEF | POSIX_SPAWN_SETSIGMASK);
    pid_t pid = -1;
    const int fehler = posix_spawn(&pid, WW_CLI, &aktionen, &attribute, argvZ.data(), envZ.data());
    posix_spawnattr_destroy(&attribute);
    posix_spawn_file_actions_destroy(&aktionen);
    return fehler == 0 ? pid : -1;
}

// Wartet höchstens `frist` auf das Ende; danach SIGKILL, damit kein Test hängen bleibt.
std::optional<int> warten(pid_t pid, std::chrono::seconds frist) {
    const auto ende = std::chrono::steady_clock::now() + frist;
    int status = 0;
    while (std::chrono::steady_clock::now() < ende) {
        if (::waitpid(pid, &status, WNOHANG) == pid) return status;
        std::this_thread::sleep_for(20ms);
    }
    ::kill(pid, SIGKILL);
    ::waitpid(pid, &status, 0);
    return std::nullopt;
}

} // namespace

TEST(CliAbbruch, SignalBeendetJedenLoeserUndRaeumtSeineOrdnerWeg) {
    for (const auto& [signal, erwartet] : {std::pair{SIGINT, 130}, std::pair{SIGTERM, 143}}) {
        NECKern::Prozess::Arbeitsordner daten;
        TestHilfen::PrivaterTemp temp; // TMPDIR des Programms: hier entstehen die Arbeitsordner
        const auto kerne = daten.pfad() / "Wellenwerk" / "Kerne";
        fs::create_directories(kerne);
        fs::create_symlink(TestHilfen::falscherKern, kerne / "arcanum");
        const auto deck = daten.pfad() / "dipol.nec";
        fs::copy_file(fs::path(WW_TESTDATEN) / "dipol.nec", deck);

        const pid_t cli = starten({"rechnen", "--kern", "arcanum", deck.string()},
                                  {"XDG_DATA_HOME=" + daten.pfad().string(), "FALSCHER_KERN=haengen",
                                   "TMPDIR=" + temp.ordner().string()},
                                  daten.pfad());
        ASSERT_GT(cli, 0);
        std::vector<pid_t> laufend;
        for (int i = 0; i < 1500 && laufend.empty(); ++i) {
            std::this_thread::sleep_for(20ms);
            laufend = loeser(cli, "arcanum");
        }
        ASSERT_FALSE(laufend.empty()) << "Der hängende Kern wurde nie gestartet.";

        ::kill(cli, signal);
        const auto status = warten(cli, 30s);
        ASSERT_TRUE(status.has_value()) << "wellenwerk-cli endete nicht nach Signal " << signal;
        ASSERT_TRUE(WIFEXITED(*status));
        EXPECT_EQ(WEXITSTATUS(*status), erwartet);
        for (const auto pid : laufend)
            EXPECT_FALSE(lebt(pid)) << "Löser " << pid << " läuft noch";
        EXPECT_EQ(temp.eintraege(), std::vector<std::string>{});
        EXPECT_THAT(TestHilfen::dateiLesen(daten.pfad() / "fehler.txt"),
                    testing::EndsWith("Rechnung abgebrochen.\n"));
    }
}
