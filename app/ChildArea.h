#pragma once

#include "app/Arrangement.h"
#include "base/DroppedAddress.h"

#include <QMdiArea>

class QDropEvent;
class frmBrowser;

/// The frame's client area. An arrangement that it is told to make is in force until
/// the user moves or sizes a child by hand, or none is wanted any more: children then
/// follow the area's size. Its free part takes drops and opens the frame's context menu.
class ChildArea : public QMdiArea {
    Q_OBJECT
public:
    explicit ChildArea(QWidget* parent);
    ~ChildArea() override;

    /// Restores maximised children and lays out all but the minimised ones. None leaves
    /// the children as they are from now on.
    void arrange(Arrangement mode);
    /// Adds a child inside the area, not yet shown.
    void addChild(frmBrowser* child);
    /// Whether addresses from outside are taken: by drops on the free part, and from second
    /// starts.
    void acceptAddresses(bool accept);
    bool acceptsAddresses() const { return m_acceptAddresses; }

signals:
    /// `isPrivate`: the address was dragged out of a private browser window.
    void addressDropped(const DroppedAddress& address, bool isPrivate);
    void contextMenuWanted(const QPoint& globalPosition);

protected:
    bool viewportEvent(QEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

private:
    /// Lays the children out by the arrangement in force; maximised ones stay so.
    void layOut();
    /// Puts the minimised children over the others, but under one that fills the area.
    void stackIcons();
    /// The children that an arrangement places.
    QList<frmBrowser*> laidOutChildren(QMdiArea::WindowOrder order) const;
    ChildSizes sizesOf(const QList<frmBrowser*>& children) const;
    QSize roomAboveIcons() const;
    bool isFree(const QPoint& position) const;
    bool drag(QDropEvent& event);
    bool drop(QDropEvent& event);

    bool m_acceptAddresses = false;
    Arrangement m_inForce = Arrangement::None;
    /// The area without scroll bars, when the children were last laid out.
    QSize m_laidOutIn;
};
