#include "browser/FrameReports.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QUuid>

using namespace Qt::StringLiterals;

namespace {
/// In characters; a title is shown on one line.
constexpr qsizetype longestTitle = 4096;
} // namespace

FrameReports::FrameReports() : m_token(QUuid::createUuid().toString(QUuid::Id128)) {}

QString FrameReports::script() const
{
    return uR"((function () {
    let waiting = true;
    function report() {
        if (waiting) {
            waiting = false;
            console.info('%1' + JSON.stringify(
                [window === window.top, location.href, String(document.title || '').slice(0, %2)]));
        }
    }
    document.addEventListener('DOMContentLoaded', report);
    setTimeout(report, 1000);
})())"_s.arg(m_token)
        .arg(longestTitle);
}

std::optional<FrameReport> FrameReports::read(const QString& consoleLine) const
{
    if (!consoleLine.startsWith(m_token))
        return std::nullopt;
    const QByteArray text = QStringView(consoleLine).mid(m_token.size()).toUtf8();
    const QJsonArray values = QJsonDocument::fromJson(text).array();
    // The script's own lines are like this; the process of a page may have been taken over.
    if (values.size() != 3 || !values.at(0).isBool() || !values.at(1).isString() ||
        !values.at(2).isString())
        return std::nullopt;
    return FrameReport{values.at(0).toBool(), values.at(1).toString(),
                       values.at(2).toString().left(longestTitle)};
}
