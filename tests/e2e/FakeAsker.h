#pragma once

#include "browser/services/PageAsker.h"

#include <QStringList>

#include <functional>

/// Answers the questions of pages for the user: by `onAsk` and `onLogIn`, or
/// by refusing. The texts are written down.
class FakeAsker : public PageAsker {
public:
    PageAnswer ask(QWidget* parent, const PageQuestion& question) override
    {
        questions << question.text;
        return onAsk ? onAsk(parent, question) : PageAnswer();
    }
    std::optional<LogIn> logIn(QWidget* /*parent*/, const LogInQuestion& question) override
    {
        questions << question.site + u'|' + question.realm;
        return onLogIn ? onLogIn() : std::nullopt;
    }

    QStringList questions;
    std::function<PageAnswer(QWidget*, const PageQuestion&)> onAsk;
    std::function<std::optional<LogIn>()> onLogIn;
};
