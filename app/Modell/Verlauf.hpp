#pragma once

#include "NECKern/Modell.hpp"

#include <cstddef>
#include <deque>
#include <optional>

// Rückgängig und Wiederholen über ganze Modelle: jede Änderung ist ein Schritt.
// Die ältesten Schritte fallen weg, wenn mehr als `hoechstens` da sind.
class Verlauf {
  public:
    static constexpr std::size_t hoechstens = 500;

    // Vor einer Änderung: der alte Stand kommt auf den Stapel, Wiederholen verfällt.
    void merken(NECKern::Modell vorher);
    // Der Stand vor dem letzten Schritt; `jetzt` wird wiederholbar.
    std::optional<NECKern::Modell> zurueck(NECKern::Modell jetzt);
    std::optional<NECKern::Modell> vor(NECKern::Modell jetzt);
    void leeren();

    bool kannZurueck() const { return !zurueck_.empty(); }
    bool kannVor() const { return !vor_.empty(); }

  private:
    std::deque<NECKern::Modell> zurueck_;
    std::deque<NECKern::Modell> vor_;
};
