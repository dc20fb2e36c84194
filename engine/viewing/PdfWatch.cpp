#include "engine/viewing/PdfWatch.h"

#include <QPointer>
#include <QWebEnginePage>
#include <QWebEngineScript>

using namespace Qt::StringLiterals;

PdfWatch::PdfWatch(QWebEnginePage* page) : QObject(page), m_page(page)
{
    connect(page, &QWebEnginePage::loadFinished, this, &PdfWatch::look);
    connect(page, &QWebEnginePage::renderProcessTerminated, this, [this] { m_isPdf = false; });
}

void PdfWatch::look()
{
    const auto note = [self = QPointer(this)](const QVariant& type) {
        if (self)
            self->m_isPdf = type.toString() == "application/pdf"_L1;
    };
    // In a world of our own: a page could pretend otherwise in its own.
    m_page->runJavaScript(u"document.contentType"_s, QWebEngineScript::ApplicationWorld, note);
}
