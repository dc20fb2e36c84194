#pragma once

#include "base/Prompt.h"

#include <QStringList>
#include <QtTest>

/// Answers for the user, records every text, and fails the test when a question
/// comes without an answer or an answer is left over.
class FakePrompt : public Prompt {
public:
    ~FakePrompt() override
    {
        if (!m_answers.isEmpty())
            QTest::qFail("an answer was left over", __FILE__, __LINE__);
    }

    void expectTell() { m_answers << QStringLiteral("OK"); }
    const QStringList& texts() const { return m_texts; }

    void tell(QWidget*, const QString& text, const QString& title, Icon) override
    {
        next(title + u'|' + text);
    }
    bool askYesNo(QWidget*, const QString& text, const QString& title, Icon) override
    {
        return next(title + u'|' + text) == u"Ja";
    }
    QString saveFileName(QWidget*, const SaveRequest& request) override
    {
        return next(request.title);
    }

private:
    QString next(const QString& text)
    {
        m_texts << text;
        if (m_answers.isEmpty()) {
            QTest::qFail(qPrintable(QStringLiteral("no answer for: ") + text), __FILE__, __LINE__);
            return {};
        }
        return m_answers.takeFirst();
    }

    QStringList m_answers;
    QStringList m_texts;
};
