#pragma once

#include <memory>

#include <QString>

class Bookmark;
class Thema;

/// What the properties dialog and the drop commands need of the archive window.
class BookSelection {
public:
    BookSelection() = default;
    BookSelection(const BookSelection&) = delete;
    BookSelection& operator=(const BookSelection&) = delete;
    virtual ~BookSelection() = default;

    /// The folder of the selected node (the folder itself, or that of a
    /// bookmark); null on the root or when nothing is selected.
    virtual std::shared_ptr<Thema> selectedFolder() const = 0;
    /// The selected bookmark; null when the selected node is none.
    virtual std::shared_ptr<Bookmark> selectedBookmark() const = 0;
    /// Adds a bookmark at the selected place, in model and tree.
    virtual void AddBkmToArchive(const QString& title, const QString& url, const QString& info) = 0;
    /// Changes a bookmark, in model and tree.
    virtual void UpdateBookmark(const std::shared_ptr<Bookmark>& bookmark, const QString& title,
                                const QString& url, const QString& info) = 0;
};
