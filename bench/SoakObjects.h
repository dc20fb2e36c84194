#pragma once

#include <QByteArray>
#include <QList>
#include <QPointer>

#include <map>

class MDIForm1;

/// Watches whether browser windows, with their engines and pages, go when they
/// are closed, and whether they leave other objects behind: in the frame, with
/// the pages' owners, in the application.
class SoakObjects {
public:
    /// Watches the windows that are open.
    void watch(const MDIForm1& frame);
    /// How many of the objects watched have not gone.
    int left();

    /// The objects there are now.
    int count(const MDIForm1& frame) const;
    /// Takes the objects that there are now as those that may be there.
    void remember(const MDIForm1& frame);
    /// How many more there are than then; their classes go to stderr.
    int grown(const MDIForm1& frame) const;

private:
    using Classes = std::map<QByteArray, int>;

    Classes classes(const MDIForm1& frame) const;

    QList<QPointer<QObject>> m_watched;
    /// The engine's profile, and the owner of all pages.
    QPointer<QObject> m_profile;
    QPointer<QObject> m_pages;
    Classes m_remembered;
};
