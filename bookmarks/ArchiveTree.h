#pragma once

#include "bookmarks/Thema.h"

#include <QAbstractItemModel>
#include <QPersistentModelIndex>

#include <memory>
#include <vector>

/// What a node of the archive tree stands for.
enum class NodeKind { None, Root, Folder, Bookmark };

/// The archive as a tree: the root, the folders, their bookmarks. Bookmarks are
/// read from their folder's collection when they are asked for, so the order of
/// the tree is that of the archive, and a large archive opens at once.
///
/// Folders and bookmarks change their places only through this class while the
/// tree is shown.
class ArchiveTree : public QAbstractItemModel {
    Q_OBJECT
public:
    enum Role {
        /// "0@" for the root, "7@" for folder 7, "7@12" for its bookmark 12: the numbers
        /// are those of the folder and the bookmark, never positions.
        KeyRole = Qt::UserRole,
        /// "Archiv", "Dir" or "Url".
        TagRole,
        /// "Archiv", "Dir", "OpenDir" or "Url".
        ImageRole,
        /// The address of a bookmark.
        AddressRole,
    };

    explicit ArchiveTree(QObject* parent = nullptr);
    ~ArchiveTree() override;

    /// Builds the tree anew: the root alone when there are no folders.
    void build(const ThemaCollection* folders);
    QModelIndex root() const;
    static QString key(const QModelIndex& node) { return node.data(KeyRole).toString(); }
    /// The numbers in a node's key; `right` stays as it was where there is none. Throws
    /// OverflowError past 16 bits, ConversionError where a number is none.
    static void GetLAndR_Indx(const QModelIndex& node, qint16& left, qint16& right);
    NodeKind kind(const QModelIndex& node) const;
    /// The folder's own node, or that of the bookmark's folder; else null.
    std::shared_ptr<Thema> folder(const QModelIndex& node) const;
    /// The node of this folder; invalid when the tree does not show it.
    QModelIndex nodeOf(const Thema& folder) const;

    /// Adds a folder's node at `row` below the root.
    QModelIndex insertFolder(int row, const std::shared_ptr<Thema>& folder);
    void removeFolder(const QModelIndex& node);
    /// Adds bookmarks, which have their numbers, from `row` on of the folder's node and of
    /// the folder; a folder without a collection gets one. Returns the node of the first.
    /// Throws DuplicateKeyError before anything is changed.
    QModelIndex insertBookmarks(const QModelIndex& folderNode, int row,
                                const std::vector<std::shared_ptr<Bookmark>>& bookmarks);
    /// Removes the nodes and the bookmarks.
    void removeBookmarks(const QModelIndex& folderNode, int row, int count);
    /// The node's text has changed.
    void refresh(const QModelIndex& node);
    /// Which of its two images a folder shows.
    void showOpen(const QModelIndex& node, bool open);

    /// The one node whose label can be edited; none with an invalid index.
    void setEditable(const QModelIndex& node) { m_editable = node; }
    /// Whether no node, of whatever kind, has exactly this text.
    bool IsNameFree(const QString& name) const;
    /// The texts of all nodes that begin with `prefix`.
    QStringList texts(const QString& prefix) const;

    QModelIndex index(int row, int column, const QModelIndex& parent = {}) const override;
    QModelIndex parent(const QModelIndex& node) const override;
    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    bool hasChildren(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& node, int role) const override;
    Qt::ItemFlags flags(const QModelIndex& node) const override;

private:
    struct Node;

    Node* parentNode(const QModelIndex& node) const;
    const Node* folderNode(const QModelIndex& node) const;
    std::shared_ptr<Bookmark> bookmark(const QModelIndex& node) const;
    QString text(const QModelIndex& node) const;
    QString keyOf(const QModelIndex& node) const;
    QString image(const QModelIndex& node) const;
    void renumber(std::size_t from);
    template <typename Each>
    bool anyText(Each each) const;

    std::unique_ptr<Node> m_root;
    std::vector<std::unique_ptr<Node>> m_folders;
    QPersistentModelIndex m_editable;
};
