#pragma once

#include <QApplication>
#include <QtTest>

/// Makes the running test function fail on any warning but those of a platform
/// without a screen.
inline void failOnWarnings()
{
    QTest::failOnWarning(QRegularExpression(QStringLiteral("^(?!This plugin does not support)")));
}

/// The main function of a test with windows. It shows nothing on the screen
/// unless QT_QPA_PLATFORM names a platform.
#define GUI_TEST_MAIN(TestClass)                                                                   \
    int main(int argc, char** argv)                                                                \
    {                                                                                              \
        if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))                                        \
            qputenv("QT_QPA_PLATFORM", "offscreen");                                               \
        const QApplication application(argc, argv);                                                \
        TestClass test;                                                                            \
        return QTest::qExec(&test, argc, argv);                                                    \
    }
