#include <QApplication>
#include <gtest/gtest.h>

TEST(Fenster, HatAnwendung) {
    EXPECT_NE(qobject_cast<QApplication*>(QCoreApplication::instance()), nullptr);
}
