#include <QCoreApplication>
#include <gtest/gtest.h>

TEST(Anwendung, HatEreignisschleife) {
    EXPECT_NE(QCoreApplication::instance(), nullptr);
}
