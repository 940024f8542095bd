#include "viewer/FindBar.h"

#include "viewer/ViewerColors.h"

#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QToolButton>

namespace lumivane {

using namespace Qt::StringLiterals;

namespace {

QToolButton* findBarButton(const QString& objectName, const QString& hint)
{
    auto* button = new QToolButton;
    button->setObjectName(objectName);
    button->setAutoRaise(true);
    button->setToolTip(hint);
    button->setAccessibleName(hint);
    return button;
}

} // namespace

FindBar::FindBar(QWidget* parent)
    : QFrame(parent), m_text(new QLineEdit), m_remark(new QLabel),
      m_previous(findBarButton(u"findPreviousButton"_s, u"Find previous (Shift+F3)"_s)),
      m_next(findBarButton(u"findNextButton"_s, u"Find next (F3)"_s)),
      m_close(findBarButton(u"findCloseButton"_s, u"Close (Esc)"_s))
{
    setObjectName(u"findBar"_s);
    m_text->setObjectName(u"findLineEdit"_s);
    m_text->setPlaceholderText(u"Find in this sheet"_s);
    m_text->setAccessibleName(u"Text to find"_s);
    m_text->setClearButtonEnabled(true);
    m_text->setMinimumWidth(240);
    m_remark->setObjectName(u"findRemarkLabel"_s);
    auto* layout = new QHBoxLayout(this);
    layout->setContentsMargins(10, 4, 8, 4);
    layout->setSpacing(4);
    layout->addWidget(m_text);
    layout->addWidget(m_previous);
    layout->addWidget(m_next);
    layout->addSpacing(8);
    layout->addWidget(m_remark, 1);
    layout->addWidget(m_close);
    connect(m_text, &QLineEdit::textEdited, this, &FindBar::textEdited);
    connect(m_previous, &QToolButton::clicked, this, [this] { Q_EMIT findRequested(false); });
    connect(m_next, &QToolButton::clicked, this, [this] { Q_EMIT findRequested(true); });
    connect(m_close, &QToolButton::clicked, this, &FindBar::close);
    applyIcons();
    hide();
}

void FindBar::open()
{
    show();
    m_text->setFocus(Qt::ShortcutFocusReason);
    m_text->selectAll();
}

void FindBar::close()
{
    hide();
    Q_EMIT closed();
}

QString FindBar::text() const
{
    return m_text->text();
}

void FindBar::showOutcome(bool found, const QString& remark)
{
    m_remark->setText(remark);
    QPalette colors = palette();
    if (!found)
        colors.setColor(QPalette::Text,
                        ViewerColors(colors).dark ? QColor(0xff, 0x8a, 0x80) : QColor(0xb3, 0x26, 0x1e));
    m_text->setPalette(colors);
}

void FindBar::keyPressEvent(QKeyEvent* event)
{
    if (event->key() == Qt::Key_Escape)
        close();
    else if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter)
        Q_EMIT findRequested(!(event->modifiers() & Qt::ShiftModifier));
    else
        QFrame::keyPressEvent(event);
}

void FindBar::changeEvent(QEvent* event)
{
    QFrame::changeEvent(event);
    if (event->type() == QEvent::PaletteChange)
        applyIcons();
}

void FindBar::applyIcons()
{
    m_previous->setIcon(viewerIcon(u"previous"_s, palette()));
    m_next->setIcon(viewerIcon(u"next"_s, palette()));
    m_close->setIcon(viewerIcon(u"close"_s, palette()));
}

} // namespace lumivane
