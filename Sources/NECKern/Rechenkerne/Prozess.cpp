#include "NECKern/Rechenkerne/Prozess.hpp"

#include "NECKern/Rechenkerne/KernFehler.hpp"
#include "NECKern/Systemgrund.hpp"
#include "NECKern/Unicode.hpp"
#include "NECKern/Uuid.hpp"

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <cmath>
#include <csignal>
#include <cstdint>
#include <fcntl.h>
#include <optional>
#include <poll.h>
#include <spawn.h>
#include <sys/eventfd.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <system_error>
#include <unistd.h>

extern char** environ;

namespace NECKern::Prozess {

namespace {

using Uhr = std::chrono::steady_clock;

// Nach SIGTERM bekommt das Programm so lange, bevor SIGKILL folgt. Angehaltene
// Läufe bekommen weniger, damit ein Programmende nie lange auf sie wartet.
constexpr auto gnadenfrist = std::chrono::seconds(2);
constexpr auto gnadenfristAngehalten = std::chrono::milliseconds(500);
// nice-Wert der Löserprogramme.
constexpr int loeserVorrang = 19;
// Mehr Fehlerausgabe wird weiter gelesen (damit das Programm nie hängt), aber verworfen.
constexpr std::size_t fehlerausgabeHoechstens = 8u << 20;

// Über syscall statt <sys/pidfd.h>: der Kopf von glibc 2.36 fehlt das extern "C".
int pidfdOeffnen(pid_t pid) {
    return static_cast<int>(::syscall(SYS_pidfd_open, pid, 0));
}
void signalSenden(int pidfd, int signal) {
    ::syscall(SYS_pidfd_send_signal, pidfd, signal, nullptr, 0);
}

std::string inAnfuehrung(const std::filesystem::path& p) {
    return "„" + p.string() + "“";
}

class Fd {
  public:
    Fd() = default;
    explicit Fd(int fd) : fd_(fd) {}
    ~Fd() { schliessen(); }
    Fd(const Fd&) = delete;
    Fd& operator=(const Fd&) = delete;
    int get() const { return fd_; }
    void schliessen() {
        if (fd_ >= 0) ::close(fd_);
        fd_ = -1;
    }

  private:
    int fd_ = -1;
};

// Kein Kind überlebt seinen Aufrufer: endet ausfuehren vorzeitig (Ausnahme),
// wird das noch laufende Kind getötet und eingesammelt.
class Kind {
  public:
    explicit Kind(pid_t pid) : pid_(pid) {}
    ~Kind() {
        if (eingesammelt_) return;
        ::kill(pid_, SIGKILL);
        int status;
        while (::waitpid(pid_, &status, 0) < 0 && errno == EINTR) {
        }
    }
    Kind(const Kind&) = delete;
    Kind& operator=(const Kind&) = delete;

    pid_t pid() const { return pid_; }

    int einsammeln() {
        int status = 0;
        while (::waitpid(pid_, &status, 0) < 0) {
            if (errno == EINTR) continue;
            eingesammelt_ = true;
            return -1;
        }
        eingesammelt_ = true;
        if (WIFEXITED(status)) return WEXITSTATUS(status);
        if (WIFSIGNALED(status)) return WTERMSIG(status);
        return -1;
    }

  private:
    pid_t pid_;
    bool eingesammelt_ = false;
};

class StartAktionen {
  public:
    StartAktionen() {
        posix_spawn_file_actions_init(&aktionen);
        posix_spawnattr_init(&attribute);
    }
    ~StartAktionen() {
        posix_spawn_file_actions_destroy(&aktionen);
        posix_spawnattr_destroy(&attribute);
    }
    StartAktionen(const StartAktionen&) = delete;
    StartAktionen& operator=(const StartAktionen&) = delete;

    posix_spawn_file_actions_t aktionen;
    posix_spawnattr_t attribute;
};

// Liest, was gerade in der Leitung liegt; false bei Dateiende. Höchstens einige
// Blöcke je Aufruf, damit ein unablässig schreibendes Programm die Frist nicht aushebelt.
bool abholen(int fd, std::string& puffer) {
    char block[65536];
    for (int runde = 0; runde < 16;) {
        const ssize_t n = ::read(fd, block, sizeof block);
        if (n > 0) {
            const auto platz = fehlerausgabeHoechstens - std::min(puffer.size(), fehlerausgabeHoechstens);
            puffer.append(block, std::min(static_cast<std::size_t>(n), platz));
            ++runde;
            continue;
        }
        if (n == 0) return false;
        if (errno == EINTR) continue;
        return errno == EAGAIN || errno == EWOULDBLOCK;
    }
    return true;
}

int millisekundenBis(std::optional<Uhr::time_point> frist) {
    if (!frist) return -1;
    const auto rest = std::chrono::ceil<std::chrono::milliseconds>(*frist - Uhr::now()).count();
    return static_cast<int>(std::clamp<long long>(rest, 0, 1 << 30));
}

std::optional<Uhr::time_point> fristNach(double sekunden) {
    if (std::isinf(sekunden) && sekunden > 0) return std::nullopt;
    if (!(sekunden > 0)) return Uhr::now();
    const double grenze = 365.0 * 24 * 3600; // länger wartet niemand
    return Uhr::now() + std::chrono::duration_cast<Uhr::duration>(
                            std::chrono::duration<double>(std::min(sekunden, grenze)));
}

} // namespace

std::filesystem::path arbeitsordner() {
    std::error_code fehler;
    const auto temp = std::filesystem::temp_directory_path(fehler);
    if (fehler)
        throw KernFehler("Das temporäre Verzeichnis ist nicht verfügbar: " + systemgrund(fehler) + ".");
    std::filesystem::create_directories(temp, fehler);
    if (fehler)
        throw KernFehler("Das temporäre Verzeichnis " + inAnfuehrung(temp) +
                         " konnte nicht angelegt werden: " + systemgrund(fehler) + ".");
    // Acht Zeichen einer Zufalls-UUID; ein Zusammenstoss mit einem bestehenden
    // Ordner wird nie geteilt, sondern mit einem neuen Namen wiederholt.
    for (int versuch = 0;; ++versuch) {
        auto ordner = temp / ("nec-" + Uuid().text().substr(0, 8));
        if (::mkdir(ordner.c_str(), 0700) == 0) return ordner;
        const int e = errno;
        if (e != EEXIST || versuch >= 16)
            throw KernFehler("Der Arbeitsordner " + inAnfuehrung(ordner) +
                             " konnte nicht angelegt werden: " + systemgrund(e) + ".");
    }
}

Ende ausfuehren(const std::filesystem::path& programm, const std::vector<std::string>& argumente,
                const std::filesystem::path& ordner, double zeitlimit, std::stop_token stopp) {
    if (stopp.stop_requested()) throw KernFehler(abgebrochen);
    // Ein Stoppwunsch weckt das Warten über einen eigenen Deskriptor.
    Fd wecker(::eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK));
    if (wecker.get() < 0)
        throw KernFehler("Für " + inAnfuehrung(programm) +
                         " konnte kein Weckdeskriptor angelegt werden: " + systemgrund(errno) + ".");
    std::stop_callback wecken(stopp, [fd = wecker.get()] {
        const std::uint64_t eins = 1;
        (void)!::write(fd, &eins, sizeof eins);
    });

    int leitung[2];
    if (::pipe2(leitung, O_CLOEXEC) != 0)
        throw KernFehler("Für " + inAnfuehrung(programm) +
                         " konnte keine Leitung angelegt werden: " + systemgrund(errno) + ".");
    Fd lesen(leitung[0]);
    Fd schreiben(leitung[1]);
    ::fcntl(lesen.get(), F_SETFL, ::fcntl(lesen.get(), F_GETFL) | O_NONBLOCK);

    StartAktionen start;
    posix_spawn_file_actions_addopen(&start.aktionen, STDOUT_FILENO, "/dev/null", O_WRONLY, 0);
    posix_spawn_file_actions_adddup2(&start.aktionen, schreiben.get(), STDERR_FILENO);
    posix_spawn_file_actions_addclosefrom_np(&start.aktionen, STDERR_FILENO + 1);
    posix_spawn_file_actions_addchdir_np(&start.aktionen, ordner.c_str());
    // Das Kind beginnt mit Standard-Signalen, was immer der Aufrufer blockiert oder übergeht.
    sigset_t alle, keine;
    sigfillset(&alle);
    sigemptyset(&keine);
    posix_spawnattr_setsigdefault(&start.attribute, &alle);
    posix_spawnattr_setsigmask(&start.attribute, &keine);
    posix_spawnattr_setflags(&start.attribute, POSIX_SPAWN_SETSIGDEF | POSIX_SPAWN_SETSIGMASK);

    std::vector<char*> argv;
    std::string name = programm.string();
    argv.push_back(name.data());
    std::vector<std::string> kopie(argumente);
    for (auto& a : kopie)
        argv.push_back(a.data());
    argv.push_back(nullptr);

    pid_t pid;
    if (int e =
            ::posix_spawn(&pid, programm.c_str(), &start.aktionen, &start.attribute, argv.data(), environ))
        throw KernFehler("Das Programm " + inAnfuehrung(programm) +
                         " konnte nicht gestartet werden: " + systemgrund(e) + ".");
    Kind kind(pid);
    // Löser rechnen nachrangig: auch wenn mehrere Läufe alle Kerne belegen, bleibt das Fenster
    // flüssig (gemessen: längster Hänger der Ereignisschleife 6,4 ms mit nice 0, 3,7–4,4 ms mit 19).
    ::setpriority(PRIO_PROCESS, static_cast<id_t>(pid), loeserVorrang);
    schreiben.schliessen();

    Fd pidfd(pidfdOeffnen(pid));
    if (pidfd.get() < 0)
        throw KernFehler("Das Programm " + inAnfuehrung(programm) +
                         " kann nicht überwacht werden: " + systemgrund(errno) + ".");

    // Warten auf das Ende; die Fehlerausgabe wird dabei laufend abgeholt,
    // damit eine volle Leitung das Programm nie anhält.
    std::string fehlerausgabe;
    auto frist = fristNach(zeitlimit);
    int gesendet = 0;
    bool leitungOffen = true;
    bool angehalten = false;
    for (;;) {
        pollfd warten[3] = {{pidfd.get(), POLLIN, 0},
                            {leitungOffen ? lesen.get() : -1, POLLIN, 0},
                            {angehalten ? -1 : wecker.get(), POLLIN, 0}};
        const int bereit = ::poll(warten, 3, millisekundenBis(frist));
        if (bereit < 0) {
            if (errno == EINTR) continue;
            throw KernFehler("Das Warten auf " + inAnfuehrung(programm) +
                             " ist gescheitert: " + systemgrund(errno) + ".");
        }
        if (warten[1].revents != 0) leitungOffen = abholen(lesen.get(), fehlerausgabe);
        if (warten[0].revents != 0) break;
        if (warten[2].revents != 0) {
            angehalten = true;
            signalSenden(pidfd.get(), SIGTERM);
            gesendet = SIGTERM;
            frist = Uhr::now() + gnadenfristAngehalten;
            continue;
        }
        if (frist && Uhr::now() >= *frist) {
            const int signal = gesendet == 0 ? SIGTERM : SIGKILL;
            signalSenden(pidfd.get(), signal);
            gesendet = signal;
            frist = signal == SIGTERM ? std::optional(Uhr::now() + gnadenfrist) : std::nullopt;
        }
    }
    const int status = kind.einsammeln();
    if (angehalten) throw KernFehler(abgebrochen);
    // Den Rest abholen, ohne auf Enkel zu warten, die die Leitung noch halten.
    while (leitungOffen && fehlerausgabe.size() < fehlerausgabeHoechstens) {
        const auto vorher = fehlerausgabe.size();
        leitungOffen = abholen(lesen.get(), fehlerausgabe);
        if (fehlerausgabe.size() == vorher) break;
    }
    return {status, Unicode::reparieren(fehlerausgabe)};
}

Arbeitsordner::~Arbeitsordner() {
    std::error_code egal;
    std::filesystem::remove_all(pfad_, egal);
}

} // namespace NECKern::Prozess
