#include "Befehle.hpp"

namespace Befehle {

void anmelden(CLI::App& app) {
    beispielAnmelden(app);
}

} // namespace Befehle
