#include "bookmarks/ArchiveFind.h"

#include "base/PlaceBeside.h"

ArchiveFind::ArchiveFind(const ArchiveTree& tree) : m_tree(tree)
{
    watch();
}

void ArchiveFind::watch()
{
    connect(&m_tree, &ArchiveTree::rowsInserted, this,
            [this](const QModelIndex& parent, int first, int last) {
                if (m_tree.kind(parent) == NodeKind::Root)
                    foldersChanged(first, last - first + 1);
                forget(parent);
            });
    connect(&m_tree, &ArchiveTree::rowsRemoved, this,
            [this](const QModelIndex& parent, int first, int last) {
                if (m_tree.kind(parent) == NodeKind::Root)
                    foldersChanged(first, first - last - 1);
                forget(parent);
            });
    connect(&m_tree, &ArchiveTree::modelReset, this, [this] {
        m_texts.clear();
        forget({});
    });
    connect(&m_tree, &ArchiveTree::dataChanged, this,
            [this](const QModelIndex& node, const QModelIndex&, const QList<int>& roles) {
                if (roles != QList<int>{ArchiveTree::ImageRole})
                    forget(node);
            });
}

void ArchiveFind::foldersChanged(int first, int count)
{
    if (m_texts.empty()) // nothing was searched yet
        return;
    const auto at = m_texts.begin() + first;
    if (count > 0)
        m_texts.insert(at, static_cast<std::size_t>(count), std::nullopt);
    else
        m_texts.erase(at, at - count);
}

void ArchiveFind::forget(const QModelIndex& node)
{
    m_places.clear();
    if (const Place its = placeOf(node); its.folder >= 0 && !m_texts.empty())
        m_texts[static_cast<std::size_t>(its.folder)].reset();
    emit changed();
}

const SearchedTexts& ArchiveFind::texts(int folder)
{
    std::optional<SearchedTexts>& texts = m_texts[static_cast<std::size_t>(folder)];
    if (texts)
        return *texts;
    texts.emplace();
    const Thema& thema = *m_tree.folder(m_tree.index(folder, 0, m_tree.root()));
    texts->add({thema.DirName()});
    if (const auto bookmarks = thema.colBookmark()) {
        texts->reserve(static_cast<std::size_t>(bookmarks->Count()) + 1);
        for (const auto& bookmark : *bookmarks)
            texts->add({bookmark->Titel(), bookmark->Url(), bookmark->Info()});
    }
    return *texts;
}

int ArchiveFind::find(const QString& text)
{
    m_places.clear();
    const QByteArray word = foldedText(text);
    const int folders = m_tree.rowCount(m_tree.root());
    m_texts.resize(static_cast<std::size_t>(folders));
    for (int folder = 0; folder < folders; ++folder) {
        const SearchedTexts& its = texts(folder); // for an empty text, too: the first key is quick
        if (word.isEmpty())
            continue;
        for (std::size_t i = its.find(word, 0); i != its.count(); i = its.find(word, i + 1))
            m_places.push_back({folder, static_cast<int>(i)});
    }
    return static_cast<int>(m_places.size());
}

QModelIndex ArchiveFind::node(int place) const
{
    const Place& its = m_places.at(static_cast<std::size_t>(place));
    const QModelIndex folder = m_tree.index(its.folder, 0, m_tree.root());
    return its.entry == 0 ? folder : m_tree.index(its.entry - 1, 0, folder);
}

ArchiveFind::Place ArchiveFind::placeOf(const QModelIndex& node) const
{
    switch (m_tree.kind(node)) {
    case NodeKind::Folder:
        return {node.row(), 0};
    case NodeKind::Bookmark:
        return {node.parent().row(), node.row() + 1};
    default:
        return {-1, 0}; // before all others
    }
}

int ArchiveFind::beside(const QModelIndex& node, bool backwards) const
{
    return placeBeside(m_places, placeOf(node), backwards);
}
