#pragma once

#include <QList>
#include <QObject>
#include <QPointer>

#include <memory>

class NoticeWindow;
class QWebEngineNotification;
class QWebEngineProfile;

/// Shows the notifications of the sites that may send some, a few at a time.
class Notices : public QObject {
    Q_OBJECT
public:
    /// It goes before `profile`.
    Notices(QWebEngineProfile& profile, QObject* parent);
    ~Notices() override;
    Q_DISABLE_COPY_MOVE(Notices)

private:
    void show(std::unique_ptr<QWebEngineNotification> notification);

    QWebEngineProfile& m_profile;
    QList<QPointer<NoticeWindow>> m_windows;
};
