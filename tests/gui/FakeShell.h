#pragma once

#include "base/BookmarkFile.h"
#include "base/Prefer.h"
#include "base/Shell.h"
#include "base/SiteIcons.h"
#include "history/HistoryList.h"
#include "tests/gui/FakePrompt.h"

#include <QIcon>
#include <QPointer>
#include <QStringList>
#include <QTemporaryDir>
#include <QWidget>

/// A frame that only keeps what it is told. Its program folder is temporary.
class FakeShell : public Shell {
public:
    FakeShell() { pref.LoadPref(); }

    void VisitUrl(const QString& url) override { visited.append(url); }
    void VisitUrlPrivately(const QString& url) override { visitedPrivately.append(url); }
    void AddToArchive(const QString& /*title*/, const QString& /*url*/) override {}
    void AddPageToArchive() override {}
    void HistoryUrl(const QString& url) override { historyUrl = url; }
    void importBookmarks(const BookmarkFile& file) override { imported.push_back(file); }
    void bIsOpenBook(bool value) override { isOpenBook = value; }
    void bIsOpenHistory(bool value) override { isOpenHistory = value; }
    void StatusBarCurr(bool value) override { statusBarCurr = value; }
    void SetDropDisabled(bool disable) override { dropSwitch.append(disable); }
    void statusText(const QString& text) override { status = text; }
    void addStatusSign(QWidget* sign) override
    {
        sign->setAttribute(Qt::WA_DontShowOnScreen); // it has no bar to be in
        statusSign = sign;
    }
    void wouldLose(const QObject* /*who*/, const QString& what) override { losses = what; }
    Prefer& preferences() override { return pref; }
    Prompt& prompt() override { return fakePrompt; }
    const QString& programFolder() const override { return m_programFolder; }
    const QString& dataFolder() const override { return m_dataFolder; }
    const QString& title() const override { return m_title; }
    QIcon frameIcon() const override { return {}; }
    SiteIcons& icons() override { return siteIcons; }

    QStringList visited;
    QStringList visitedPrivately;
    HistoryCollection history;
    std::vector<BookmarkFile> imported;
    QString historyUrl;
    bool isOpenBook = false;
    bool isOpenHistory = false;
    bool statusBarCurr = false;
    QString status;
    QString losses;
    QPointer<QWidget> statusSign;
    QList<bool> dropSwitch;
    FakePrompt fakePrompt;
    SiteIcons siteIcons;

private:
    QTemporaryDir m_folder;
    QString m_programFolder = m_folder.path();
    QString m_dataFolder = m_folder.filePath(QStringLiteral("data"));
    QString m_title = QStringLiteral("Tessera");

public:
    Prefer pref{m_programFolder};
};
