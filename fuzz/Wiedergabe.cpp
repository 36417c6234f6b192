// Spielt jede Datei eines Korpus-Ordners einmal in das Fuzz-Ziel ein, damit die
// gefundenen Eingaben als gewöhnlicher Test in ctest laufen.
#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <iterator>
#include <vector>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* daten, std::size_t groesse);

int main(int argc, char** argv) {
    std::size_t anzahl = 0;
    for (int i = 1; i < argc; ++i) {
        std::filesystem::path wurzel(argv[i]);
        if (!std::filesystem::exists(wurzel)) {
            std::cerr << "Korpus fehlt: " << wurzel << '\n';
            return 1;
        }
        for (const auto& eintrag : std::filesystem::recursive_directory_iterator(wurzel)) {
            if (!eintrag.is_regular_file()) continue;
            std::ifstream datei(eintrag.path(), std::ios::binary);
            std::vector<char> inhalt((std::istreambuf_iterator<char>(datei)),
                                     std::istreambuf_iterator<char>());
            LLVMFuzzerTestOneInput(reinterpret_cast<const std::uint8_t*>(inhalt.data()), inhalt.size());
            ++anzahl;
        }
    }
    std::cout << anzahl << " Eingaben wiedergegeben\n";
    return anzahl > 0 ? 0 : 1;
}
