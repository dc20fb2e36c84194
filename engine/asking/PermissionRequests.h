#pragma once

#include "pages/asking/PermissionMemory.h"

#include <QObject>

#include <functional>

class AskingPage;
class QWebEngineProfile;

/// Asks whether a site may use the camera, know the place and so on: once per
/// site, kind and run. What hardly anybody can judge is refused unasked.
class PermissionRequests : public QObject {
    Q_OBJECT
public:
    explicit PermissionRequests(AskingPage& asking, QObject* parent);

    /// Has the engine forget what it knows of the answers in `memory`.
    static void forget(QWebEngineProfile& profile, const PermissionMemory& memory);

private:
    using Answer = std::function<void(bool isGranted)>;

    void connectRequests();
    void connectScreen();
    void refuseOthers();
    void requested(const QUrl& site, PermissionKind kind, const Answer& answer);
    void ask(const QUrl& site, PermissionKind kind, const Answer& answer);

    AskingPage& m_asking;
    /// Counts the documents: a question of an earlier one is no longer put.
    int m_document = 0;
    /// Of this document, by the user.
    int m_refusals = 0;
};
