#pragma once

#include "NECKern/Rechenkerne/Rechenkern.hpp"

#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

namespace NECKern {

// Jeder Löser ausser nec2c: ein Programm, das ein NEC-2-Deck aus einer Datei
// liest und einen Bericht im NEC-2-Format in eine Datei schreibt. Drei Schalter
// sagen, was das Programm nicht kann; das Deck wird vorher passend umgeformt.
class ExternerKern final : public Rechenkern {
  public:
    // argumente: Vorlage; „{ein}“ steht für die Eingabe-, „{aus}“ für die Ausgabedatei.
    // helixAufloesen: nur gerade Drähte (Geometrie::abflachen).
    // eindeutigeTags: jeder Draht mit eigenem Tag (Geometrie::eindeutigeTags).
    // feldkartenEinzeln: nur eine NE-, NH- oder RP-Karte je Lauf; das Deck wird geteilt.
    ExternerKern(std::string kennung, std::string name, std::string beschreibung,
                 std::filesystem::path programm, std::vector<std::string> argumente, bool helixAufloesen,
                 bool eindeutigeTags, bool feldkartenEinzeln);

    std::string kennung() const override { return kennung_; }
    std::string name() const override { return name_; }
    std::string beschreibung() const override { return beschreibung_; }
    bool verfuegbar() const override;
    // Der ganze Lauf mit angewandten Schaltern; mehrere Feldkarten nacheinander.
    using Rechenkern::rechnen;
    NECErgebnis rechnen(std::string_view deck, std::stop_token stopp) const override;

    // Ein Lauf des Programms auf genau diesem Deck.
    NECErgebnis einLauf(std::string_view deck, std::stop_token stopp = {}) const;
    // Ein Deck je Feldkarte; mit weniger als zwei Feldkarten das Deck selbst.
    static std::vector<std::string> feldkartenTrennen(std::string_view deck);

    const std::filesystem::path& programm() const { return programm_; }
    const std::vector<std::string>& argumente() const { return argumente_; }
    bool helixAufloesen() const { return helixAufloesen_; }
    bool eindeutigeTags() const { return eindeutigeTags_; }
    bool feldkartenEinzeln() const { return feldkartenEinzeln_; }

  private:
    std::string kennung_;
    std::string name_;
    std::string beschreibung_;
    std::filesystem::path programm_;
    std::vector<std::string> argumente_;
    bool helixAufloesen_;
    bool eindeutigeTags_;
    bool feldkartenEinzeln_;
};

} // namespace NECKern
