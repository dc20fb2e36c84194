#include "bookmarks/TreeFind.h"

#include "bookmarks/ArchiveView.h"

TreeFind::TreeFind(ArchiveView& view) : m_view(view), m_archive(view.tree()) {}

int TreeFind::find(const QString& text)
{
    return m_archive.find(text);
}

int TreeFind::beside(bool backwards) const
{
    return m_archive.beside(m_view.selectedNode(), backwards);
}

void TreeFind::show(int place)
{
    m_view.reachNode(m_archive.node(place));
}
