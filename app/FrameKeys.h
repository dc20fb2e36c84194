#pragma once

#include <QObject>

#include <functional>

class FrameCommands;
class MDIForm1;
class QKeySequence;
class QShortcut;

/// The keys of the frame: they act on the active browser window wherever inside
/// the frame the focus is, and whatever state the menu items are in.
class FrameKeys : public QObject {
    Q_OBJECT
public:
    /// Owned by `frame`; `commands` lives as long as the frame.
    FrameKeys(MDIForm1& frame, FrameCommands& commands);

private:
    QShortcut* addKey(const QKeySequence& key, std::function<void()> step);
    void addCommand(const QString& role, const QList<QKeySequence>& keys, FrameCommands& commands);
    void addButton(const QKeySequence& key, const QString& button);

    MDIForm1& m_frame;
};
