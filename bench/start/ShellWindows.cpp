// The shell with many windows opened in one go, as the archive opens a folder:
// ShellWindows ADDRESS FOLDER WINDOWS. The folder holds the preferences.
#include "app/AppInit.h"
#include "app/MDIForm1.h"
#include "app/ProgramStarter.h"
#include "base/MessagePrompt.h"
#include "browser/WebEngineHost.h"
#include "browser/services/PageDialogs.h"

#include <QApplication>
#include <QUrl>

int main(int argc, char** argv)
{
    QApplication application(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    const QString folder = arguments.value(2);
    WebEngineHost engines(folder + QStringLiteral("/data"), folder + QStringLiteral("/cache"),
                          [](const QString& typed) { return QUrl(typed); });
    MessagePrompt prompt;
    PageDialogs asker;
    ProcessStarter starter;
    AppInit shell(folder, prompt, starter, {engines.factory(), [] { return QStringList(); }});
    engines.serve(shell.frame(), &shell.frame(), asker);
    shell.Main(arguments.value(1));
    for (int i = arguments.value(3).toInt(); i > 1; --i)
        shell.frame().VisitUrl(arguments.value(1));
    return QApplication::exec();
}
