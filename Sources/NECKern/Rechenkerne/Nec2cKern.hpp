#pragma once

#include "NECKern/Rechenkerne/Rechenkern.hpp"

#include <filesystem>
#include <optional>

namespace NECKern {

// Der Standardkern: das Programm nec2c.
class Nec2cKern final : public Rechenkern {
  public:
    // Ohne Pfad wird nec2c gesucht (finden()).
    explicit Nec2cKern(std::optional<std::filesystem::path> programm = std::nullopt);

    // Neben dem eigenen Programm, dann Kerne/bin/nec2c im Quellbaum, dann auf PATH.
    static std::optional<std::filesystem::path> finden();

    std::string kennung() const override { return "nec2c"; }
    std::string name() const override { return "NEC-2 (nec2c)"; }
    std::string beschreibung() const override {
        return "Klassischer NEC-2-Kern, voll kompatibel, mit Bodenmodellen. Schnell.";
    }
    bool verfuegbar() const override;
    // Eine Karte über 132 Zeichen (nach der ASCII-Umschrift) wirft KernFehler, bevor
    // ein Ordner entsteht; so lange Kommentare werden umgebrochen.
    using Rechenkern::rechnen;
    NECErgebnis rechnen(std::string_view deck, std::stop_token stopp) const override;

    const std::optional<std::filesystem::path>& programm() const { return programm_; }

  private:
    std::optional<std::filesystem::path> programm_;
};

} // namespace NECKern
