#pragma once

#include "Modell/Auftrag.hpp"

#include <QMetaObject>
#include <QObject>

#include <atomic>
#include <exception>
#include <functional>
#include <list>
#include <memory>
#include <optional>
#include <string>
#include <thread>

// Was eine Arbeit im Hintergrund zurückgibt: ihr Wert oder der Satz ihres Fehlers.
template <typename T> struct Ausgang {
    std::optional<T> wert;
    std::string fehler;
};

// Führt Arbeiten auf eigenen Threads aus und gibt ihr Ergebnis über die
// Ereignisschleife an den Thread des Empfängers zurück. beenden() hält alle
// Aufträge an und wartet auf jeden Thread; danach kommt nichts mehr an.
class Hintergrund {
  public:
    explicit Hintergrund(QObject& empfaenger) : empfaenger_(empfaenger) {}
    ~Hintergrund() { beenden(); }
    Hintergrund(const Hintergrund&) = delete;
    Hintergrund& operator=(const Hintergrund&) = delete;

    template <typename T>
    void starten(std::shared_ptr<Auftrag> auftrag, std::function<T(std::stop_token)> arbeit,
                 std::function<void(Ausgang<T>)> fertig) {
        aufraeumen();
        auto erledigt = std::make_shared<std::atomic<bool>>(false);
        auto* empfaenger = &empfaenger_;
        std::jthread faden([=, arbeit = std::move(arbeit), fertig = std::move(fertig)] {
            Ausgang<T> ausgang;
            try {
                ausgang.wert = arbeit(auftrag->stoppZeichen());
            } catch (const std::exception& e) {
                ausgang.fehler = e.what();
            }
            QMetaObject::invokeMethod(
                empfaenger, [fertig, ausgang = std::move(ausgang)]() mutable { fertig(std::move(ausgang)); },
                Qt::QueuedConnection);
            *erledigt = true;
        });
        faeden_.push_back({std::move(faden), std::move(auftrag), std::move(erledigt)});
    }

    // Schickt eine Nachricht aus einem Arbeitsthread an den Empfänger; in Reihenfolge.
    void melden(std::function<void()> nachricht) {
        QMetaObject::invokeMethod(&empfaenger_, std::move(nachricht), Qt::QueuedConnection);
    }

    void beenden();
    std::size_t laufende() const;

  private:
    struct Faden {
        std::jthread faden;
        std::shared_ptr<Auftrag> auftrag;
        std::shared_ptr<std::atomic<bool>> erledigt;
    };

    void aufraeumen();

    QObject& empfaenger_;
    std::list<Faden> faeden_;
};
