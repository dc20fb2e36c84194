#pragma once

#include "browser/EngineControl.h"

#include <QIcon>

class QWidget;

/// What the title bar of a browser window says: the text, and the icon with its marks.
class BrowserCaption {
public:
    /// Works on `window`, which must outlive this; `icon` is the window's without any mark. A
    /// private window says so in its caption.
    BrowserCaption(QWidget& window, QIcon icon, bool isPrivate);

    /// Shows `text`, which a page may have given.
    void say(const QString& text);
    /// Marks the icon, and tells assistive tools what the mark means.
    void showSound(EngineControl::Sound sound);
    /// Shows the icon of the page's site in the place of the window's; null: the window's.
    void showIcon(const QIcon& site);
    /// Whether the page plays, or is silenced: the icon is marked then.
    bool isHeard() const { return m_sound != EngineControl::Sound::None; }

private:
    void updateIcon();

    QWidget& m_window;
    QIcon m_icon;
    QIcon m_site;
    bool m_isPrivate;
    EngineControl::Sound m_sound = EngineControl::Sound::None;
};
