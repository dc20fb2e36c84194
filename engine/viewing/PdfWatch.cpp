#include "engine/viewing/PdfWatch.h"

#include <QPointer>
#include <QWebEnginePage>
#include <QWebEngineScript>

using namespace Qt::StringLiterals;

PdfWatch::PdfWatch(QWebEnginePage* page) : QObject(page), m_page(page)
{
    connect(page, &QWebEnginePage::loadFinished, this, &PdfWatch::askType);
    connect(page, &QWebEnginePage::renderProcessTerminated, this, [this] { m_isPdf = false; });
}

void PdfWatch::askType()
{
    const auto note = [self = QPointer(this)](const QVariant& type) {
        if (self)
            self->m_isPdf = type.toString() == "application/pdf"_L1;
    };
    // Not in the page's own world, where its scripts could change the answer.
    m_page->runJavaScript(u"document.contentType"_s, QWebEngineScript::ApplicationWorld, note);
}
