#include "engine/page/WebFrameReports.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QUuid>

using namespace Qt::StringLiterals;

WebFrameReports::WebFrameReports() : m_token(QUuid::createUuid().toString(QUuid::Id128)) {}

QString WebFrameReports::script() const
{
    return uR"((function () {
    let waiting = true;
    function report() {
        if (waiting) {
            waiting = false;
            console.info('%1' + JSON.stringify(
                [window === window.top, location.href, String(document.title || '').slice(0, 4096)]));
        }
    }
    document.addEventListener('DOMContentLoaded', report);
    setTimeout(report, 1000);
})())"_s.arg(m_token);
}

std::optional<FrameReport> WebFrameReports::read(const QString& consoleLine) const
{
    if (!consoleLine.startsWith(m_token))
        return std::nullopt;
    const QByteArray text = QStringView(consoleLine).mid(m_token.size()).toUtf8();
    const QJsonArray values = QJsonDocument::fromJson(text).array();
    return FrameReport{values.at(0).toBool(), values.at(1).toString(), values.at(2).toString()};
}
