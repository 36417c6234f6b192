// Schreibt das Rechendeck jedes eingebauten Beispiels als NN.nec in den angegebenen Ordner
// und nennt je Zeile Dateiname und Beispielname (für scripts/beispiele-pruefen).
#include "NECKern/Beispiele.hpp"

#include <filesystem>
#include <fmt/format.h>
#include <fstream>
#include <iostream>

int main(int argc, char** argv) {
    if (argc != 2) {
        std::cerr << "Aufruf: beispieldecks ORDNER\n";
        return 2;
    }
    const std::filesystem::path ordner = argv[1];
    int nummer = 0;
    for (const auto& beispiel : NECKern::Beispiele::alle()) {
        auto datei = fmt::format("{:02}.nec", ++nummer);
        try {
            std::ofstream(ordner / datei) << beispiel.modell().deck();
        } catch (const std::exception& fehler) {
            std::cerr << beispiel.name << ": " << fehler.what() << "\n";
            return 1;
        }
        std::cout << datei << '\t' << beispiel.name << '\n';
    }
    return 0;
}
