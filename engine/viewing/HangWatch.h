#pragma once

#include <QObject>
#include <QPointer>
#include <QTimer>

class HangNotice;
class PageInput;
class QWebEngineView;
class WebEnginePage;

/// Finds out whether a page still answers, and says so over it when it does not: a script that
/// never ends keeps the page from everything, also from going elsewhere. The engine tells
/// nobody, so the page is asked something; but only a while after the user has turned to it or
/// it has begun to load, so that pages that are left alone are left alone.
class HangWatch : public QObject {
    Q_OBJECT
public:
    /// Belongs to `page`. `input` is that of the page; `view` is its window's.
    HangWatch(WebEnginePage* page, QWebEngineView* view, const PageInput& input);

    /// There is a reason to ask the page.
    void lookAfter();

signals:
    /// The page does not answer.
    void found();

private:
    enum class State { Calm, Waiting, Asked, AskedAgain, Hanging };

    void connectPage();
    void goOn();
    void ask(State next, std::chrono::milliseconds patience);
    /// The page answers, or another one stands in its place.
    void calm();
    void find();
    void showNotice();
    void wait();
    void end();
    /// The user goes elsewhere and leaves a page behind that does not answer.
    void endIfLeft();
    bool canAnswer() const;
    /// Other pages of the same process: they hang and end together.
    QList<WebEnginePage*> partners() const;

    WebEnginePage* m_page;
    QPointer<QWebEngineView> m_view;
    QPointer<HangNotice> m_notice;
    QTimer m_timer;
    State m_state = State::Calm;
    /// Counts the times when the page was calm: answers to questions of before count no more.
    quint32 m_round = 0;
};
