#include "bookmarks/ExportFormats.h"

#include "base/WholeNumber.h"
#include "base/Windows1252.h"
#include "bookmarks/Book.h"

#include <QByteArrayView>
#include <QStringView>

#include <algorithm>
#include <utility>

namespace {
/// The content of an export file, built piece by piece.
class ExportLines {
public:
    ExportLines& add(QByteArrayView bytes)
    {
        std::copy(bytes.begin(), bytes.end(), roomFor(bytes.size()));
        m_size += bytes.size();
        return *this;
    }
    ExportLines& add(QStringView text)
    {
        m_size += toWindows1252(roomFor(text.size()), text);
        return *this;
    }
    ExportLines& endLine() { return add("\r\n"); }
    ExportLines& line(QByteArrayView bytes) { return add(bytes).endLine(); }

    QByteArray take()
    {
        m_bytes.truncate(m_size);
        return std::move(m_bytes);
    }

private:
    /// The place behind what is there; the pieces are many and small, so most calls only
    /// compare.
    char* roomFor(qsizetype more)
    {
        if (m_size + more > m_bytes.size())
            m_bytes.resize(std::max(2 * m_bytes.size(), m_size + more + firstRoom));
        return m_bytes.data() + m_size;
    }

    static constexpr qsizetype firstRoom = 4096;

    QByteArray m_bytes; ///< longer than its content
    qsizetype m_size = 0;
};

/// Calls `each` with every bookmark of the folder, in order.
template <typename Each>
void forEachBookmark(const Thema& folder, Each each)
{
    if (const auto& bookmarks = folder.colBookmark())
        for (const auto& bookmark : *bookmarks)
            each(*bookmark);
}

/// Calls `each` with every folder of the archive, in order.
template <typename Each>
void forEachThema(const Book& book, Each each)
{
    if (const auto& folders = book.colThema())
        for (const auto& folder : *folders)
            each(*folder);
}

void addTextFolder(ExportLines& out, const Thema& folder)
{
    out.add("Thema: ").add(folder.DirName()).endLine().endLine();
    bool first = true;
    forEachBookmark(folder, [&out, &first](const Bookmark& bookmark) {
        if (!first)
            out.endLine();
        first = false;
        out.add("Url-Titel: ").add(bookmark.Titel()).endLine();
        out.add("Url: ").add(bookmark.Url()).endLine();
        out.add("Beschreibung: ").add(bookmark.Info()).endLine();
    });
    out.endLine().endLine();
}

void addHtmlFolder(ExportLines& out, const Thema& folder)
{
    out.add("<H1>").add(folder.DirName()).line("</H1>");
    forEachBookmark(folder, [&out](const Bookmark& bookmark) {
        out.add("<A HREF='").add(bookmark.Url()).add("'>");
        out.add(bookmark.Titel()).add("</A><BR>");
        if (!bookmark.Info().isEmpty())
            out.add(bookmark.Info()).add("<BR>");
        out.endLine();
    });
}

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

/// The quoted number of seconds since 1970. Both ends of the count are wall-clock time.
QByteArray timeStamp(const QDateTime& now)
{
    constexpr qint64 secondsPerDay = 86400;
    const qint64 days = QDate(1970, 1, 1).daysTo(now.date());
    const qint64 seconds = now.time().msecsSinceStartOfDay() / 1000;
    return '"' + QByteArray::number(toInt32(days * secondsPerDay + seconds)) + '"';
}

/// A line break becomes CR, "<BR>" and CR LF, one at the very end only CR: these lone CRs
/// belong to the format.
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

void addNetscapeHead(ExportLines& out, const ExportTime& time, QByteArrayView end)
{
    out.line("<!DOCTYPE NETSCAPE-Bookmark-file-1>");
    out.line("<!--This is an automatically generated file."
             "It will be read and overwritten. Do Not Edit! -->");
    out.line("<Title>Bookmarks</Title>");
    out.add("<H1>Bookmarks (").add(dateAndTime(time)).line(end);
}

void addNetscapeFolder(ExportLines& out, const Thema& folder, const QByteArray& stamp)
{
    out.add("<DT><H3 FOLDED ADD_DATE=").add(stamp).add(">");
    out.add(folder.DirName()).line("</H3><DL><P>");
    const QByteArray dates =
        "\" ADD_DATE=" + stamp + " LAST_VISIT=" + stamp + " LAST_MODIFIED=" + stamp + '>';
    forEachBookmark(folder, [&out, &dates](const Bookmark& bookmark) {
        out.add("<DT><A HREF=\"").add(bookmark.Url()).add(dates);
        out.add(bookmark.Titel()).add("</A>");
        if (!bookmark.Info().isEmpty())
            addDescription(out.add("\r\n<DD>"), bookmark.Info());
        out.endLine();
    });
    out.line("</DL><P>");
}
} // namespace

QByteArray exportFolderText(const Thema& folder)
{
    ExportLines out;
    addTextFolder(out, folder);
    return out.take();
}

QByteArray exportArchiveText(const Book& book, const QString& heading)
{
    ExportLines out;
    if (!heading.isEmpty())
        out.add(heading).line("\n\n");
    forEachThema(book, [&out](const Thema& folder) { addTextFolder(out, folder); });
    return out.take();
}

QByteArray exportFolderHtml(const Thema& folder)
{
    ExportLines out;
    out.line("<HTML><BODY>");
    addHtmlFolder(out, folder);
    out.line("</BODY></HTML>");
    return out.take();
}

QByteArray exportArchiveHtml(const Book& book)
{
    ExportLines out;
    out.line("<HTML><TITLE></TITLE><BODY>");
    forEachThema(book, [&out](const Thema& folder) { addHtmlFolder(out, folder); });
    out.line("</BODY></HTML>");
    return out.take();
}

QByteArray exportFolderNetscape(const Thema& folder, const ExportTime& time)
{
    ExportLines out;
    addNetscapeHead(out, time, ")</H1>");
    addNetscapeFolder(out, folder, timeStamp(time.now));
    return out.take();
}

QByteArray exportArchiveNetscape(const Book& book, const ExportTime& time)
{
    ExportLines out;
    addNetscapeHead(out, time, ")</H1><DL>");
    const QByteArray stamp = timeStamp(time.now);
    forEachThema(book,
                 [&out, &stamp](const Thema& folder) { addNetscapeFolder(out, folder, stamp); });
    out.line("</DL>");
    return out.take();
}
