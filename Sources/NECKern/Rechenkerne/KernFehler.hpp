#pragma once

#include <stdexcept>
#include <string>

namespace NECKern {

// Der eine Fehler der Rechenkerne und des Prozessstarters: ein vollständiger
// deutscher Satz, den die Anwendung so zeigt, wie er ist.
class KernFehler : public std::runtime_error {
  public:
    explicit KernFehler(const std::string& text) : std::runtime_error(text) {}
    const char* description() const noexcept { return what(); }
};

} // namespace NECKern
