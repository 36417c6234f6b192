// Die Modelltests laufen mit einer Ereignisschleife, aber ohne Bildschirm.
#include <QCoreApplication>
#include <gmock/gmock.h>

int main(int argc, char** argv) {
    QCoreApplication anwendung(argc, argv);
    testing::InitGoogleMock(&argc, argv);
    return RUN_ALL_TESTS();
}
