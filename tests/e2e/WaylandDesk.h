#pragma once

#include "tests/e2e/Desk.h"

#include <QJsonObject>
#include <QLocalSocket>

#include <initializer_list>

/// A connection by a protocol that is spoken in its own bytes.
class Wire : public QLocalSocket {
public:
    explicit Wire(const QString& path);

    /// The next bytes, so many of them; fewer if they do not come in time.
    QByteArray next(qint64 size);
    QByteArray nextUpTo(const QByteArray& end);
    static QByteArray words(std::initializer_list<quint32> numbers);
};

/// What the compositor sway shows. Keys and mouse go to it by the protocol for remote desktops
/// (RFB 3.8), over the socket `hands` in the folder for such files.
class WaylandDesk : public Desk {
public:
    WaylandDesk();

    QStringList windows() const override;
    QStringList windows(const QString& title) const override;
    QString active() const override;
    QString titleOf(const QString& window) const override;
    QRect placeOf(const QString& window) const override;
    QImage picture() const override;
    QString clipboard() const override;
    void clearClipboard() override;

    void press(const QString& keys) override;
    void type(const QString& text) override;
    void moveTo(const QPoint& place) override;
    void hold(int button, bool isHeld) override;
    void awaitAnswer() override;
    bool awaitDrag(const QPoint& near) override;

    bool minimise(const QString& window) override;
    void resize(const QString& window, const QSize& size) override;
    void move(const QString& window, const QPoint& place) override;

    /// Has the compositor do something.
    static QByteArray sway(const QString& words);

private:
    static QList<QJsonObject> nodes();
    static QJsonObject node(const QString& window);
    void key(quint32 symbol, bool isDown);
    void point();

    Wire m_hands;
    QPoint m_place;
    int m_held = 0; ///< a bit for each button
};
