#include "tests/gui/FakePrompt.h"

#include <QtTest>

using namespace Qt::StringLiterals;

namespace {
QString iconName(Prompt::Icon icon)
{
    static const QStringList names{u"None"_s, u"Information"_s, u"Question"_s, u"Exclamation"_s,
                                   u"Critical"_s};
    return names.at(static_cast<int>(icon));
}

void fail(const QString& what, const QString& which)
{
    QTest::qFail(qPrintable(what + u": "_s + which), __FILE__, __LINE__);
}
} // namespace

FakePrompt::~FakePrompt()
{
    for (const QString& text : m_texts)
        fail(u"Text not taken"_s, text);
    for (const bool yes : m_yesNo)
        fail(u"Answer left over"_s, yes ? u"Ja"_s : u"Nein"_s);
    for (const QString& name : m_fileNames)
        fail(u"Answer left over"_s, name);
}

QStringList FakePrompt::takeTexts()
{
    return std::exchange(m_texts, {});
}

void FakePrompt::opened(const QStringList& parts)
{
    m_texts.append(parts.join(u'|'));
    if (const auto action = std::exchange(m_whileOpen, {}))
        action();
}

void FakePrompt::tell(QWidget* /*parent*/, const QString& text, const QString& title, Icon icon)
{
    opened({title, iconName(icon), text});
}

template <typename Given>
Given FakePrompt::take(QList<Given>& answers, const QString& question)
{
    if (!answers.isEmpty())
        return answers.takeFirst();
    fail(u"No answer"_s, question);
    return {};
}

bool FakePrompt::askYesNo(QWidget* /*parent*/, const QString& text, const QString& title, Icon icon)
{
    opened({title, iconName(icon), text});
    return take(m_yesNo, text);
}

bool FakePrompt::askOkCancel(QWidget* parent, const QString& text, const QString& title, Icon icon)
{
    return askYesNo(parent, text, title, icon);
}

Prompt::Answer FakePrompt::ask(QWidget* parent, const Question& question)
{
    questions << question.text;
    return onAsk ? onAsk(parent, question) : Answer();
}

std::optional<Prompt::LogIn> FakePrompt::askLogIn(QWidget* /*parent*/,
                                                  const LogInQuestion& question)
{
    questions << question.site;
    return onLogIn ? onLogIn() : std::nullopt;
}

QString FakePrompt::saveFileName(QWidget* /*parent*/, const SaveRequest& request)
{
    opened({request.title});
    return take(m_fileNames, request.title);
}

QString FakePrompt::saveFileAs(QWidget* /*parent*/, const QString& title, const QString& path)
{
    opened({title, path});
    return take(m_fileNames, title);
}
