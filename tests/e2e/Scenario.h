#pragma once

#include "tests/Files.h"
#include "tests/e2e/Installation.h"
#include "tests/e2e/LoopbackServer.h"
#include "tests/e2e/User.h"

#include <memory>

// A caption comes and goes while a page is loading: once is enough.
#define QTRY_SEES(what) QVERIFY(QTest::qWaitFor([&] { return User::sees(what); }, patience))
#define QTRY_COLOUR(place, colour)                                                                 \
    QTRY_COMPARE_WITH_TIMEOUT(User::colourAt(place), QColor(colour), patience)

/// What a user does with the real program, by keys, clicks and drags, and what the
/// display shows then. Fails on every warning that the program writes, but the
/// engine's own.
class Scenario : public QObject {
    Q_OBJECT
protected slots:
    void init();
    void cleanup();

protected:
    /// The caption of the frame while no browser window fills it.
    static QString title() { return QStringLiteral("Tessera 5.3.5"); }
    /// The caption of the frame while the window with this page fills it.
    static QString maximised(const QString& page);
    static QByteArray coloured(const char* name, const char* colour);

    /// Starts the program with a page and waits until it is there.
    void open(const QString& path, const QString& pageTitle);
    /// What the program has written since it was started.
    const QByteArray& output();

    std::unique_ptr<LoopbackServer> m_server;
    std::unique_ptr<Installation> m_program;
    std::unique_ptr<QProcess> m_run;

private:
    QByteArray m_output;
};
