#include "SampleArchive.h"

#include <QDir>
#include <QTemporaryDir>

#include <csignal>
#include <memory>
#include <sys/resource.h>
#include <sys/stat.h>

using namespace Qt::StringLiterals;

namespace {
/// While it lives, no file of this process can grow past `most` bytes: a disk
/// that fills up.
class FullDisk {
public:
    explicit FullDisk(rlim_t most)
    {
        std::signal(SIGXFSZ, SIG_IGN);
        getrlimit(RLIMIT_FSIZE, &m_before);
        const rlimit limit{most, m_before.rlim_max};
        setrlimit(RLIMIT_FSIZE, &limit);
    }
    FullDisk(const FullDisk&) = delete;
    FullDisk& operator=(const FullDisk&) = delete;
    ~FullDisk() { setrlimit(RLIMIT_FSIZE, &m_before); }

private:
    rlimit m_before{};
};

QByteArray indexRecord(qint32 sequenz, qint32 number, const QString& fileName)
{
    return writeThemaRecords({{sequenz, number, u"Ordner"_s, fileName}});
}
} // namespace

class ArchiveFaultTest : public QObject {
    Q_OBJECT
private slots:
    void initTestCase() { QTest::failOnWarning(QRegularExpression(u".*"_s)); }
    void init()
    {
        // One level down, so that a file that escapes its folder is seen.
        m_folder = std::make_unique<QTemporaryDir>();
        QVERIFY(QDir().mkpath(path()));
    }

    void badIndexes_data()
    {
        QTest::addColumn<QByteArray>("bytes");
        const QByteArray good = golden(u"Book.bkm"_s);
        QTest::newRow("duplicate numbers") << good.left(336) + good.left(336);
        QTest::newRow("number past 16 bits") << indexRecord(1, 32768, u"1.bkm"_s);
        QTest::newRow("two records of zeros") << QByteArray(672, '\0');
    }
    void badIndexes()
    {
        QFETCH(QByteArray, bytes);
        writeBytes(file(u"Book.bkm"_s), bytes);
        Book book(path());
        fillSample(book, path());
        const auto before = book.colThema();
        QVERIFY_THROWS_EXCEPTION(Error, book.LoadAllThema());
        QCOMPARE(book.colThema(), before);
        book.SaveAllThema(); // does not overwrite what it could not read
        QCOMPARE(QDir(path()).entryList(QDir::Files), QStringList{u"Book.bkm"_s});
        QCOMPARE(bytesOf(file(u"Book.bkm"_s)), bytes);
        QCOMPARE(notWritten(book), QStringList{u"Book.bkm"_s});
        book.markUnwrittenChanged();
        QVERIFY(book.IsEdit());
    }

    void oneGibibyte()
    {
        for (const QString& name : {u"Book.bkm"_s, u"1.bkm"_s}) {
            QFile huge(file(name));
            QVERIFY(huge.open(QIODevice::WriteOnly) && huge.resize(qint64{1} << 30));
        }
        QVERIFY_THROWS_EXCEPTION(OverflowError, Book(path()).LoadAllThema());
        Thema folder(path());
        folder.FileName(u"1.bkm"_s);
        QVERIFY_THROWS_EXCEPTION(OverflowError, folder.LoadBookmarks());
    }

    void badNamesStayInside_data()
    {
        QTest::addColumn<QString>("name");
        for (const QString& name : {u""_s, u"../x.bkm"_s, u"/tmp/x.bkm"_s, u"Book.bkm"_s})
            QTest::addRow("'%s'", qPrintable(name)) << name;
    }
    void badNamesStayInside()
    {
        QFETCH(QString, name);
        writeBytes(m_folder->filePath(u"x.bkm"_s), "outside");
        const QByteArray index = indexRecord(1, 1, name);
        writeBytes(file(u"Book.bkm"_s), index);
        Book book(path());
        QVERIFY(book.LoadAllThema());
        const auto folder = book.colThema()->Item(1);
        QVERIFY_THROWS_EXCEPTION(FileError, folder->LoadBookmarks());
        QVERIFY(folder->refusesChanges());
        folder->colBookmark(std::make_shared<BookmarkCollection>());
        folder->IsEdit(true);
        book.SaveAllThema();
        QCOMPARE(book.filesNotWritten().size(), std::size_t{1});
        QCOMPARE(bytesOf(file(u"Book.bkm"_s)), index);
        const QString before = QDir::currentPath();
        QVERIFY(QDir::setCurrent(path()));
        book.DeleteThema(1);
        QVERIFY(QDir::setCurrent(before));
        QCOMPARE(bytesOf(m_folder->filePath(u"x.bkm"_s)), "outside"_ba);
        QCOMPARE(bytesOf(file(u"Book.bkm"_s)), QByteArray());
    }

    void unreadableFoldersRefuseChanges_data()
    {
        QTest::addColumn<QByteArray>("bytes");
        QTest::newRow("all zeros") << QByteArray(1444, '\0');
        QTest::newRow("a pipe in its place") << QByteArray();
    }
    void unreadableFoldersRefuseChanges()
    {
        QFETCH(QByteArray, bytes);
        Book book(path());
        fillSample(book, path());
        book.SaveAllThema();
        const QString name = file(u"12.bkm"_s);
        QVERIFY(QFile::remove(name));
        if (bytes.isNull())
            QCOMPARE(mkfifo(QFile::encodeName(name).constData(), 0666), 0);
        else
            writeBytes(name, bytes);
        QVERIFY(book.LoadAllThema());
        book.loadFolders();
        QCOMPARE(book.filesNotRead().size(), std::size_t{1});
        QCOMPARE(book.filesNotRead().front().fileName, u"12.bkm"_s);
        QCOMPARE(book.colThema()->Item(1)->colBookmark()->Count(), 3);
        const auto folder = book.colThema()->Item(4);
        QVERIFY(folder->refusesChanges() && !folder->colBookmark());
        folder->IsEdit(true);
        book.SaveAllThema();
        QCOMPARE(notWritten(book), QStringList{u"12.bkm"_s});
        QVERIFY(bytes.isNull() ? QFileInfo::exists(name) : bytesOf(name) == bytes);
        QVERIFY(QFile::remove(name));
        writeBytes(name, golden(u"12.bkm"_s));
        folder->LoadBookmarks();
        QVERIFY(!folder->refusesChanges() && book.filesNotRead().empty());
    }

    void fullDiskLosesNothing_data()
    {
        QTest::addColumn<int>("most");
        QTest::addColumn<QStringList>("lost");
        QTest::newRow("at once") << 0 << QStringList{u"Book.bkm"_s, u"3.bkm"_s, u"12.bkm"_s};
        QTest::newRow("amid the folders") << 800 << QStringList{u"Book.bkm"_s, u"3.bkm"_s};
    }
    void fullDiskLosesNothing()
    {
        QFETCH(int, most);
        QFETCH(QStringList, lost);
        Book book(path());
        fillSample(book, path());
        book.SaveAllThema();
        for (const auto& folder : *book.colThema()) {
            folder->DirName(folder->DirName() + u'!');
            if (folder->colBookmark() && !folder->colBookmark()->IsEmpty())
                folder->colBookmark()->Item(1)->Url(u"neu"_s);
        }
        {
            const FullDisk disk(static_cast<rlim_t>(most));
            book.SaveAllThema();
        }
        QCOMPARE(notWritten(book), lost);
        for (const QString& name : lost) { // no file of the name, the old content beside it
            QVERIFY(!QFile::exists(file(name)));
            QCOMPARE(bytesOf(file(name + u".bak"_s)), golden(name));
        }
        QVERIFY(!book.IsEdit() && !book.colThema()->Item(1)->IsEdit());
        book.markUnwrittenChanged();
        QVERIFY(book.IsEdit() && book.colThema()->Item(1)->IsEdit());

        // Who starts again now has the old content, ...
        Book other(path());
        QVERIFY(other.LoadAllThema());
        other.loadFolders();
        QCOMPARE(other.colThema()->Item(1)->colBookmark()->Item(1)->Url(),
                 u"http://a.example/?q=ä&x='1'"_s);
        // ... and who saves again the new one.
        book.SaveAllThema();
        QVERIFY(book.filesNotWritten().empty());
        other.colThema()->Item(1)->LoadBookmarks();
        QCOMPARE(other.colThema()->Item(1)->colBookmark()->Item(1)->Url(), u"neu"_s);
        QVERIFY(QDir(path()).entryList({u"*.bak"_s}).empty());
    }

    void tooManyBookmarksAreNotWritten()
    {
        Thema folder(path());
        folder.FileName(u"1.bkm"_s);
        folder.colBookmark(std::make_shared<BookmarkCollection>());
        for (int i = 0; i <= 32767; ++i)
            folder.colBookmark()->Add(std::make_shared<Bookmark>());
        folder.IsEdit(true);
        folder.SaveBookmarks();
        QVERIFY(!folder.saveError().isEmpty());
        QVERIFY(!QFile::exists(file(u"1.bkm"_s)));
    }

private:
    QString path() const { return m_folder->filePath(u"program"_s); }
    QString file(const QString& name) const { return path() + u'/' + name; }
    static QStringList notWritten(const Book& book)
    {
        QStringList names;
        for (const ArchiveFault& fault : book.filesNotWritten())
            names << fault.fileName;
        return names;
    }

    std::unique_ptr<QTemporaryDir> m_folder;
};

QTEST_APPLESS_MAIN(ArchiveFaultTest)
#include "ArchiveFaultTest.moc"
