#include "engine/asking/PageClipboard.h"

#include "pages/asking/PageInput.h"

#include <QTimer>
#include <QWebEnginePage>
#include <QWebEngineSettings>

namespace {

/// As long as the engine, too, counts what a page does as the user's wish.
constexpr std::chrono::seconds inputLasts(5);

} // namespace

// The engine's switch lets a page write at any time, with or without a click (Qt 6.4), so
// it is on only for a while after each.
PageClipboard::PageClipboard(QWebEnginePage& page, const PageInput& input) : QObject(&page)
{
    const auto allow = [&page](bool isAllowed) {
        page.settings()->setAttribute(QWebEngineSettings::JavascriptCanAccessClipboard, isAllowed);
    };
    auto* const timer = new QTimer(this);
    timer->setSingleShot(true);
    connect(timer, &QTimer::timeout, this, [allow] { allow(false); });
    const auto begin = [allow, timer] {
        if (!timer->isActive())
            allow(true);
        timer->start(inputLasts);
    };
    connect(&input, &PageInput::pressed, this, begin);
    connect(&input, &PageInput::used, this, begin);
}
