#include <gtest/gtest.h>

#include <QCoreApplication>

// The drivers of the databases are plugins: they need an application to be found by, and some a locale that it sets.
int main(int argc, char** argv) {
    QCoreApplication application(argc, argv);
    testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}
