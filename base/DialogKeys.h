#pragma once

#include <QHash>
#include <QObject>

#include <functional>

class QKeyEvent;
class QWidget;

/// Enter, on either key pad, without Ctrl, Alt or Meta.
bool isEnterKey(const QKeyEvent& event);
/// Escape, likewise.
bool isEscapeKey(const QKeyEvent& event);

/// The key table of one dialog: what Enter (the key pad's too) and Escape do
/// while a control has the focus. A key that the table knows reaches neither the
/// control nor one of Qt's default buttons.
///
/// An object of this class belongs to its dialog.
class DialogKeys : public QObject {
    Q_OBJECT
public:
    using Action = std::function<void()>;

    explicit DialogKeys(QWidget* dialog);

    /// An empty action leaves the key to the control; `nothing` takes it away.
    void set(QWidget* control, const Action& enter, const Action& escape);
    static void nothing() {}

    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    struct Keys {
        Action enter;
        Action escape;
    };

    QHash<QObject*, Keys> m_keys;
};
