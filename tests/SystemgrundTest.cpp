#include "NECKern/Systemgrund.hpp"

#include <cerrno>
#include <gtest/gtest.h>

using NECKern::systemgrund;

TEST(Systemgrund, HaeufigeGruendeDeutschAndereMitNummer) {
    EXPECT_EQ(systemgrund(ENOENT), "Datei oder Verzeichnis nicht gefunden");
    EXPECT_EQ(systemgrund(EACCES), "keine Berechtigung");
    EXPECT_EQ(systemgrund(ENOSPC), "kein Platz mehr auf dem Datenträger");
    EXPECT_EQ(systemgrund(std::make_error_code(std::errc::read_only_file_system)), "Dateisystem nur lesbar");
    EXPECT_EQ(systemgrund(EPROTO), "Systemfehler " + std::to_string(EPROTO));
}
