#pragma once

#include "app/Arrangement.h"
#include "base/DroppedAddress.h"

#include <QMdiArea>

class QDropEvent;

/// The frame's client area. It moves its children only when it is told to.
/// Its free part takes drops and opens the frame's context menu.
class ChildArea : public QMdiArea {
    Q_OBJECT
public:
    explicit ChildArea(QWidget* parent);

    /// Restores maximised children and lays out all but the minimised ones.
    void arrange(Arrangement mode);
    /// Adds a child at a sensible size, not yet shown.
    void addChild(QMdiSubWindow* child);
    bool hasMaximizedChild() const;
    /// Whether the free part accepts drops.
    void acceptAddresses(bool accept);

signals:
    void addressDropped(const DroppedAddress& address);
    void contextMenuWanted(const QPoint& globalPosition);

protected:
    bool viewportEvent(QEvent* event) override;

private:
    QSize roomAboveIcons() const;
    bool isFree(const QPoint& position) const;
    bool drag(QDropEvent& event);
    bool drop(QDropEvent& event);

    bool m_acceptAddresses = false;
};
