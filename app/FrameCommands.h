#pragma once

#include "app/Arrangement.h"
#include "base/Prompt.h"

#include <QHash>
#include <QObject>
#include <QPointer>

#include <functional>

class ProgramStarter;
class MDIForm1;
class QAction;
struct DroppedAddress;

/// What the items of the frame's menus do, under the names of the menu bar's
/// items, and what happens when a menu opens.
class FrameCommands : public QObject {
    Q_OBJECT
public:
    /// Connects itself to the menus and the area of `frame`, which owns it.
    /// `starter` outlives it.
    FrameCommands(MDIForm1& frame, ProgramStarter& starter);

    /// Runs the command of a role; an error is shown as a message.
    void run(const QString& role);

private:
    void buildTable();
    void prepare(const QString& role);
    void prepareExtrasMenu();
    void prepareWindowMenu();
    void rebuildWindowList();
    void openDropped(const DroppedAddress& address);

    void showPreferences();
    void showInternetOptions();
    void showArchive();
    void showHistory();
    static void bringForward(QWidget* window);
    void showAboutBox();
    void toggleStatusBar();
    void startMailClient();
    void arrange(Arrangement mode);
    void toggleAddressBar();
    void toggleToolbar();
    void closeActive();
    void closeAll();
    void tell(const QString& text, Prompt::Icon icon);

    MDIForm1& m_frame;
    ProgramStarter& m_starter;
    QHash<QString, std::function<void()>> m_commands;
    QPointer<QWidget> m_archive;
    QPointer<QWidget> m_history;
    QList<QAction*> m_windowList;
};
