#include "bookmarks/ArchiveTree.h"

#include "base/WholeNumber.h"
#include "bookmarks/ArchiveRecords.h"

#include <array>

using namespace Qt::StringLiterals;

// The internal pointer of an index is the node above it: none for the root, the root for
// a folder, the folder for a bookmark.
struct ArchiveTree::Node {
    std::shared_ptr<Thema> folder;
    int row = 0;
    bool open = false;

    int bookmarkCount() const
    {
        return folder && folder->colBookmark() ? folder->colBookmark()->Count() : 0;
    }
};

namespace {
QString rootText()
{
    return u"Archiv"_s;
}
} // namespace

ArchiveTree::ArchiveTree(QObject* parent)
    : QAbstractItemModel(parent), m_root(std::make_unique<Node>())
{
}

ArchiveTree::~ArchiveTree() = default;

void ArchiveTree::build(const ThemaCollection* folders)
{
    beginResetModel();
    m_folders.clear();
    if (folders != nullptr) {
        m_folders.reserve(static_cast<std::size_t>(folders->Count()));
        for (const auto& folder : *folders)
            m_folders.push_back(std::make_unique<Node>(Node{folder}));
        renumber(0);
    }
    endResetModel();
}

QModelIndex ArchiveTree::root() const
{
    return createIndex(0, 0, static_cast<void*>(nullptr));
}

void ArchiveTree::GetLAndR_Indx(const QModelIndex& node, qint16& left, qint16& right)
{
    const QString itsKey = key(node);
    const qsizetype at = itsKey.indexOf(u'@');
    const QStringView behind = QStringView(itsKey).mid(at + 1);
    left = parseInt16(QStringView(itsKey).left(at));
    if (at >= 0 && !behind.isEmpty())
        right = parseInt16(behind);
}

NodeKind ArchiveTree::kind(const QModelIndex& node) const
{
    if (!node.isValid())
        return NodeKind::None;
    const Node* above = parentNode(node);
    if (above == nullptr)
        return NodeKind::Root;
    return above == m_root.get() ? NodeKind::Folder : NodeKind::Bookmark;
}

std::shared_ptr<Thema> ArchiveTree::folder(const QModelIndex& node) const
{
    const Node* its = folderNode(node);
    return its == nullptr ? nullptr : its->folder;
}

QModelIndex ArchiveTree::nodeOf(const Thema& folder) const
{
    for (const auto& node : m_folders)
        if (node->folder.get() == &folder)
            return index(node->row, 0, root());
    return {};
}

QModelIndex ArchiveTree::insertFolder(int row, const std::shared_ptr<Thema>& folder)
{
    beginInsertRows(root(), row, row);
    m_folders.insert(m_folders.begin() + row, std::make_unique<Node>(Node{folder}));
    renumber(static_cast<std::size_t>(row));
    endInsertRows();
    return index(row, 0, root());
}

void ArchiveTree::removeFolder(const QModelIndex& node)
{
    const int row = node.row();
    beginRemoveRows(root(), row, row);
    m_folders.erase(m_folders.begin() + row);
    renumber(static_cast<std::size_t>(row));
    endRemoveRows();
}

QModelIndex ArchiveTree::insertBookmarks(const QModelIndex& folderNode, int row,
                                         const std::vector<std::shared_ptr<Bookmark>>& bookmarks)
{
    Thema& thema = *folder(folderNode);
    auto collection = thema.colBookmark();
    if (!collection)
        collection = std::make_shared<BookmarkCollection>();
    const auto keyOf = [&thema](const auto& its) { return bookmarkKey(thema.Nr(), its->Nr()); };
    for (const auto& bookmark : bookmarks)
        if (const QString key = keyOf(bookmark); collection->Contains(key))
            throw DuplicateKeyError(key);
    const int count = static_cast<int>(bookmarks.size());
    beginInsertRows(folderNode, row, row + count - 1);
    collection->reserve(collection->Count() + count);
    for (int i = 0; i < count; ++i) {
        const auto& bookmark = bookmarks[static_cast<std::size_t>(i)];
        if (row + i < collection->Count())
            collection->AddBefore(row + i + 1, bookmark, keyOf(bookmark));
        else
            collection->Add(bookmark, keyOf(bookmark));
    }
    thema.colBookmark(collection);
    endInsertRows();
    return index(row, 0, folderNode);
}

void ArchiveTree::removeBookmarks(const QModelIndex& folderNode, int row, int count)
{
    const auto bookmarks = folder(folderNode)->colBookmark();
    beginRemoveRows(folderNode, row, row + count - 1);
    for (int position = row + count; position > row; --position)
        bookmarks->Remove(position);
    endRemoveRows();
}

void ArchiveTree::refresh(const QModelIndex& node)
{
    if (node.isValid())
        emit dataChanged(node, node);
}

void ArchiveTree::showOpen(const QModelIndex& node, bool open)
{
    if (kind(node) != NodeKind::Folder)
        return;
    m_folders[static_cast<std::size_t>(node.row())]->open = open;
    emit dataChanged(node, node, {ImageRole});
}

template <typename Each>
bool ArchiveTree::anyText(Each each) const
{
    if (each(rootText()))
        return true;
    for (const auto& node : m_folders) {
        if (each(node->folder->DirName()))
            return true;
        if (const auto bookmarks = node->folder->colBookmark())
            for (const auto& bookmark : *bookmarks)
                if (each(bookmark->Titel()))
                    return true;
    }
    return false;
}

bool ArchiveTree::IsNameFree(const QString& name) const
{
    return !anyText([&name](const QString& text) { return text == name; });
}

QStringList ArchiveTree::texts(const QString& prefix) const
{
    QStringList found;
    anyText([&prefix, &found](const QString& text) {
        if (text.startsWith(prefix))
            found.append(text);
        return false;
    });
    return found;
}

QModelIndex ArchiveTree::index(int row, int column, const QModelIndex& parent) const
{
    if (!hasIndex(row, column, parent))
        return {};
    switch (kind(parent)) {
    case NodeKind::None:
        return root();
    case NodeKind::Root:
        return createIndex(row, column, m_root.get());
    default:
        return createIndex(row, column, m_folders[static_cast<std::size_t>(parent.row())].get());
    }
}

QModelIndex ArchiveTree::parent(const QModelIndex& node) const
{
    switch (kind(node)) {
    case NodeKind::Folder:
        return root();
    case NodeKind::Bookmark:
        return createIndex(parentNode(node)->row, 0, m_root.get());
    default:
        return {};
    }
}

int ArchiveTree::rowCount(const QModelIndex& parent) const
{
    switch (kind(parent)) {
    case NodeKind::None:
        return 1;
    case NodeKind::Root:
        return static_cast<int>(m_folders.size());
    case NodeKind::Folder:
        return folderNode(parent)->bookmarkCount();
    default:
        return 0;
    }
}

int ArchiveTree::columnCount(const QModelIndex& /*parent*/) const
{
    return 1;
}

bool ArchiveTree::hasChildren(const QModelIndex& parent) const
{
    return rowCount(parent) > 0;
}

QVariant ArchiveTree::data(const QModelIndex& node, int role) const
{
    static const std::array<QString, 4> tags{QString(), rootText(), u"Dir"_s, u"Url"_s};
    if (!node.isValid())
        return {};
    switch (role) {
    case Qt::DisplayRole:
    case Qt::EditRole:
        return text(node);
    case KeyRole:
        return keyOf(node);
    case TagRole:
        return tags.at(static_cast<std::size_t>(kind(node)));
    case ImageRole:
        return image(node);
    case AddressRole:
        return kind(node) == NodeKind::Bookmark ? bookmark(node)->Url() : QVariant();
    default:
        return {};
    }
}

Qt::ItemFlags ArchiveTree::flags(const QModelIndex& node) const
{
    if (!node.isValid())
        return Qt::NoItemFlags;
    Qt::ItemFlags flags = Qt::ItemIsEnabled | Qt::ItemIsSelectable;
    flags.setFlag(Qt::ItemNeverHasChildren, kind(node) == NodeKind::Bookmark);
    flags.setFlag(Qt::ItemIsEditable, node == m_editable);
    return flags;
}

ArchiveTree::Node* ArchiveTree::parentNode(const QModelIndex& node) const
{
    return static_cast<Node*>(node.internalPointer());
}

const ArchiveTree::Node* ArchiveTree::folderNode(const QModelIndex& node) const
{
    switch (kind(node)) {
    case NodeKind::Folder:
        return m_folders[static_cast<std::size_t>(node.row())].get();
    case NodeKind::Bookmark:
        return parentNode(node);
    default:
        return nullptr;
    }
}

std::shared_ptr<Bookmark> ArchiveTree::bookmark(const QModelIndex& node) const
{
    return folder(node)->colBookmark()->Item(node.row() + 1);
}

QString ArchiveTree::text(const QModelIndex& node) const
{
    switch (kind(node)) {
    case NodeKind::Folder:
        return folder(node)->DirName();
    case NodeKind::Bookmark:
        return bookmark(node)->Titel();
    default:
        return rootText();
    }
}

QString ArchiveTree::keyOf(const QModelIndex& node) const
{
    switch (kind(node)) {
    case NodeKind::Folder:
        return u"%1@"_s.arg(folder(node)->Nr());
    case NodeKind::Bookmark:
        return u"%1@%2"_s.arg(folder(node)->Nr()).arg(bookmark(node)->Nr());
    default:
        return u"0@"_s;
    }
}

QString ArchiveTree::image(const QModelIndex& node) const
{
    switch (kind(node)) {
    case NodeKind::Folder:
        return folderNode(node)->open ? u"OpenDir"_s : u"Dir"_s;
    case NodeKind::Bookmark:
        return u"Url"_s;
    default:
        return rootText();
    }
}

void ArchiveTree::renumber(std::size_t from)
{
    for (std::size_t i = from; i < m_folders.size(); ++i)
        m_folders[i]->row = static_cast<int>(i);
}
