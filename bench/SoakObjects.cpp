#include "bench/SoakObjects.h"

#include "app/MDIForm1.h"

#include <QApplication>
#include <QWebEnginePage>
#include <QWebEngineProfile>
#include <QWebEngineView>
#include <QWindow>

#include <algorithm>
#include <cstdio>

void SoakObjects::watch(const MDIForm1& frame)
{
    for (frmBrowser* window : frame.Browser()) {
        auto* const view = window->brwWebBrowser()->host()->findChild<QWebEngineView*>();
        m_watched << window << window->brwWebBrowser() << view << view->page();
        m_pages = view->page()->parent();
        m_profile = view->page()->profile();
    }
}

int SoakObjects::left()
{
    m_watched.removeAll(QPointer<QObject>());
    return static_cast<int>(m_watched.size());
}

SoakObjects::Classes SoakObjects::classes(const MDIForm1& frame) const
{
    QSet<QObject*> objects;
    const QList<const QObject*> roots = {&frame, m_profile, m_pages, qApp};
    for (const QObject* root : roots) {
        if (root == nullptr)
            continue;
        for (QObject* object : root->findChildren<QObject*>())
            objects << object;
    }
    for (QWidget* widget : QApplication::allWidgets())
        objects << widget;
    for (QWindow* window : QGuiApplication::allWindows())
        objects << window;
    Classes counts;
    for (const QObject* object : objects)
        ++counts[object->metaObject()->className()];
    return counts;
}

int SoakObjects::count(const MDIForm1& frame) const
{
    int sum = 0;
    for (const auto& [name, number] : classes(frame))
        sum += number;
    return sum;
}

void SoakObjects::remember(const MDIForm1& frame)
{
    m_remembered = classes(frame);
}

int SoakObjects::grown(const MDIForm1& frame) const
{
    int sum = 0;
    for (const auto& [name, number] : classes(frame)) {
        const auto before = m_remembered.find(name);
        const int more = number - (before == m_remembered.end() ? 0 : before->second);
        if (more > 0)
            std::fprintf(stderr, "%d more of %s\n", more, name.constData());
        sum += std::max(0, more);
    }
    return sum;
}
