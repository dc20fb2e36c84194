// The shell with many windows opened in one go, as the archive opens a folder:
// ShellWindows ADDRESS FOLDER WINDOWS [unpaced]. The folder holds the preferences; with
// "unpaced" the frame paints whenever it is asked to.
#include "app/GermanTexts.h"
#include "app/PaintPacer.h"
#include "bench/BenchShell.h"

#include <QApplication>
#include <QTimer>

int main(int argc, char** argv)
{
    const QApplication application(argc, argv);
    installGermanTexts();
    const QStringList arguments = QCoreApplication::arguments();
    BenchShell shell(arguments.value(2));
    if (arguments.value(4) == QStringLiteral("unpaced"))
        delete shell.frame().findChild<PaintPacer*>();
    shell.module().Main(arguments.value(1));
    QTimer::singleShot(0, &shell.frame(), [&] { // when the frame has been shown
        for (int i = arguments.value(3).toInt(); i > 1; --i)
            shell.frame().VisitUrl(arguments.value(1));
    });
    return QApplication::exec();
}
