#pragma once

#include "tests/Files.h"

#include <QTemporaryDir>

#include <optional>

/// A test case whose functions fail on any warning, but those of a platform
/// without a screen, and have a folder of their own. Newer model testers try out
/// fonts and colours, which a program without windows has none of.
class TestCase : public QObject {
    Q_OBJECT
public:
    /// Shows nothing on the screen unless QT_QPA_PLATFORM names a platform.
    static void initMain()
    {
        if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
            qputenv("QT_QPA_PLATFORM", "offscreen");
    }

protected slots:
    void init()
    {
        QTest::failOnWarning(QRegularExpression(QStringLiteral(
            "^(?!This plugin does not support|Trying to construct an instance of an invalid)")));
        m_folder.emplace();
    }

protected:
    QString path() const { return m_folder->path(); }
    QString path(const QString& name) const { return m_folder->filePath(name); }

private:
    std::optional<QTemporaryDir> m_folder;
};
