#include "base/DialogPrompt.h"

#include "base/QuestionDialogs.h"
#include "base/ShownText.h"

#include <QCoreApplication>
#include <QEventLoop>
#include <QFileDialog>
#include <QFileInfo>
#include <QHeaderView>
#include <QKeyEvent>
#include <QMessageBox>
#include <QPointer>
#include <QPushButton>
#include <QScreen>
#include <QTreeView>

#include <algorithm>
#include <memory>

namespace {
QMessageBox::Icon boxIcon(Prompt::Icon icon)
{
    switch (icon) {
    case Prompt::Icon::Information:
        return QMessageBox::Information;
    case Prompt::Icon::Question:
        return QMessageBox::Question;
    case Prompt::Icon::Exclamation:
        return QMessageBox::Warning;
    case Prompt::Icon::Critical:
        return QMessageBox::Critical;
    case Prompt::Icon::None:
        break;
    }
    return QMessageBox::NoIcon;
}

/// A question that Escape and the close box leave open.
class QuestionBox : public QMessageBox {
public:
    using QMessageBox::QMessageBox;

    void reject() override {}

protected:
    // The base class would press the button of the "no" role.
    void keyPressEvent(QKeyEvent* event) override
    {
        if (!event->matches(QKeySequence::Cancel))
            QMessageBox::keyPressEvent(event);
    }
};

void fill(QMessageBox& box, const QString& text, const QString& title, Prompt::Icon icon)
{
    box.setTextFormat(Qt::PlainText);
    box.setText(messageText(text));
    box.setWindowTitle(title);
    box.setIcon(boxIcon(icon));
}

/// "Caption|*.a;*.b" as the dialog wants it: it takes the patterns from the
/// last pair of brackets and splits them at blanks.
QString nameFilter(const QString& filter)
{
    const qsizetype bar = filter.indexOf(QLatin1Char('|'));
    QString patterns = filter.mid(bar + 1);
    patterns.replace(QLatin1Char(';'), QLatin1Char(' '));
    return filter.left(bar) + QStringLiteral(" (") + patterns + QLatin1Char(')');
}

/// What a dialog that saves a file of this suffix shows: files of its kind, or all.
QStringList kindFilters(const QString& suffix)
{
    QStringList filters{QStringLiteral("Alle Dateien (*)")};
    // Other characters could mean something in a pattern.
    const bool isPlain =
        !suffix.isEmpty() &&
        std::all_of(suffix.begin(), suffix.end(), [](QChar c) { return c.isLetterOrNumber(); });
    if (isPlain)
        filters.prepend(QStringLiteral("%1-Dateien (*.%2)").arg(suffix.toUpper(), suffix));
    return filters;
}

/// Makes room for whole names, and for types and dates in German.
void enlarge(QFileDialog& dialog)
{
    constexpr QSize wanted(720, 440);
    dialog.resize(wanted.boundedTo(dialog.screen()->availableSize() * 9 / 10));
    const auto* files = dialog.findChild<QTreeView*>(QStringLiteral("treeView"));
    if (files == nullptr)
        return;
    files->header()->setSectionResizeMode(QHeaderView::ResizeToContents);
    files->header()->setSectionResizeMode(0, QHeaderView::Stretch);
}

/// Waits until it is closed, by whomever: its own exec() may go on waiting for the desktop's dialog
/// when the program has dismissed it.
void showUntilClosed(QFileDialog& dialog)
{
    QEventLoop loop;
    QObject::connect(&dialog, &QDialog::finished, &loop, &QEventLoop::quit);
    QObject::connect(&dialog, &QObject::destroyed, &loop, &QEventLoop::quit);
    dialog.setModal(true);
    dialog.show();
    loop.exec(QEventLoop::DialogExec);
}

QString chosenFile(const QPointer<QFileDialog>& dialog)
{
    enlarge(*dialog);
    showUntilClosed(*dialog);
    if (!dialog) // it has gone together with its parent
        return {};
    const std::unique_ptr<QFileDialog> finished(dialog);
    const QStringList files = finished->selectedFiles();
    return finished->result() == QDialog::Accepted ? files.value(0) : QString();
}
} // namespace

void DialogPrompt::tell(QWidget* parent, const QString& text, const QString& title, Icon icon)
{
    QMessageBox box(parent);
    fill(box, text, title, icon);
    box.addButton(QStringLiteral("OK"), QMessageBox::AcceptRole);
    box.exec();
}

bool DialogPrompt::askYesNo(QWidget* parent, const QString& text, const QString& title, Icon icon)
{
    QuestionBox box(parent);
    fill(box, text, title, icon);
    QPushButton* yes = box.addButton(QStringLiteral("&Ja"), QMessageBox::YesRole);
    box.addButton(QStringLiteral("&Nein"), QMessageBox::NoRole);
    box.setDefaultButton(yes);
    box.exec();
    return box.clickedButton() == yes;
}

bool DialogPrompt::askOkCancel(QWidget* parent, const QString& text, const QString& title,
                               Icon icon)
{
    QMessageBox box(parent);
    fill(box, text, title, icon);
    QPushButton* ok = box.addButton(QStringLiteral("OK"), QMessageBox::AcceptRole);
    box.setEscapeButton(box.addButton(QStringLiteral("Abbrechen"), QMessageBox::RejectRole));
    box.setDefaultButton(ok);
    box.exec();
    return box.clickedButton() == ok;
}

Prompt::Answer DialogPrompt::ask(QWidget* parent, const Question& question)
{
    const QPointer<QuestionDialog> dialog = new QuestionDialog(question, parent);
    const bool isAccepted = dialog->exec() == QDialog::Accepted;
    if (!dialog) // it has gone together with its parent
        return {};
    const std::unique_ptr<QuestionDialog> finished(dialog);
    return {isAccepted, finished->isChecked(), finished->input()};
}

std::optional<Prompt::LogIn> DialogPrompt::askLogIn(QWidget* parent, const LogInQuestion& question)
{
    const QPointer<LogInDialog> dialog = new LogInDialog(question, parent);
    const bool isAccepted = dialog->exec() == QDialog::Accepted;
    if (!dialog)
        return std::nullopt;
    const std::unique_ptr<LogInDialog> finished(dialog);
    return isAccepted ? std::optional(finished->logIn()) : std::nullopt;
}

QString DialogPrompt::saveFileName(QWidget* parent, const SaveRequest& request)
{
    const QPointer<QFileDialog> dialog = new QFileDialog(parent, request.title, request.directory);
    dialog->setAcceptMode(QFileDialog::AcceptSave);
    dialog->setFileMode(QFileDialog::AnyFile);
    // Those of desktops ask before they overwrite, and cannot be told not to.
    dialog->setOptions(QFileDialog::DontUseNativeDialog | QFileDialog::DontConfirmOverwrite |
                       QFileDialog::HideNameFilterDetails);
    QStringList filters{nameFilter(request.filter)};
    if (!request.secondFilter.isEmpty())
        filters.append(nameFilter(request.secondFilter));
    dialog->setNameFilters(filters);
    return chosenFile(dialog);
}

QString DialogPrompt::saveFileAs(QWidget* parent, const QString& title, const QString& path)
{
    const bool mayBeDesktops = !QCoreApplication::testAttribute(Qt::AA_DontUseNativeDialogs);
    const QPointer<QWidget> owner = parent;
    const QFileInfo file(path);
    const QPointer<QFileDialog> dialog = new QFileDialog(parent, title, file.absolutePath());
    dialog->setAcceptMode(QFileDialog::AcceptSave);
    dialog->setFileMode(QFileDialog::AnyFile);
    dialog->setNameFilters(kindFilters(file.suffix()));
    dialog->selectFile(file.fileName());
    const QString chosen = chosenFile(dialog);
    // The desktop has lost its dialogs while one was open, which was no answer of the user's.
    const bool isLost = chosen.isEmpty() && mayBeDesktops && (owner || parent == nullptr) &&
                        QCoreApplication::testAttribute(Qt::AA_DontUseNativeDialogs);
    return isLost ? saveFileAs(parent, title, path) : chosen;
}
