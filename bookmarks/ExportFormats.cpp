#include "bookmarks/ExportFormats.h"

#include "base/WholeNumber.h"
#include "bookmarks/ExportLines.h"

namespace {
QString monthName(const ExportTime& time)
{
    const int month = time.now.date().month();
    QString name = time.locale.standaloneMonthName(month, QLocale::ShortFormat).remove(u'.');
    if (name.isEmpty())
        name = QLocale::c().standaloneMonthName(month, QLocale::ShortFormat);
    return name.left(3);
}

QString dateAndTime(const ExportTime& time)
{
    const QDate date = time.now.date();
    return QStringLiteral("%1. %2 %3, %4")
        .arg(QString::number(date.day()), monthName(time), date.toString(u"yyyy"),
             time.now.time().toString(u"HH:mm:ss"));
}

/// Both ends of the count are wall-clock time.
QByteArray timeStamp(const QDateTime& now)
{
    constexpr qint64 secondsPerDay = 86400;
    const qint64 days = QDate(1970, 1, 1).daysTo(now.date());
    const qint64 seconds = now.time().msecsSinceStartOfDay() / 1000;
    return '"' + QByteArray::number(toInt32(days * secondsPerDay + seconds)) + '"';
}

/// The lone CR before each "<BR>", and in place of the last line break at the
/// end, belongs to the format.
void addDescription(ExportLines& out, QStringView info)
{
    constexpr QStringView lineBreak = u"\r\n";
    for (qsizetype end = info.indexOf(lineBreak); end >= 0; end = info.indexOf(lineBreak)) {
        out.add(info.first(end));
        info = info.sliced(end + lineBreak.size());
        out.add(info.isEmpty() ? "\r" : "\r<BR>\r\n");
    }
    out.add(info);
}

void addHead(ExportLines& out, const ExportTime& time, QByteArrayView end)
{
    out.line("<!DOCTYPE NETSCAPE-Bookmark-file-1>");
    out.line("<!--This is an automatically generated file."
             "It will be read and overwritten. Do Not Edit! -->");
    out.line("<Title>Bookmarks</Title>");
    out.add("<H1>Bookmarks (").add(dateAndTime(time)).line(end);
}

void addFolder(ExportLines& out, const Thema& folder, QByteArrayView stamp)
{
    out.add("<DT><H3 FOLDED ADD_DATE=").add(stamp).add(">");
    out.add(folder.DirName()).line("</H3><DL><P>");
    forEachBookmark(folder, [&out, stamp](const Bookmark& bookmark) {
        out.add("<DT><A HREF=\"").add(bookmark.Url()).add("\" ADD_DATE=").add(stamp);
        out.add(" LAST_VISIT=").add(stamp).add(" LAST_MODIFIED=").add(stamp).add(">");
        out.add(bookmark.Titel()).add("</A>");
        if (!bookmark.Info().isEmpty())
            addDescription(out.add("\r\n<DD>"), bookmark.Info());
        out.endLine();
    });
    out.line("</DL><P>");
}
} // namespace

QByteArray exportFolderNetscape(const Thema& folder, const ExportTime& time)
{
    ExportLines out;
    addHead(out, time, ")</H1>");
    addFolder(out, folder, timeStamp(time.now));
    return out.bytes();
}

QByteArray exportArchiveNetscape(const Book& book, const ExportTime& time)
{
    ExportLines out;
    addHead(out, time, ")</H1><DL>");
    const QByteArray stamp = timeStamp(time.now);
    forEachThema(book, [&out, &stamp](const Thema& folder) { addFolder(out, folder, stamp); });
    out.line("</DL>");
    return out.bytes();
}
