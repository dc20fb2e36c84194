#include "engine/page/PageStatus.h"

#include "browser/PageTexts.h"
#include "engine/page/WebEnginePage.h"

#include <QApplication>
#include <QUrl>
#include <QWidget>

#include <utility>

using namespace Qt::StringLiterals;

PageStatus::PageStatus(WebEnginePage& page, QWidget& view) : m_view(&view)
{
    connect(&page, &QWebEnginePage::linkHovered, this, &PageStatus::showLink);
    // The engine does not tell that the page has lost the focus, and with it the link that
    // the Tab key has reached.
    connect(qApp, &QApplication::focusChanged, this, [this](QWidget*, QWidget* now) {
        if (now != nullptr && m_view && now != m_view && !m_view->isAncestorOf(now))
            leaveLink();
    });
    // The page before may report the link under the mouse once more after it has gone.
    connect(&page, &WebEnginePage::frameReported, this, [this](const FrameReport& report) {
        if (report.isMainFrame)
            leaveLink();
    });
    connect(&page, &WebEnginePage::navigationBarred, this, [this](const QUrl& url) {
        notify(url.isLocalFile()
                   ? u"Seiten aus dem Netz öffnen keine Dateien dieses Rechners."_s
                   : u"Adressen mit „%1:“ werden nicht geöffnet."_s.arg(url.scheme()));
    });
}

void PageStatus::notify(const QString& text)
{
    m_said = Said::Notice;
    emit changed(text);
}

void PageStatus::clear()
{
    if (std::exchange(m_said, Said::Nothing) != Said::Nothing)
        emit changed({});
}

void PageStatus::showLink(const QString& address)
{
    // Every page that loads says that there is no link under the mouse.
    if (address.isEmpty()) {
        leaveLink();
        return;
    }
    m_said = Said::Link;
    emit changed(linkShown(address));
}

void PageStatus::leaveLink()
{
    if (m_said == Said::Link)
        clear();
}
