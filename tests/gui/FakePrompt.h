#pragma once

#include "base/Prompt.h"

#include <QList>
#include <QStringList>

#include <functional>

/// Answers for the user. Every text is recorded; the running test fails when a
/// question comes without an answer, and when, at the end, an answer was not
/// asked for or a text was not taken. What pages ask is refused, unless the test
/// gives a function that answers.
class FakePrompt : public Prompt {
public:
    ~FakePrompt() override;

    /// True stands for "Ja" and "OK".
    void answerYesNo(bool yes) { m_yesNo.append(yes); }
    /// An empty name stands for a cancelled dialog.
    void answerFileName(const QString& path) { m_fileNames.append(path); }
    /// Runs while the next prompt is open, once.
    void whileOpen(const std::function<void()>& action) { m_whileOpen = action; }

    /// The texts since the last call, oldest first, each as
    /// "title|icon|text", for a save dialog "title" or "title|path".
    /// The icon is the name of its enumerator.
    QStringList takeTexts();

    /// What pages have asked: the text, or the site that wants a log-in.
    QStringList questions;
    std::function<Answer(QWidget*, const Question&)> onAsk;
    std::function<std::optional<LogIn>()> onLogIn;

    void tell(QWidget* parent, const QString& text, const QString& title, Icon icon) override;
    bool askYesNo(QWidget* parent, const QString& text, const QString& title, Icon icon) override;
    bool askOkCancel(QWidget* parent, const QString& text, const QString& title,
                     Icon icon) override;
    Answer ask(QWidget* parent, const Question& question) override;
    std::optional<LogIn> askLogIn(QWidget* parent, const LogInQuestion& question) override;
    QString saveFileName(QWidget* parent, const SaveRequest& request) override;
    QString saveFileAs(QWidget* parent, const QString& title, const QString& path) override;

private:
    void opened(const QStringList& parts);
    template <typename Given>
    Given take(QList<Given>& answers, const QString& question);

    QStringList m_texts;
    QList<bool> m_yesNo;
    QList<QString> m_fileNames;
    std::function<void()> m_whileOpen;
};
