#pragma once

#include "engine/page/WebVisits.h"

#include <QObject>

class WebEnginePage;

/// Takes the user away from a page also when that does not answer: of the same site the engine
/// shows nothing else until its process has ended, and then it has dropped what was on its way.
class PageLeaving : public QObject {
    Q_OBJECT
public:
    /// Goes before the page.
    explicit PageLeaving(WebEnginePage& page);

    /// Does `step`, which sends the page elsewhere: now, or after the end of a page that does not
    /// answer. If the user ends the page later, as it stays nevertheless, it is done once more.
    void by(const std::function<void()>& step);
    /// The user stays.
    void stop() { m_step = {}; }

private:
    void goOnAfterEnd();

    WebEnginePage& m_page;
    std::function<void()> m_step;
    /// What was shown when the step was done.
    WebCommit m_left;
    /// The user has ended the process of the page, which has not gone yet.
    bool m_isEnding = false;
};
