#pragma once

#include <QObject>

class QWebEngineProfile;
class Shell;

/// What all pages share besides their store: each service is a small object of
/// its own that this one makes. It goes before the profile.
class ProfileServices : public QObject {
    Q_OBJECT
public:
    /// `shell` and `profile` outlive it.
    ProfileServices(Shell& shell, QWebEngineProfile& profile);
};
