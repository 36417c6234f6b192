// Fenstertests: ohne andere Angabe auf der Plattform „offscreen“, mit der
// Schrift, die das Programm setzt, damit Textmasse nicht vom Rechner abhängen.
#include "Fenster/Erscheinung.hpp"

#include <QApplication>
#include <gmock/gmock.h>

int main(int argc, char** argv) {
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication anwendung(argc, argv);
    Erscheinung::anwenden(anwendung);
    testing::InitGoogleMock(&argc, argv);
    return RUN_ALL_TESTS();
}
