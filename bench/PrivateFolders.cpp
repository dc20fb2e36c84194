#include "bench/PrivateFolders.h"

#include "bench/Report.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>

#include <unistd.h>

using namespace Qt::StringLiterals;

PrivateFolders::PrivateFolders()
{
    for (const char* variable :
         {"HOME", "XDG_RUNTIME_DIR", "XDG_DATA_HOME", "XDG_CACHE_HOME", "XDG_CONFIG_HOME"}) {
        const QString own = path(QString::fromLatin1(variable));
        const bool made =
            QDir().mkdir(own) &&
            QFile::setPermissions(own, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
        if (!made)
            throw BenchError("no folder can be made: " + own.toStdString());
        qputenv(variable, own.toUtf8());
    }
    if (::geteuid() == 0) // the engine's sandbox refuses to run there
        qputenv("QTWEBENGINE_DISABLE_SANDBOX", "1");
}

QString PrivateFolders::copyProgram() const
{
    const QString from = QCoreApplication::applicationDirPath();
    QDir().mkdir(path(u"lib"_s));
    for (const QString& name : {u"tessera"_s, u"lib/tessera-shell.so"_s})
        if (!QFile::copy(from + u'/' + name, path(name)))
            throw BenchError("cannot be copied: " + (from + u'/' + name).toStdString());
    return path(u"tessera"_s);
}
