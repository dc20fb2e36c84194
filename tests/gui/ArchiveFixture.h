#pragma once

#include "bookmarks/ArchiveRecords.h"
#include "bookmarks/ArchiveView.h"
#include "bookmarks/frmBook.h"
#include "tests/core/SampleArchive.h"
#include "tests/gui/FakeShell.h"
#include "tests/gui/GuiTest.h"

#include <QAbstractItemModelTester>
#include <QAction>
#include <QDir>
#include <QLineEdit>
#include <QPointer>

/// The window on an archive of the folders "A" (bookmarks a1, a2) and "B" (none).
struct ArchiveFixture {
    FakeShell shell;
    QPointer<frmBook> window;

    ArchiveFixture()
    {
        Book book(shell.programFolder());
        auto bookmarks = std::make_shared<BookmarkCollection>();
        for (const QString& title : {QStringLiteral("a1"), QStringLiteral("a2")})
            bookmarks->Add(makeBookmark(0, title, QStringLiteral("http://") + title, {}));
        addThema(book, shell.programFolder(), 1, QStringLiteral("A"))->colBookmark(bookmarks);
        addThema(book, shell.programFolder(), 2, QStringLiteral("B"));
        book.SaveAllThema();
    }
    ~ArchiveFixture() { delete window; }

    void open()
    {
        window = new frmBook(shell, shell.history, nullptr);
        new QAbstractItemModelTester(view().model(), window);
        window->show();
        QVERIFY(QTest::qWaitForWindowActive(window));
        QCoreApplication::processEvents();
    }
    ArchiveView& view() { return window->view(); }
    const QAbstractItemModel& tree() { return *view().model(); }
    QModelIndex root() { return tree().index(0, 0); }
    QModelIndex folder(int row) { return tree().index(row, 0, root()); }
    /// Selects by text; none with an empty one.
    void select(const QString& text) { view().selectNode(node(text)); }
    QModelIndex node(const QString& text)
    {
        return tree()
            .match(root(), Qt::DisplayRole, text, 1, Qt::MatchExactly | Qt::MatchRecursive)
            .value(0);
    }
    /// What the tree shows, like "A(a1 a2) B()".
    QString shown()
    {
        QStringList folders;
        for (int row = 0; row < tree().rowCount(root()); ++row) {
            QStringList titles;
            for (int i = 0; i < tree().rowCount(folder(row)); ++i)
                titles << tree().index(i, 0, folder(row)).data().toString();
            folders << folder(row).data().toString() + u'(' + titles.join(u' ') + u')';
        }
        return folders.join(u' ');
    }
    /// The same of the archive in memory.
    QString held()
    {
        QStringList folders;
        for (const auto& its : *window->Buch().colThema()) {
            QStringList titles;
            if (its->colBookmark())
                for (const auto& bookmark : *its->colBookmark())
                    titles << bookmark->Titel();
            folders << its->DirName() + u'(' + titles.join(u' ') + u')';
        }
        return folders.join(u' ');
    }
    void choose(const char16_t* item)
    {
        window->findChild<QAction*>(QString::fromUtf16(item))->trigger();
    }
    QLineEdit* editor()
    {
        return qobject_cast<QLineEdit*>(view().indexWidget(view().currentIndex()));
    }
    bool isChanged() { return window->Buch().IsEdit(); }
    QString path(const QString& name) { return shell.programFolder() + u'/' + name; }
    QByteArray bytes(const QString& name) { return bytesOf(path(name)); }
};

/// The same, with the window open.
struct OpenArchive : ArchiveFixture {
    OpenArchive() { open(); }
};
