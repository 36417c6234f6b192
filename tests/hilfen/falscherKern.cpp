// Ein falsches Löserprogramm für Tests. Die Art wählt der eigene Name (über
// einen Link, so dass Kerne es mit ihren festen Argumenten starten können),
// unter dem Namen falscherKern das erste Argument, und unter dem Namen eines
// Kerns aus dem Kernordner (etwa „arcanum“) die Umgebungsvariable FALSCHER_KERN:
//   haengen            schläft ewig (SIGTERM beendet es)
//   stur               schläft ewig und übergeht SIGTERM
//   signal             stirbt an SIGUSR1
//   ende N [TEXT]      schreibt TEXT nach stderr, Exit-Code N
//   laut               schreibt 1 MiB nach stderr, dann Exit-Code 0
//   ordner             schreibt den aktuellen Ordner nach stderr
//   offen              schreibt die Nummern der offenen Dateideskriptoren nach stderr
//   spiegel            schreibt jede Zeile der Eingabe (-i) als „WARNING “-Zeile
//                      in die Ausgabe (-o)
//   bericht1           schreibt einen kurzen Bericht, „Achtung“ nach stderr, Exit-Code 1
//   leer4              legt eine leere Ausgabe an, Exit-Code 4
//   ohne3              „kaputt“ nach stderr, keine Ausgabe, Exit-Code 3
//   muell              schreibt Bytes ausserhalb von ASCII in die Ausgabe
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <dirent.h>
#include <fstream>
#include <iostream>
#include <sstream>
#include <string>
#include <unistd.h>
#include <vector>

namespace {

std::string argument(const std::vector<std::string>& a, const std::string& schalter) {
    for (std::size_t i = 0; i + 1 < a.size(); ++i)
        if (a[i] == schalter) return a[i + 1];
    return {};
}

[[noreturn]] void ewig() {
    for (;;)
        pause();
}

void ausgabe(const std::vector<std::string>& a, const std::string& inhalt) {
    std::ofstream(argument(a, "-o"), std::ios::binary) << inhalt;
}

} // namespace

int main(int argc, char** argv) {
    std::string art = argv[0];
    art = art.substr(art.find_last_of('/') + 1);
    std::vector<std::string> a(argv + 1, argv + argc);
    if (art == "falscherKern" && !a.empty()) {
        art = a.front();
        a.erase(a.begin());
    } else if (const char* gewaehlt = std::getenv("FALSCHER_KERN")) {
        art = gewaehlt;
    }

    if (art == "haengen") ewig();
    if (art == "stur") {
        std::signal(SIGTERM, SIG_IGN);
        ewig();
    }
    if (art == "signal") {
        std::raise(SIGUSR1);
        return 99;
    }
    if (art == "ende") {
        if (a.size() > 1) std::cerr << a[1];
        return a.empty() ? 0 : std::atoi(a[0].c_str());
    }
    if (art == "laut") {
        std::string block(1024, 'x');
        for (int i = 0; i < 1024; ++i)
            std::fwrite(block.data(), 1, block.size(), stderr);
        return 0;
    }
    if (art == "ordner") {
        char puffer[4096];
        std::cerr << (getcwd(puffer, sizeof puffer) ? puffer : "?");
        return 0;
    }
    if (art == "offen") {
        DIR* d = opendir("/proc/self/fd");
        const int eigener = dirfd(d);
        while (dirent* e = readdir(d)) {
            if (e->d_name[0] == '.' || std::atoi(e->d_name) == eigener) continue;
            std::cerr << e->d_name << ' ';
        }
        closedir(d);
        return 0;
    }
    if (art == "spiegel") {
        std::ifstream ein(argument(a, "-i"), std::ios::binary);
        std::ostringstream aus;
        for (std::string zeile; std::getline(ein, zeile);)
            aus << "WARNING " << zeile << '\n';
        ausgabe(a, aus.str());
        return 0;
    }
    if (art == "bericht1") {
        ausgabe(a, " FREQUENCY : 7.0000E+00 MHz\n INPUT POWER = 1.0000E-02 Watts");
        std::cerr << "Achtung\n";
        return 1;
    }
    if (art == "leer4") {
        ausgabe(a, "");
        return 4;
    }
    if (art == "ohne3") {
        std::cerr << "  kaputt\n";
        return 3;
    }
    if (art == "muell") {
        ausgabe(a, " FREQUENCY : 7.0000E+00 MHz\n\xff\xfe");
        return 0;
    }
    std::cerr << "unbekannte Art: " << art << '\n';
    return 100;
}
