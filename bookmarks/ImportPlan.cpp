#include "bookmarks/ImportPlan.h"

#include "base/RecordField.h"
#include "base/ShownText.h"
#include "base/Windows1252.h"
#include "bookmarks/ArchiveRecords.h"
#include "bookmarks/Book.h"

#include <QLocale>
#include <QUrl>

#include <algorithm>
#include <limits>

using namespace Qt::StringLiterals;

namespace {

/// How many folders an archive has at most, and bookmarks a folder: numbers of 16 bits.
constexpr int most = std::numeric_limits<qint16>::max();

/// A text as a field of the archive's files gives it back.
struct KeptText {
    KeptText(const QString& text, qsizetype width)
    {
        QByteArray bytes;
        appendWindows1252(bytes, text);
        isChanged = fromWindows1252(bytes) != text;
        isCut = bytes.size() > width;
        bytes.truncate(width);
        if (isCut && bytes.endsWith('\r')) // half of a line break
            bytes.chop(1);
        value = trimBlanks(fromWindows1252(bytes)).toString();
    }

    QString value;
    bool isCut = false;
    /// Characters became "?".
    bool isChanged = false;
};

/// The name of the folder with those around it. The file itself is in no name but its own.
QString joinedName(const BookmarkFile& file, int folder)
{
    const auto& folders = file.folders;
    QStringList names;
    for (int i = folder; i > 0; i = folders[std::size_t(i)].parent)
        names.prepend(folders[std::size_t(i)].name.left(dirNameWidth + 1));
    return names.isEmpty() ? folders.front().name : names.join(u" – "_s);
}

/// The name with a number behind it, cut so that there is room for it; 0 is no number.
QString numberedName(const QString& name, int number)
{
    if (number == 0)
        return name;
    const QString behind = u" (%1)"_s.arg(number);
    return trimBlanks(QStringView(name).left(dirNameWidth - behind.size())).toString() + behind;
}

/// The name without the number behind it, if there is one.
QString withoutNumber(const QString& name)
{
    const qsizetype from = name.lastIndexOf(u" ("_s);
    if (from <= 0 || !name.endsWith(u')'))
        return name;
    const QStringView digits = QStringView(name).sliced(from + 2).chopped(1);
    const bool isNumber = !digits.isEmpty() && std::all_of(digits.begin(), digits.end(),
                                                           [](QChar c) { return c.isDigit(); });
    return isNumber ? name.left(from) : name;
}

/// The address as the archive can hold it: where it has other letters, as the net writes it.
QString storableAddress(const QString& address)
{
    if (!KeptText(address, urlWidth).isChanged)
        return address;
    const QUrl url(address);
    const bool isKnown = QStringList{u"http"_s, u"https"_s, u"ftp"_s, u"file"_s}.contains(
        url.scheme(), Qt::CaseInsensitive);
    return isKnown && url.isValid() ? url.toString(QUrl::FullyEncoded) : address;
}

/// Why nobody could open the address from the archive; empty if one can.
QString whyUnfit(const QString& address)
{
    if (address.isEmpty())
        return u"hat keine Adresse"_s;
    if (address.startsWith(u"javascript:"_s, Qt::CaseInsensitive))
        return u"ist ein Skript und keine Seite"_s;
    if (address.startsWith(u"place:"_s, Qt::CaseInsensitive))
        return u"ist eine Suche des anderen Browsers"_s;
    const KeptText stored(address, urlWidth);
    if (stored.isCut)
        return u"die Adresse ist länger als %1 Zeichen"_s.arg(urlWidth);
    if (stored.isChanged)
        return u"die Adresse hat Zeichen, die das Archiv nicht speichern kann"_s;
    return {};
}

QString shortened(const QString& text)
{
    constexpr qsizetype longest = 100;
    return text.size() > longest ? text.left(longest) + u'…' : text;
}

QString number(int count)
{
    return QLocale().toString(count);
}

QString counted(int count, const QString& one, const QString& many)
{
    return count == 1 ? u"1 "_s + one : number(count) + u' ' + many;
}

/// Makes a plan, one folder of the file after the other.
class Planner {
public:
    Planner(const ArchiveContents& archive, ImportPlan& plan) : m_archive(archive), m_plan(plan) {}

    void addFolder(const QString& joined, const std::vector<const BookmarkFile::Entry*>& entries)
    {
        const KeptText name(joined, dirNameWidth);
        m_name = name.value;
        m_hasNoticed = !name.isCut && !name.isChanged;
        m_original = joined;
        m_seen.clear();
        m_isFull = true;
        const QSet<QString> present = m_archive.addresses.value(m_name);
        for (const BookmarkFile::Entry* entry : entries)
            add(*entry, present);
    }

private:
    void add(const BookmarkFile::Entry& entry, const QSet<QString>& present)
    {
        const QString address = storableAddress(entry.url);
        if (const QString why = whyUnfit(address); !why.isEmpty()) {
            leaveOut(m_plan.unfit, entry, why);
        } else if (present.contains(address)) {
            leaveOut(m_plan.present, entry, u"ist schon im Archiv"_s);
        } else if (m_seen.contains(address)) {
            leaveOut(m_plan.doubled, entry, u"steht mehrmals in diesem Ordner"_s);
        } else if (m_isFull && !openFolder()) {
            leaveOut(m_plan.unfit, entry, u"das Archiv hat keinen Platz für weitere Ordner"_s);
        } else {
            m_seen.insert(address);
            take(entry, address);
        }
    }

    bool openFolder()
    {
        if (static_cast<int>(m_plan.folders.size()) >= m_archive.room)
            return false;
        m_plan.folders.push_back({freeName(), {}});
        m_isFull = false;
        if (!m_hasNoticed)
            m_plan.changed << u"%1 (Ordner): der Name ist gekürzt oder hat Zeichen, die das Archiv "
                              "nicht speichern kann"_s.arg(shortened(m_original));
        m_hasNoticed = true;
        return true;
    }

    QString freeName()
    {
        int& number = m_numbers[m_name];
        QString name;
        do
            name = numberedName(m_name, number++);
        while (m_archive.texts.contains(name) || m_taken.contains(name));
        m_taken.insert(name);
        return name;
    }

    void take(const BookmarkFile::Entry& entry, const QString& address)
    {
        const KeptText titel(entry.titel, titelWidth);
        const KeptText info(entry.info, infoWidth);
        auto& its = m_plan.folders.back().bookmarks;
        its.push_back({titel.value.isEmpty() ? address : titel.value, address, info.value});
        m_isFull = its.size() == std::size_t(most);
        ++m_plan.added;
        QStringList notes;
        if (titel.isCut)
            notes << u"der Titel ist gekürzt"_s;
        if (info.isCut)
            notes << u"die Beschreibung ist gekürzt"_s;
        m_plan.cut += notes.isEmpty() ? 0 : 1;
        if (titel.isChanged || info.isChanged) {
            notes << u"„?“ steht für Zeichen, die das Archiv nicht speichern kann"_s;
            ++m_plan.replaced;
        }
        if (!notes.isEmpty())
            m_plan.changed << noteOn(entry, notes.join(u", "_s));
    }

    void leaveOut(int& count, const BookmarkFile::Entry& entry, const QString& why)
    {
        ++count;
        m_plan.leftOut << noteOn(entry, why);
    }

    QString noteOn(const BookmarkFile::Entry& entry, const QString& note) const
    {
        return u"%1 (Ordner „%2“): %3 – %4"_s.arg(shortened(entry.titel), shortened(m_name), note,
                                                  shortened(entry.url));
    }

    const ArchiveContents& m_archive;
    ImportPlan& m_plan;
    /// The names given so far, and the next number behind each.
    QSet<QString> m_taken;
    QHash<QString, int> m_numbers;
    QString m_original;
    QString m_name;
    bool m_hasNoticed = false;
    QSet<QString> m_seen;
    /// The folder that was opened last takes no more.
    bool m_isFull = true;
};

} // namespace

ArchiveContents ArchiveContents::of(const Book& book)
{
    ArchiveContents contents;
    contents.texts.insert(u"Archiv"_s);
    int count = 0;
    if (book.colThema()) {
        for (const auto& folder : *book.colThema()) {
            ++count;
            contents.texts.insert(folder->DirName());
            QSet<QString> addresses;
            if (folder->colBookmark()) {
                for (const auto& bookmark : *folder->colBookmark()) {
                    contents.texts.insert(bookmark->Titel());
                    addresses.insert(bookmark->Url());
                }
            }
            const QString base = withoutNumber(folder->DirName());
            if (base != folder->DirName())
                contents.addresses[base].unite(addresses);
            contents.addresses[folder->DirName()].unite(addresses);
        }
    }
    contents.room = std::max(0, most - std::max(count, static_cast<int>(book.SequenzMax())));
    return contents;
}

ImportPlan ImportPlan::of(const BookmarkFile& file, const ArchiveContents& archive)
{
    ImportPlan plan;
    plan.from = file.folders.front().name;
    plan.offered = static_cast<int>(file.bookmarks.size());
    plan.isWhole = file.isWhole;
    std::vector<std::vector<const BookmarkFile::Entry*>> entries(file.folders.size());
    for (const BookmarkFile::Entry& entry : file.bookmarks)
        entries[std::size_t(entry.folder)].push_back(&entry);
    Planner planner(archive, plan);
    for (std::size_t i = 0; i < entries.size(); ++i)
        if (!entries[i].empty()) {
            ++plan.offeredFolders;
            planner.addFolder(joinedName(file, static_cast<int>(i)), entries[i]);
        }
    return plan;
}

QString ImportPlan::question() const
{
    QString text =
        u"„%1“ enthält %2 in %3."_s.arg(from, counted(offered, u"Bookmark"_s, u"Bookmarks"_s),
                                        counted(offeredFolders, u"Ordner"_s, u"Ordnern"_s));
    if (!isWhole)
        text += u"\nDie Datei ist so groß, dass nicht alles gelesen wurde."_s;
    if (present > 0)
        text +=
            u"\n%1 schon im Archiv."_s.arg(counted(present, u"davon steht"_s, u"davon stehen"_s));
    if (added == 0)
        return text + u"\nEs gibt nichts zu übernehmen."_s;
    return text + u"\n%1 in %2 übernommen."_s.arg(
                      counted(added, u"Bookmark wird"_s, u"Bookmarks werden"_s),
                      counted(int(folders.size()), u"neuen Ordner"_s, u"neue Ordner"_s));
}

QString ImportPlan::result() const
{
    const auto line = [](int count, const QString& one, const QString& many) {
        return count == 0 ? QString() : u'\n' + counted(count, one, many);
    };
    return u"%1 in %2 übernommen."_s.arg(
               counted(added, u"Bookmark ist"_s, u"Bookmarks sind"_s),
               counted(int(folders.size()), u"neuen Ordner"_s, u"neue Ordner"_s)) +
           line(cut, u"davon ist auf die Länge der Felder gekürzt."_s,
                u"davon sind auf die Länge der Felder gekürzt."_s) +
           line(replaced, u"davon hat „?“ statt Zeichen, die das Archiv nicht speichern kann."_s,
                u"davon haben „?“ statt Zeichen, die das Archiv nicht speichern kann."_s) +
           line(present, u"war schon im Archiv."_s, u"waren schon im Archiv."_s) +
           line(doubled, u"stand mehrmals in seinem Ordner."_s,
                u"standen mehrmals in ihrem Ordner."_s) +
           line(unfit, u"ließ sich nicht übernehmen."_s, u"ließen sich nicht übernehmen."_s);
}

QString ImportPlan::list() const
{
    QStringList all;
    if (!leftOut.isEmpty())
        all << u"Nicht übernommen:"_s << leftOut;
    if (!leftOut.isEmpty() && !changed.isEmpty())
        all << QString();
    if (!changed.isEmpty())
        all << u"Nicht ganz übernommen:"_s << changed;
    return all.join(u'\n');
}
