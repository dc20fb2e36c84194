#pragma once

#include "app/Prefer.h"
#include "base/Shell.h"
#include "history/HistoryItem.h"
#include "tests/gui/FakePrompt.h"

#include <QIcon>
#include <QStringList>
#include <QTemporaryDir>

/// A frame that only keeps what it is told. Its program folder is temporary.
class FakeShell : public Shell {
public:
    FakeShell();

    void VisitUrl(const QString& url) override { visited.append(url); }
    void AddToHistory(const QString& url, const QString& title) override;
    /// Null unless `makeBrowser` is set.
    frmBrowser* CreateBrowser() override;
    void browserUnloaded(qint32 number) override { unloaded.append(number); }
    const HistoryCollection& History() const override { return history; }
    const QString& HistoryUrl() const override { return historyUrl; }
    void HistoryUrl(const QString& url) override { historyUrl = url; }
    void bNewSize(bool value) override { newSize = value; }
    void bIsOpenBook(bool value) override { isOpenBook = value; }
    void bIsOpenHistory(bool value) override { isOpenHistory = value; }
    void StatusBarCurr(bool value) override { statusBarCurr = value; }
    bool bOpenNewWindow() const override { return openNewWindow; }
    void bOpenNewWindow(bool value) override { openNewWindow = value; }
    void SetDropDisabled(bool disable) override { dropSwitch.append(disable); }
    void statusText(const QString& text) override { statusTexts.append(text); }
    Prefer& preferences() override { return pref; }
    Prompt& prompt() override { return fakePrompt; }
    const QString& programFolder() const override { return m_programFolder; }
    const QString& title() const override { return m_title; }
    QIcon frameIcon() const override { return m_icon; }
    QIcon childIcon() const override { return m_icon; }

    QStringList visited;
    HistoryCollection history;
    QString historyUrl;
    std::function<frmBrowser*()> makeBrowser;
    QList<qint32> unloaded;
    bool newSize = false;
    bool isOpenBook = false;
    bool isOpenHistory = false;
    bool statusBarCurr = false;
    bool openNewWindow = false;
    QList<bool> dropSwitch;
    QStringList statusTexts;
    FakePrompt fakePrompt;

private:
    QTemporaryDir m_folder;
    QString m_programFolder;
    QString m_title;
    QIcon m_icon;

public:
    Prefer pref;
};
