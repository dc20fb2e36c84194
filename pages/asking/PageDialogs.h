#pragma once

#include "pages/asking/PageAsker.h"

/// PageAsker with real dialogs. They belong to the window that asks and go with it.
class PageDialogs : public PageAsker {
public:
    PageAnswer ask(QWidget* parent, const PageQuestion& question) override;
    std::optional<LogIn> logIn(QWidget* parent, const LogInQuestion& question) override;
};
