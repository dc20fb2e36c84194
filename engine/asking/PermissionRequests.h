#pragma once

#include "pages/asking/PermissionMemory.h"

#include <QObject>

#include <functional>
#include <optional>

class PagePrompt;
class QWebEngineProfile;

/// Asks whether a site may use the camera, know the place and so on: once per
/// site, kind and run. What hardly anybody can judge is refused without a question.
class PermissionRequests : public QObject {
    Q_OBJECT
public:
    PermissionRequests(PagePrompt& prompt, QObject* parent);

    /// Has the engine forget what it knows of the answers in `memory`.
    static void forget(QWebEngineProfile& profile, const PermissionMemory& memory);
    /// Has the engine forget one answer.
    static void forget(QWebEngineProfile& profile, const QUrl& site, PermissionKind kind);

private:
    /// Without a value it is refused, but not by the user.
    using Answer = std::function<void(std::optional<bool> isGranted)>;

    void connectRequests();
    void connectScreen();
    void refuseOthers();
    void requested(const QUrl& site, PermissionKind kind, const Answer& answer);
    void ask(const QUrl& site, PermissionKind kind, const Answer& answer);

    PagePrompt& m_prompt;
    /// Counts the documents of this page: a question that an earlier one has asked is no
    /// longer put.
    int m_document = 0;
    /// How often the user has refused something to this document.
    int m_refusals = 0;
};
