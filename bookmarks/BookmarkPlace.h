#pragma once

#include <QString>

#include <memory>

class Bookmark;
class Thema;

/// What the properties dialog works on: the place of the archive that its bookmark is in, or
/// is to come to. All may throw Error, and have changed nothing then.
class BookmarkPlace {
public:
    BookmarkPlace() = default;
    BookmarkPlace(const BookmarkPlace&) = delete;
    BookmarkPlace& operator=(const BookmarkPlace&) = delete;
    virtual ~BookmarkPlace() = default;

    /// The folder that a new bookmark comes to; null where there is none.
    virtual std::shared_ptr<Thema> selectedFolder() const = 0;
    /// The bookmark that is edited; null for a new one.
    virtual std::shared_ptr<Bookmark> selectedBookmark() const = 0;
    virtual void AddBkmToArchive(const QString& title, const QString& url, const QString& info) = 0;
    /// Without a bookmark the three texts are added as a new one.
    virtual void UpdateBookmark(const std::shared_ptr<Bookmark>& bookmark, const QString& title,
                                const QString& url, const QString& info) = 0;
};
