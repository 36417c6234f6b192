// Ein echter externer Kern für Tests: startet /usr/bin/nec2c (execv, keine
// Shell) auf der Ein- und Ausgabedatei, die ihm der Kern nennt.
//   nec2cHuelle [--warten MS] [--protokoll DATEI] [--xq] EIN AUS
//   nec2cHuelle [--warten MS] [--protokoll DATEI] [--xq] -i EIN -o AUS
// --warten schläft vorher (für die Summe der Laufzeiten), --protokoll hängt
// die Zeile „aufruf: “ mit den übrigen Argumenten, das Eingabedeck und die
// Trennzeile „----“ an DATEI an. --xq setzt vor EN ein XQ, wenn das Deck weder
// XQ noch RP hat: nec2c rechnet eine NE- oder NH-Karte sonst nicht, andere
// Löser rechnen am Deckende.
#include <charconv>
#include <chrono>
#include <cstdio>
#include <fstream>
#include <iostream>
#include <iterator>
#include <string>
#include <thread>
#include <unistd.h>
#include <vector>

int main(int argc, char** argv) {
    std::vector<std::string> a(argv + 1, argv + argc);
    int warten = 0; // Millisekunden
    std::string protokoll;
    std::vector<std::string> dateien;
    std::string aufruf;
    bool xq = false;
    for (std::size_t i = 0; i < a.size(); ++i) {
        bool mitWert = i + 1 < a.size();
        if (a[i] == "--warten" && mitWert) {
            const auto& wert = a[++i];
            std::from_chars(wert.data(), wert.data() + wert.size(), warten);
        } else if (a[i] == "--xq") {
            xq = true;
        } else if (a[i] == "--protokoll" && mitWert) {
            protokoll = a[++i];
        } else if ((a[i] == "-i" || a[i] == "-o") && mitWert) {
            aufruf += " " + a[i];
            dateien.push_back(a[++i]);
            aufruf += " " + a[i];
        } else {
            dateien.push_back(a[i]);
            aufruf += " " + a[i];
        }
    }
    if (dateien.size() != 2) {
        std::cerr << "Aufruf: nec2cHuelle [--warten MS] [--protokoll DATEI] EIN AUS\n";
        return 2;
    }
    if (warten > 0) std::this_thread::sleep_for(std::chrono::milliseconds(warten));
    std::ifstream ein(dateien[0], std::ios::binary);
    std::string deck((std::istreambuf_iterator<char>(ein)), std::istreambuf_iterator<char>());
    if (xq && deck.find("\nXQ") == std::string::npos && deck.find("\nRP") == std::string::npos) {
        auto ende = deck.find("\nEN");
        if (ende != std::string::npos)
            std::ofstream(dateien[0], std::ios::binary) << std::string(deck).insert(ende, "\nXQ");
    }
    if (!protokoll.empty()) {
        std::ofstream(protokoll, std::ios::app | std::ios::binary) << "aufruf:" << aufruf << "\n"
                                                                   << deck << "----\n";
    }
    std::vector<char*> argumente{const_cast<char*>("nec2c"), const_cast<char*>("-i"), dateien[0].data(),
                                 const_cast<char*>("-o"),    dateien[1].data(),       nullptr};
    ::execv("/usr/bin/nec2c", argumente.data());
    std::perror("nec2c");
    return 127;
}
