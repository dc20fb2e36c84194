#pragma once

#include "base/Prompt.h"

#include <QtTest>

#include <array>
#include <functional>

/// Answers for the user. Every text is recorded; the running test fails when a
/// question comes without an answer, and when, at the end, an answer was not
/// asked for or a text was not taken. What pages ask is refused, unless the test
/// gives a function that answers.
class FakePrompt : public Prompt {
public:
    ~FakePrompt() override
    {
        for (const QString& text : m_texts)
            fail("Text not taken: ", text);
        for (const bool yes : m_yesNo)
            fail("Answer left over: ", yes ? QStringLiteral("Ja") : QStringLiteral("Nein"));
        for (const QString& name : m_fileNames)
            fail("Answer left over: ", name);
    }

    /// True stands for "Ja" and "OK".
    void answerYesNo(bool yes) { m_yesNo.append(yes); }
    /// An empty name stands for a cancelled dialog.
    void answerFileName(const QString& path) { m_fileNames.append(path); }
    /// Runs while the next prompt is open, once.
    void whileOpen(const std::function<void()>& action) { m_whileOpen = action; }

    /// The texts since the last call, oldest first, each as
    /// "title|icon|text", for a save dialog "title" or "title|path".
    /// The icon is the name of its enumerator.
    QStringList takeTexts() { return std::exchange(m_texts, {}); }

    /// What pages have asked: the text, or "site|realm" of a log-in, which "|not " and the
    /// user follow after a wrong answer.
    QStringList questions;
    std::function<Answer(QWidget*, const Question&)> onAsk;
    std::function<std::optional<LogIn>()> onLogIn;

    void tell(QWidget* /*parent*/, const QString& text, const QString& title, Icon icon) override
    {
        constexpr std::array names{"None", "Information", "Question", "Exclamation", "Critical"};
        opened({title, QLatin1String(names.at(static_cast<std::size_t>(icon))), text});
    }
    bool askYesNo(QWidget* parent, const QString& text, const QString& title, Icon icon) override
    {
        tell(parent, text, title, icon);
        return take(m_yesNo, text);
    }
    bool askOkCancel(QWidget* parent, const QString& text, const QString& title, Icon icon) override
    {
        return askYesNo(parent, text, title, icon);
    }
    Answer ask(QWidget* parent, const Question& question) override
    {
        questions << question.text;
        return onAsk ? onAsk(parent, question) : Answer();
    }
    std::optional<LogIn> askLogIn(QWidget* /*parent*/, const LogInQuestion& question) override
    {
        questions << question.site + u'|' + question.realm;
        if (question.hasFailed)
            questions.last() += QStringLiteral("|not ") + question.user;
        return onLogIn ? onLogIn() : std::nullopt;
    }
    QString saveFileName(QWidget* /*parent*/, const SaveRequest& request) override
    {
        opened({request.title});
        return take(m_fileNames, request.title);
    }
    QString saveFileAs(QWidget* /*parent*/, const QString& title, const QString& path) override
    {
        opened({title, path});
        return take(m_fileNames, title);
    }

private:
    static void fail(const char* what, const QString& which)
    {
        QTest::qFail(what + which.toUtf8(), __FILE__, __LINE__);
    }
    void opened(const QStringList& parts)
    {
        m_texts.append(parts.join(u'|'));
        if (const auto action = std::exchange(m_whileOpen, {}))
            action();
    }
    template <typename Given>
    Given take(QList<Given>& answers, const QString& question)
    {
        if (!answers.isEmpty())
            return answers.takeFirst();
        fail("No answer: ", question);
        return {};
    }

    QStringList m_texts;
    QList<bool> m_yesNo;
    QList<QString> m_fileNames;
    std::function<void()> m_whileOpen;
};
