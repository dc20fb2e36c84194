#include "browser/SafetyPanel.h"

#include "base/DialogKeys.h"
#include "base/WindowParts.h"

#include <QApplication>
#include <QGridLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLocale>
#include <QPushButton>
#include <QScreen>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;

namespace {

/// In letters of middle width.
constexpr int widthInLetters = 60;

QLabel* makeLine(const QString& name)
{
    auto* const line = new QLabel;
    line->setObjectName(name);
    line->setTextFormat(Qt::PlainText);
    line->setWordWrap(true);
    return line;
}

QString certificateText(const PageSafety& safety)
{
    if (safety.certificate) {
        const PageSafety::Certificate& one = *safety.certificate;
        return u"%1\nAusgestellt von: %2\nGültig bis: %3"_s.arg(
            one.problem, one.issuer,
            QLocale().toString(one.until.toLocalTime().date(), QLocale::LongFormat));
    }
    return safety.kind == PageSafety::Kind::Secured
               ? u"Wer das Zertifikat ausgestellt hat und bis wann es gilt, sagt der Teil von "
                 "Tessera nicht, der die Seiten anzeigt."_s
               : QString();
}

} // namespace

SafetyPanel::SafetyPanel(QWidget* sign)
    : QFrame(sign, Qt::Popup), m_sign(sign), m_name(makeLine(u"lblSafety"_s)),
      m_siteLine(makeLine(u"lblSite"_s)), m_sentence(makeLine(u"lblSentence"_s)),
      m_certificate(makeLine(u"lblCertificate"_s)), m_answersCaption(makeLine(u"lblAnswers"_s)),
      m_note(makeLine(u"lblNote"_s)), m_layout(new QVBoxLayout(this)),
      m_close(makeButton(u"cmdClose"_s, u"Schließen"_s))
{
    setObjectName(u"SafetyPanel"_s);
    setFrameShape(QFrame::StyledPanel);
    QFont bold = font();
    bold.setBold(true);
    m_name->setFont(bold);
    m_note->setText(u"Zurückgenommen. Was schon läuft, etwa eine Aufnahme, endet erst, wenn Sie "
                    "die Seite neu laden (F5)."_s);
    for (QLabel* line : {m_name, m_siteLine, m_sentence, m_certificate, m_answersCaption, m_note})
        m_layout->addWidget(line);
    m_layout->addWidget(m_close, 0, Qt::AlignRight);
    connect(m_close, &QPushButton::clicked, this, &QWidget::close);
}

void SafetyPanel::show(const PageSafety& safety)
{
    m_note->hide();
    setFixedWidth(qMin(QFontMetrics(font()).averageCharWidth() * widthInLetters,
                       m_sign->screen()->availableGeometry().width()));
    fill(safety);
    m_close->setFocus();
    // A question comes in a window of its own, which could not have the keys beside this one.
    m_sign->window()->installEventFilter(this);
    QFrame::show();
}

void SafetyPanel::change(const PageSafety& safety)
{
    if (isHidden())
        return;
    if (safety.site == m_site)
        fill(safety);
    else
        close();
}

void SafetyPanel::fill(const PageSafety& safety)
{
    m_site = safety.site;
    // Nobody shows the title, but assistive tools name it.
    setWindowTitle(u"Sicherheit der Seite: "_s + safetyName(safety.kind));
    m_name->setText(safetyName(safety.kind));
    m_siteLine->setText(safety.site);
    m_siteLine->setVisible(!safety.site.isEmpty());
    m_sentence->setText(safetySentence(safety));
    m_certificate->setText(certificateText(safety));
    m_certificate->setVisible(!m_certificate->text().isEmpty());
    m_answersCaption->setText(safety.answers.isEmpty()
                                  ? u"Sie haben der Seite nichts erlaubt."_s
                                  : u"Was Sie gesagt haben, seit Tessera läuft:"_s);
    delete m_answers;
    m_answers = new QWidget;
    auto* const rows = new QGridLayout(m_answers);
    rows->setContentsMargins({});
    rows->setColumnStretch(0, 1);
    m_layout->insertWidget(m_layout->indexOf(m_answersCaption) + 1, m_answers);
    for (const PageSafety::Answer& answer : safety.answers)
        addAnswer(answer);
    setTabOrder(m_answers, m_close);
    m_answers->setVisible(!safety.answers.isEmpty());
    if (focusWidget() == nullptr) // its button has gone with the answer
        m_close->setFocus();
    place();
}

void SafetyPanel::addAnswer(const PageSafety::Answer& answer)
{
    auto* const rows = static_cast<QGridLayout*>(m_answers->layout());
    const int row = rows->rowCount();
    QLabel* const line = makeLine(u"lblAnswer"_s);
    line->setText(answer.text);
    rows->addWidget(line, row, 0);
    QPushButton* const button = makeButton(u"cmdTakeBack"_s, u"Zurücknehmen"_s);
    button->setAccessibleDescription(answer.text);
    rows->addWidget(button, row, 1);
    connect(button, &QPushButton::clicked, this, [this, id = answer.id] {
        m_note->show();
        emit takeBackWanted(id);
    });
}

void SafetyPanel::place()
{
    m_layout->activate();
    resize(width(), m_layout->hasHeightForWidth() ? m_layout->totalHeightForWidth(width())
                                                  : sizeHint().height());
    const QRect screen = m_sign->screen()->availableGeometry();
    QRect where({}, size());
    where.moveTopLeft(m_sign->mapToGlobal(m_sign->rect().bottomLeft()) + QPoint(0, 2));
    where.moveRight(qMin(where.right(), screen.right()));
    where.moveBottom(qMin(where.bottom(), screen.bottom()));
    where.moveLeft(qMax(where.left(), screen.left()));
    where.moveTop(qMax(where.top(), screen.top()));
    move(where.topLeft());
}

bool SafetyPanel::event(QEvent* event)
{
    // Keys of the window behind it work in a pop-up, too: Escape would stop a load.
    if (event->type() == QEvent::ShortcutOverride) {
        event->accept();
        return true;
    }
    return QFrame::event(event);
}

void SafetyPanel::keyPressEvent(QKeyEvent* event)
{
    auto* const button = qobject_cast<QPushButton*>(focusWidget());
    if (isEscapeKey(*event))
        close();
    else if (isEnterKey(*event) && button != nullptr)
        button->click();
    else
        QFrame::keyPressEvent(event);
}

void SafetyPanel::mousePressEvent(QMouseEvent* event)
{
    // The click that closes it would open it again.
    setAttribute(Qt::WA_NoMouseReplay,
                 QApplication::widgetAt(event->globalPosition().toPoint()) == m_sign);
    QFrame::mousePressEvent(event);
}

bool SafetyPanel::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() == QEvent::WindowBlocked)
        close();
    return QFrame::eventFilter(watched, event);
}
