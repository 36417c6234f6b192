#pragma once

#include "NECKern/Rechenkerne/Rechenkern.hpp"

#include <string>

namespace Befehle {

// Der Kern zu einer Kennung; eine unbekannte Kennung ist ein Aufruffehler.
NECKern::KernZeiger kernWaehlen(const std::string& kennung);

} // namespace Befehle
