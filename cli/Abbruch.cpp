#include "Abbruch.hpp"

#include <chrono>
#include <csignal>
#include <pthread.h>
#include <unistd.h>

namespace Befehle {

namespace {

std::stop_source& quelle() {
    static std::stop_source q;
    return q;
}

sigset_t abbruchSignale() {
    sigset_t menge;
    sigemptyset(&menge);
    sigaddset(&menge, SIGINT);
    sigaddset(&menge, SIGTERM);
    return menge;
}

// Ein angehaltener Lauf endet binnen einer halben Sekunde (SIGTERM, dann SIGKILL).
// Wartet das Programm dagegen ausserhalb eines Laufs (etwa auf die Standardeingabe),
// endet es nach dieser Frist hart; einen Löser oder Ordner gibt es dann nicht.
constexpr auto frist = std::chrono::seconds(2);

} // namespace

std::stop_token stoppzeichen() {
    return quelle().get_token();
}

Abbruch::Abbruch() {
    const auto menge = abbruchSignale();
    pthread_sigmask(SIG_BLOCK, &menge, nullptr);
    faden_ = std::thread([this] { warten(); });
}

Abbruch::~Abbruch() {
    {
        std::lock_guard sperre(mutex_);
        fertig_ = true;
    }
    ende_.notify_all();
    // Weckt den Faden aus sigwait; er findet fertig_ gesetzt und geht.
    pthread_kill(faden_.native_handle(), SIGTERM);
    faden_.join();
}

int Abbruch::signal() const {
    std::lock_guard sperre(mutex_);
    return signal_;
}

void Abbruch::warten() {
    const auto menge = abbruchSignale();
    int signal = 0;
    if (sigwait(&menge, &signal) != 0) return;
    {
        std::lock_guard sperre(mutex_);
        if (fertig_) return;
        signal_ = signal;
    }
    quelle().request_stop();
    std::unique_lock sperre(mutex_);
    if (ende_.wait_for(sperre, frist, [this] { return fertig_; })) return;
    static constexpr char satz[] = "Rechnung abgebrochen.\n";
    (void)!::write(STDERR_FILENO, satz, sizeof satz - 1);
    ::_exit(128 + signal);
}

} // namespace Befehle
