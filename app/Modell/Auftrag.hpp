#pragma once

#include <atomic>
#include <stop_token>

// Griff auf eine laufende Arbeit des Anwendungsmodells. Abbrechen ist
// kooperativ: die Arbeit prüft es an festen Stellen und ändert danach nichts
// mehr, ein laufender Löser rechnet zu Ende. Anhalten beendet auch die Löser
// (Programmende, Knopf „Abbrechen“).
class Auftrag {
  public:
    void abbrechen() { abgebrochen_ = true; }
    bool abgebrochen() const { return abgebrochen_.load(); }

    void anhalten() {
        abgebrochen_ = true;
        stopp_.request_stop();
    }
    std::stop_token stoppZeichen() const { return stopp_.get_token(); }

  private:
    std::atomic<bool> abgebrochen_{false};
    std::stop_source stopp_;
};
