#pragma once

#include "base/Errors.h"
#include "browser/EngineControl.h"

#include <QStringList>
#include <QWidget>

/// A scripted engine: records what it is told, shows what it was given, and
/// sends the events that a test asks for.
class FakeEngine : public EngineControl {
public:
    explicit FakeEngine(QWidget* parent) : m_host(new QWidget(parent))
    {
        m_host->setFocusPolicy(Qt::StrongFocus);
    }

    void Navigate(const QString& url) override { note(QStringLiteral("Navigate ") + url); }
    void GoBack() override { note(QStringLiteral("GoBack")); }
    void GoForward() override { note(QStringLiteral("GoForward")); }
    void Refresh() override { note(QStringLiteral("Refresh")); }
    void RefreshPastCache() override { note(QStringLiteral("RefreshPastCache")); }
    void Stop() override { note(QStringLiteral("Stop")); }
    bool AskToClose() override { return false; }
    bool Busy() const override { return busy; }
    QString LocationURL() const override { return locationUrl; }
    QString LocationName() const override { return locationName; }
    std::optional<EngineDocument> Document() const override { return document; }
    QWidget* host() override { return m_host; }
    PageSafety Safety() const override { return safety; }
    void TakeBack(const QString& answer) override { note(QStringLiteral("TakeBack ") + answer); }

    /// What was called since the last look.
    QString calls() { return std::exchange(m_calls, {}).join(u'|'); }

    /// The page arrives at `url` under `title`.
    void arrive(const QString& url, const QString& title)
    {
        locationUrl = url;
        locationName = title;
        document = EngineDocument{title};
        emit NavigateComplete2(EngineFrame{document}, url);
    }

    bool busy = false;
    bool failing = false;
    QString locationUrl;
    QString locationName;
    std::optional<EngineDocument> document;
    PageSafety safety;

private:
    void note(const QString& call)
    {
        m_calls << call;
        if (failing)
            throw Error(QStringLiteral("kaputt"));
    }

    QWidget* m_host;
    QStringList m_calls;
};
