#include "browser/SystemMenu.h"

#include <QAction>
#include <QHash>
#include <QMdiSubWindow>
#include <QMenu>

using namespace Qt::StringLiterals;

namespace {

/// The captions of the items by those that the toolkit gave them.
QHash<QString, QString> captions()
{
    return {{QMdiSubWindow::tr("&Restore"), u"&Wiederherstellen"_s},
            {QMdiSubWindow::tr("&Move"), u"&Verschieben"_s},
            {QMdiSubWindow::tr("&Size"), u"&Größe ändern"_s},
            {QMdiSubWindow::tr("Mi&nimize"), u"Mi&nimieren"_s},
            {QMdiSubWindow::tr("Ma&ximize"), u"Ma&ximieren"_s},
            {QMdiSubWindow::tr("Stay on &Top"), u"Im Vordergrund &bleiben"_s},
            {QMdiSubWindow::tr("&Close"), u"&Schließen"_s}};
}

} // namespace

void settleSystemMenu(QMdiSubWindow& window, const std::function<void(Placing)>& place)
{
    const QHash<QString, Placing> placings{{QMdiSubWindow::tr("&Move"), Placing::Move},
                                           {QMdiSubWindow::tr("&Size"), Placing::Size}};
    const QHash<QString, QString> german = captions();
    const QList<QAction*> items = window.systemMenu()->actions();
    for (QAction* item : items) {
        item->setShortcut({});
        if (const Placing placing = placings.value(item->text(), Placing::None);
            placing != Placing::None) {
            item->disconnect(&window);
            QObject::connect(item, &QAction::triggered, &window,
                             [place, placing] { place(placing); });
        }
        item->setText(german.value(item->text(), item->text()));
    }
}
