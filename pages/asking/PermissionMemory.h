#pragma once

#include <QHash>
#include <QList>
#include <QPair>
#include <QSet>
#include <QString>
#include <QUrl>

#include <optional>
#include <utility>

/// What a page may only do when the user has said so.
enum class PermissionKind {
    Camera,
    Microphone,
    CameraAndMicrophone,
    Location,
    Notifications,
    Screen,
    Pointer,
    Clipboard,
    Fonts,
};

/// The question whether `site` may do what `kind` stands for, in one sentence.
QString permissionQuestion(PermissionKind kind, const QString& site);

/// What the user has said to it, in a few words.
QString permissionAnswer(PermissionKind kind, bool isGranted);

/// The answers that the user has given in this run, for each site and kind. A
/// site is the scheme, host and port of an address.
class PermissionMemory {
public:
    /// Nothing where the user has not been asked yet. What he has said of the camera and of
    /// the microphone answers for both together.
    std::optional<bool> answer(const QUrl& site, PermissionKind kind) const;
    void remember(const QUrl& site, PermissionKind kind, bool isGranted);
    /// What the user has said about `site`, in the order of the kinds. What he has said of the
    /// camera and of the microphone stands for both together.
    QList<std::pair<PermissionKind, bool>> answers(const QUrl& site) const;
    /// From now on the user is asked again. With the camera or the microphone both together are
    /// forgotten, too.
    void forget(const QUrl& site, PermissionKind kind);
    /// The sites that answers are known for.
    QSet<QUrl> sites() const;
    void clear() { m_answers.clear(); }

private:
    QHash<QPair<QUrl, int>, bool> m_answers;
};
