#include "tests/e2e/Scenario.h"

#include <QRegularExpression>
#include <QtTest>

using namespace Qt::StringLiterals;

namespace {
/// The first line of `output` that is a warning of ours or of the toolkit's.
QString firstWarning(const QByteArray& output)
{
    // Of the engine: its log, and what it says of its sandbox.
    static const QRegularExpression excused(u"^(\\[\\d+:|Sandboxing disabled|$)"_s);
    const QStringList lines = QString::fromUtf8(output).split(u'\n');
    for (const QString& line : lines)
        if (!excused.match(line).hasMatch())
            return line;
    return {};
}
} // namespace

void Scenario::init()
{
    m_server = std::make_unique<LoopbackServer>();
    m_server->page(u"/red"_s, coloured("Rot", "#ff0000"));
    m_server->page(u"/blue"_s, coloured("Blau", "#0000ff"));
    m_program = std::make_unique<Installation>();
    m_run = std::make_unique<QProcess>();
    m_output.clear();
}

void Scenario::cleanup()
{
    User::keepPictureOfFailure();
    if (m_run->state() != QProcess::NotRunning) {
        m_run->kill();
        m_run->waitForFinished();
    }
    QCOMPARE(firstWarning(output()), QString());
}

QString Scenario::maximised(const QString& page)
{
    return title() + u" - ["_s + page + u']';
}

QByteArray Scenario::coloured(const char* name, const char* colour)
{
    return QByteArray("<title>") + name + "</title><body style='background:" + colour + "'>";
}

void Scenario::open(const QString& path, const QString& pageTitle)
{
    m_program->start(*m_run, {m_server->address(path)});
    QTRY_SEES(maximised(pageTitle));
    QTest::qWait(700); // the engine drops clicks on a page that has just come up
}

const QByteArray& Scenario::output()
{
    m_output += m_run->readAll();
    return m_output;
}
