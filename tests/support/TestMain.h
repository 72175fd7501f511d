#pragma once

#include <QApplication>
#include <QTemporaryDir>
#include <QTest>

#include <cstdlib>

namespace velmora::test {
// Keeps the user's own settings and runtime folder out of reach of every test.
void isolateEnvironment(const QTemporaryDir& home);
} // namespace velmora::test

#define VELMORA_TEST_MAIN(TestClass)                                                                \
    int main(int argc, char** argv)                                                                \
    {                                                                                              \
        QTemporaryDir home;                                                                        \
        velmora::test::isolateEnvironment(home);                                                   \
        QApplication app(argc, argv);                                                              \
        QApplication::setLayoutDirection(Qt::RightToLeft);                                         \
        TestClass test;                                                                            \
        return QTest::qExec(&test, argc, argv);                                                    \
    }
