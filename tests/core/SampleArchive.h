#pragma once

#include "bookmarks/ArchiveRecords.h"
#include "bookmarks/Book.h"
#include "tests/TestCase.h"

/// What the golden files hold.
inline std::shared_ptr<Bookmark> makeBookmark(qint16 nr, const QString& titel, const QString& url,
                                              const QString& info)
{
    auto bookmark = std::make_shared<Bookmark>();
    bookmark->Nr(nr);
    bookmark->Titel(titel);
    bookmark->Url(url);
    bookmark->Info(info);
    return bookmark;
}

inline std::shared_ptr<Thema> addThema(Book& book, const QString& path, qint32 sequenz,
                                       const QString& name)
{
    auto folder = std::make_shared<Thema>(path);
    folder->Nr(sequenz);
    folder->Sequenz(sequenz);
    folder->FileName(QString::number(sequenz) + QStringLiteral(".bkm"));
    folder->DirName(name);
    if (!book.colThema())
        book.colThema(std::make_shared<ThemaCollection>());
    book.colThema()->Add(folder, themaKey(folder->Nr()));
    return folder;
}

/// Stores an archive of one folder, "Ordner", with these bookmarks, by title and address.
inline void storeArchive(const QString& path, const QList<std::pair<QString, QString>>& bookmarks)
{
    Book book(path);
    auto all = std::make_shared<BookmarkCollection>();
    for (const auto& [title, address] : bookmarks)
        all->Add(makeBookmark(0, title, address, {}));
    addThema(book, path, 1, QStringLiteral("Ordner"))->colBookmark(all);
    book.SaveAllThema();
}

inline void fillSample(Book& book, const QString& path)
{
    const auto first = makeBookmark(2, QStringLiteral("Größe & \"Maß\""),
                                    QStringLiteral("http://a.example/?q=ä&x='1'"),
                                    QStringLiteral("Preis: 5 €\r\nzweite Zeile\r\n"));
    const auto second = makeBookmark(5, QStringLiteral("ЖЯ \U0001F600 </A>"),
                                     QStringLiteral("http://b.example/"), {});
    const auto third = makeBookmark(9, QString(250, u'L'), QString(201, u'u'),
                                    QString(319, u'i') + QStringLiteral("\r\nZ"));
    auto bookmarks = std::make_shared<BookmarkCollection>();
    for (const auto& bookmark : {first, second, third})
        bookmarks->Add(bookmark, bookmarkKey(3, bookmark->Nr()));
    addThema(book, path, 3, QStringLiteral("Ämter <Süd>"))->colBookmark(bookmarks);
    addThema(book, path, 6, QStringLiteral("Leer"));
    addThema(book, path, 9, QStringLiteral("Geräumt"))
        ->colBookmark(std::make_shared<BookmarkCollection>());
    auto only = std::make_shared<BookmarkCollection>();
    only->Add(second);
    addThema(book, path, 12, QString(203, u'D'))->colBookmark(only);
}

inline QByteArray golden(const QString& name)
{
    return bytesOf(QFINDTESTDATA("golden/") + name);
}
