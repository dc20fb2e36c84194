#pragma once

#include "base/SearchedTexts.h"
#include "bookmarks/ArchiveTree.h"

#include <optional>
#include <tuple>
#include <vector>

/// Finds texts in the archive as its tree shows it: in the names of folders, and in the titles,
/// the addresses and the descriptions of bookmarks. Places are in the order of the tree.
class ArchiveFind : public QObject {
    Q_OBJECT
public:
    /// `tree` outlives this.
    explicit ArchiveFind(const ArchiveTree& tree);

    /// Looks for `text`, without regard to case; nothing is found for an empty text. Returns the
    /// number of places.
    int find(const QString& text);
    /// The node of a place, from 0 on.
    QModelIndex node(int place) const;
    /// The place behind `node`, or before it, and from there around; -1 if there is none.
    int beside(const QModelIndex& node, bool backwards) const;

signals:
    /// The archive is another one than at the last search: the places found do not count.
    void changed();

private:
    /// A folder's row in the tree; a bookmark's row in it from 1 on, and 0 for the folder itself.
    struct Place {
        int folder = 0;
        int entry = 0;
        friend bool operator<(const Place& a, const Place& b)
        {
            return std::tie(a.folder, a.entry) < std::tie(b.folder, b.entry);
        }
    };

    void watch();
    void foldersChanged(int first, int count);
    void forget(const QModelIndex& node);
    const SearchedTexts& texts(int folder);
    Place placeOf(const QModelIndex& node) const;

    const ArchiveTree& m_tree;
    /// By the rows of the folders; what is not there is made when it is searched.
    std::vector<std::optional<SearchedTexts>> m_texts;
    std::vector<Place> m_places;
};
