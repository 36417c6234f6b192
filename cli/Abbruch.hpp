#pragma once

#include <condition_variable>
#include <mutex>
#include <stop_token>
#include <thread>

// Ctrl+C und SIGTERM: ein eigener Faden nimmt die Signale an und löst das
// Stoppzeichen aus, das jeder Kernaufruf bekommt. Die laufenden Löser enden
// (SIGTERM, dann SIGKILL), ihre Ordner verschwinden beim Abwickeln, und das
// Programm endet mit 128 + Signalnummer.
namespace Befehle {

// Das Stoppzeichen des ganzen Programms.
std::stop_token stoppzeichen();

class Abbruch {
  public:
    // Blockiert SIGINT und SIGTERM – vor jedem weiteren Faden anlegen, damit alle
    // Fäden sie geerbt blockieren und nur der Wartefaden sie bekommt.
    Abbruch();
    ~Abbruch();
    Abbruch(const Abbruch&) = delete;
    Abbruch& operator=(const Abbruch&) = delete;

    // Das empfangene Signal, sonst 0.
    int signal() const;

  private:
    void warten();

    mutable std::mutex mutex_;
    std::condition_variable ende_;
    bool fertig_ = false;
    int signal_ = 0;
    std::thread faden_;
};

} // namespace Befehle
