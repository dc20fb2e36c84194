#pragma once

#include "base/FindLine.h"
#include "bookmarks/ArchiveFind.h"

class ArchiveView;

/// Lets a `FindLine` search the archive as its window shows it.
class TreeFind : public Findable {
public:
    /// `view` outlives this.
    explicit TreeFind(ArchiveView& view);

    const ArchiveFind& archive() const { return m_archive; }
    int find(const QString& text) override;
    int beside(bool backwards) const override;
    void show(int place) override;

private:
    ArchiveView& m_view;
    ArchiveFind m_archive;
};
