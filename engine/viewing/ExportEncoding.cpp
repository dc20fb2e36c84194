#include "engine/viewing/ExportEncoding.h"

#include "pages/viewing/ExportedText.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QWebEnginePage>
#include <QWebEngineScript>

using namespace Qt::StringLiterals;

namespace {

/// Puts the text of the file at an address into the document that the engine has made of it, if
/// that is still shown. Scripts of the file do not run a second time.
const QString mend = uR"((([address, text]) => {
    if (location.href.split('#')[0] !== address || document.characterSet === 'windows-1252')
        return;
    if (document.contentType === 'text/plain') {
        document.querySelector('pre').textContent = text.replaceAll('\r\n', '\n');
    } else if (document.contentType === 'text/html') {
        const right = new DOMParser().parseFromString(text, 'text/html').documentElement;
        document.documentElement.replaceWith(document.adoptNode(right));
    }
})(%1))"_s;

} // namespace

ExportEncoding::ExportEncoding(QWebEnginePage* page) : QObject(page), m_page(page)
{
    connect(page, &QWebEnginePage::loadFinished, this, [this](bool isLoaded) {
        if (isLoaded)
            check();
    });
}

void ExportEncoding::check()
{
    const QUrl url = m_page->url();
    const auto text = url.isLocalFile() ? exportedText(url.toLocalFile()) : std::nullopt;
    if (!text)
        return;
    const QString address = url.toString(QUrl::FullyEncoded | QUrl::RemoveFragment);
    const QByteArray arguments = QJsonDocument(QJsonArray{address, *text}).toJson();
    m_page->runJavaScript(mend.arg(QString::fromUtf8(arguments)),
                          QWebEngineScript::ApplicationWorld);
}
