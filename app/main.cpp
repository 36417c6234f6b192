// wellenwerk: das Fenster.
#include <QApplication>

int main(int argc, char** argv) {
    QApplication anwendung(argc, argv);
    return 0;
}
