#include "app/frmAbout.h"

#include "base/DialogKeys.h"
#include "base/Maker.h"
#include "base/Shell.h"

#include <QFrame>
#include <QIcon>
#include <QKeyEvent>
#include <QLabel>
#include <QVBoxLayout>

namespace {
QLabel* plainLabel(const QString& name, const QString& text)
{
    auto* label = new QLabel;
    label->setObjectName(name);
    label->setTextFormat(Qt::PlainText);
    label->setText(text);
    return label;
}
} // namespace

frmAbout::frmAbout(const Shell& shell, QWidget* owner)
    : QDialog(owner, Qt::Dialog | Qt::CustomizeWindowHint | Qt::WindowTitleHint)
{
    setObjectName(QStringLiteral("frmAbout"));
    setAttribute(Qt::WA_DeleteOnClose);
    setWindowTitle(QStringLiteral("Info über ") + shell.title());
    setWindowIcon(shell.frameIcon());
    buildControls(shell);
}

void frmAbout::buildControls(const Shell& shell)
{
    constexpr int iconSize = 64;
    auto* frame = new QFrame(this);
    frame->setObjectName(QStringLiteral("Frame1"));
    frame->setFrameShape(QFrame::StyledPanel);

    auto* icon = new QLabel;
    icon->setObjectName(QStringLiteral("picIcon"));
    icon->setPixmap(shell.frameIcon().pixmap(QSize(iconSize, iconSize), devicePixelRatioF()));
    QLabel* title = plainLabel(QStringLiteral("Label1"), shell.title());
    QFont large = title->font();
    large.setBold(true);
    large.setPointSizeF(large.pointSizeF() * 1.4);
    title->setFont(large);
    const QStringList contact{QStringLiteral("Ein Tool von Loomwork"), maker::webSite(),
                              maker::downloadPage(), maker::email()};
    QLabel* details = plainLabel(QStringLiteral("Label2"), contact.join(QLatin1Char('\n')));

    auto* texts = new QVBoxLayout;
    texts->addWidget(title);
    texts->addWidget(details);
    texts->addStretch();
    auto* inside = new QHBoxLayout(frame);
    inside->setSpacing(2 * inside->spacing());
    inside->addWidget(icon, 0, Qt::AlignTop);
    inside->addLayout(texts);
    auto* outside = new QVBoxLayout(this);
    outside->addWidget(frame);
    outside->setSizeConstraint(QLayout::SetFixedSize);
}

bool frmAbout::event(QEvent* event)
{
    if (event->type() == QEvent::WindowDeactivate)
        close();
    return QDialog::event(event);
}

void frmAbout::keyPressEvent(QKeyEvent* event)
{
    if (isEscapeKey(*event))
        close();
    else
        QDialog::keyPressEvent(event);
}
