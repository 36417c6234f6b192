#pragma once

#include <map>
#include <string>

namespace NECKern {

// Werte von Variablen, nach Namen.
using Werte = std::map<std::string, double>;

} // namespace NECKern
