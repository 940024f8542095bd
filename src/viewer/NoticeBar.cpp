#include "viewer/NoticeBar.h"

#include "viewer/ViewerColors.h"

#include <QEvent>
#include <QHBoxLayout>
#include <QLabel>
#include <QPainter>
#include <QPushButton>

namespace lumivane {

using namespace Qt::StringLiterals;

NoticeBar::NoticeBar(QWidget* parent)
    : QFrame(parent), m_icon(new QLabel), m_text(new QLabel), m_action(new QPushButton), m_dismiss(new QPushButton)
{
    setObjectName(u"noticeBar"_s);
    m_text->setObjectName(u"noticeLabel"_s);
    m_text->setTextFormat(Qt::PlainText); // names of files stand in it
    m_text->setWordWrap(true);
    m_action->setObjectName(u"noticeActionButton"_s);
    m_dismiss->setObjectName(u"noticeDismissButton"_s);
    m_dismiss->setText(u"Dismiss"_s);
    auto* layout = new QHBoxLayout(this);
    layout->setContentsMargins(12, 6, 8, 6);
    layout->setSpacing(8);
    layout->addWidget(m_icon);
    layout->addWidget(m_text, 1);
    layout->addWidget(m_action);
    layout->addWidget(m_dismiss);
    connect(m_action, &QPushButton::clicked, this, &NoticeBar::actionRequested);
    connect(m_dismiss, &QPushButton::clicked, this, &QWidget::hide);
    applyIcon();
    hide();
}

void NoticeBar::tell(const QString& text, const QString& actionText)
{
    m_text->setText(text);
    m_action->setText(actionText);
    m_action->setVisible(!actionText.isEmpty());
    setAccessibleName(text);
    show();
}

QString NoticeBar::text() const
{
    return m_text->text();
}

void NoticeBar::changeEvent(QEvent* event)
{
    QFrame::changeEvent(event);
    if (event->type() == QEvent::PaletteChange)
        applyIcon();
}

void NoticeBar::applyIcon()
{
    m_icon->setPixmap(viewerIcon(u"notice"_s, palette()).pixmap(QSize(18, 18), devicePixelRatioF()));
}

/// Painted here and not by a style sheet, which would change the palette that the colours are made from.
void NoticeBar::paintEvent(QPaintEvent*)
{
    const ViewerColors colors(palette());
    QPainter painter(this);
    painter.fillRect(rect(), colors.noticeGround);
    painter.fillRect(QRect(0, height() - 1, width(), 1), colors.noticeLine);
}

} // namespace lumivane
