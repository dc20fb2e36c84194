#pragma once

#include <QObject>

class AddressBar;
class EngineControl;
class SafetyPanel;

/// Shows in the address line how safe the page of a browser window is, and more about it by a
/// click on the sign or by Alt+Enter anywhere in the window.
class PageSafetyDisplay : public QObject {
    Q_OBJECT
public:
    /// `window` owns it; the others go with that window.
    PageSafetyDisplay(EngineControl& engine, AddressBar& addressBar, QWidget* window);

signals:
    /// The sign is needed, and the address line is not shown.
    void lineWanted();

private:
    void change();
    void open();

    EngineControl& m_engine;
    AddressBar& m_addressBar;
    SafetyPanel* m_panel = nullptr; ///< made when it is wanted first
};
