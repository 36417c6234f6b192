#pragma once

// Gemeinsames für Tests, die Programme starten: ein privates temporäres
// Verzeichnis (TMPDIR) und nec2c-Berichte zu Decks aus tests/daten.
#include "NECKern/Ergebnis.hpp"
#include "NECKern/Rechenkerne/Prozess.hpp"

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <iterator>
#include <optional>
#include <ostream>
#include <string>
#include <vector>

// Lesbare Ausgabe in Fehlermeldungen von gtest.
namespace NECKern {
inline void PrintTo(const Komplex& k, std::ostream* os) {
    *os << "(" << k.re << ", " << k.im << ")";
}
} // namespace NECKern

namespace TestHilfen {

namespace fs = std::filesystem;

inline const fs::path nec2c = "/usr/bin/nec2c";
inline const fs::path falscherKern = fs::path(WW_HILFEN_ORDNER) / "falscherKern";

inline std::string dateiLesen(const fs::path& pfad) {
    std::ifstream datei(pfad, std::ios::binary);
    return {std::istreambuf_iterator<char>(datei), {}};
}

// Setzt eine Umgebungsvariable für die Dauer eines Tests (nullptr: entfernt sie).
class Umgebung {
  public:
    Umgebung(const char* name, const char* wert) : name_(name) {
        if (const char* alt = std::getenv(name)) alt_ = alt;
        if (wert)
            ::setenv(name, wert, 1);
        else
            ::unsetenv(name);
    }
    ~Umgebung() {
        if (alt_)
            ::setenv(name_, alt_->c_str(), 1);
        else
            ::unsetenv(name_);
    }
    Umgebung(const Umgebung&) = delete;
    Umgebung& operator=(const Umgebung&) = delete;

  private:
    const char* name_;
    std::optional<std::string> alt_;
};

inline fs::path neuerTempOrdner() {
    std::string muster = (fs::temp_directory_path() / "ww-test-XXXXXX").string();
    return ::mkdtemp(muster.data());
}

// Lenkt TMPDIR für die Dauer eines Tests in einen eigenen Ordner, damit die
// Arbeitsordner dieses Tests sich zählen lassen, ohne andere Läufe zu sehen.
class PrivaterTemp {
  public:
    PrivaterTemp() : ordner_(neuerTempOrdner()), tmpdir_("TMPDIR", ordner_.c_str()) {}
    ~PrivaterTemp() {
        std::error_code egal;
        fs::remove_all(ordner_, egal);
    }

    const fs::path& ordner() const { return ordner_; }

    std::vector<std::string> eintraege() const {
        std::vector<std::string> namen;
        for (const auto& e : fs::directory_iterator(ordner_))
            namen.push_back(e.path().filename().string());
        return namen;
    }

  private:
    fs::path ordner_;
    Umgebung tmpdir_;
};

// Ein Link auf das falsche Löserprogramm; sein Name wählt, was es tut.
inline fs::path falscherKernAls(const fs::path& ordner, const std::string& art) {
    auto link = ordner / art;
    fs::create_symlink(falscherKern, link);
    return link;
}

// Der Bericht, den nec2c zu einem Deck aus tests/daten schreibt.
inline std::string nec2cBericht(const std::string& deck) {
    NECKern::Prozess::Arbeitsordner ordner;
    fs::copy_file(fs::path(WW_TESTDATEN) / deck, ordner.pfad() / "a.nec");
    NECKern::Prozess::ausfuehren(nec2c, {"-i", "a.nec", "-o", "a.out"}, ordner.pfad(), 60);
    return dateiLesen(ordner.pfad() / "a.out");
}

// wellenwerk-cli über den Prozessstarter; die Standardausgabe fängt das
// Hilfsprogramm „umleiten“ in einer Datei auf.
class CliTest : public testing::Test {
  protected:
    struct Aufruf {
        int status;
        std::string aus;
        std::string fehler;
    };

    Aufruf cli(std::vector<std::string> argumente, const std::string& eingabe = {}) {
        const auto ausgabe = ordner_.pfad() / "aus.txt";
        std::vector<std::string> voll;
        if (!eingabe.empty()) voll = {"-ein", eingabe};
        voll.push_back(ausgabe.string());
        voll.push_back(WW_CLI);
        voll.insert(voll.end(), argumente.begin(), argumente.end());
        const auto ende =
            NECKern::Prozess::ausfuehren(fs::path(WW_HILFEN_ORDNER) / "umleiten", voll, ordner_.pfad(), 120);
        return {ende.status, dateiLesen(ausgabe), ende.fehlerausgabe};
    }

    NECKern::Prozess::Arbeitsordner ordner_;
};

} // namespace TestHilfen
