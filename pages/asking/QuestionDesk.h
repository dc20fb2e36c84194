#pragma once

#include "pages/asking/PermissionMemory.h"
#include "pages/asking/PopupLimit.h"
#include "pages/asking/PrintSilence.h"
#include "pages/asking/PromptSession.h"

#include <QSet>

class PageAsker;

/// What all pages share when they ask their user: who asks, whose turn it is,
/// and what the user has said in this run. It outlives every page.
struct QuestionDesk {
    PageAsker* asker = nullptr;
    QuestionQueue queue;
    PermissionMemory permissions;
    /// Certificates that the user trusts though the engine does not, each for
    /// one host and port.
    QSet<QByteArray> trustedCertificates;
    /// Schemes that go to the desktop without another question.
    QSet<QString> desktopSchemes;
    PopupLimit popups;
    PrintSilence prints;

    /// Forgets what the user has said about pages so far.
    void clear()
    {
        permissions.clear();
        trustedCertificates.clear();
        desktopSchemes.clear();
    }
};
