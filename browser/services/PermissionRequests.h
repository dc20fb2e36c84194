#pragma once

#include "browser/services/PermissionMemory.h"

#include <QObject>
#include <QWebEnginePage>

class AskingPage;

/// Asks whether a site may use the camera, know the place and so on: once per
/// site, kind and run. What hardly anybody can judge is refused unasked.
class PermissionRequests : public QObject {
    Q_OBJECT
public:
    explicit PermissionRequests(AskingPage& asking, QObject* parent);

private:
    using Answer = std::function<void(bool isGranted)>;

    void connectRequests();
    void refuseOthers();
    void requested(const QUrl& site, PermissionKind kind, const Answer& answer);
    void ask(const QUrl& site, PermissionKind kind, const Answer& answer);

    AskingPage& m_asking;
    /// Counts the documents: a question of an earlier one is no longer put.
    int m_document = 0;
    /// Of this document, by the user.
    int m_refusals = 0;
};
