#include "KernWahl.hpp"

#include "NECKern/Rechenkerne/Nec2cKern.hpp"

#include "Befehle.hpp"

#include <memory>

namespace Befehle {

NECKern::KernZeiger kernWaehlen(const std::string& kennung) {
    if (kennung == "nec2c") return std::make_shared<const NECKern::Nec2cKern>();
    throw Aufruffehler("Unbekannter Kern „" + kennung + "“. Verfügbar: nec2c.");
}

} // namespace Befehle
