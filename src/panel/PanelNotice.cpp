#include "panel/PanelNotice.h"

#include <QResizeEvent>

namespace lumivane {

using namespace Qt::StringLiterals;

namespace {

constexpr int paddingAcross = 6, paddingDown = 3; // as in the style sheet
constexpr int borderTop = 1;
constexpr int mostLines = 3;

} // namespace

PanelNotice::PanelNotice(QWidget* parent) : QLabel(parent)
{
    setObjectName(u"noticeLabel"_s);
    setTextFormat(Qt::PlainText);
    setWordWrap(true);
    setAlignment(Qt::AlignLeft | Qt::AlignTop);
    setIndent(0);
    setStyleSheet(
        u"QLabel { background: #fff6dc; color: #5c4a12; border-top: 1px solid #e7d49a; padding: 3px 6px; }"_s);
    hide();
}

void PanelNotice::setNotice(const QString& text)
{
    m_notice = text.simplified();
    setAccessibleName(m_notice);
    setVisible(!m_notice.isEmpty());
    showWhatFits();
}

int PanelNotice::heightFor(int width) const
{
    if (isHidden())
        return 0;
    const QRect room(0, 0, qMax(1, width - 2 * paddingAcross), QWIDGETSIZE_MAX);
    const QFontMetrics metrics = fontMetrics();
    const int height = metrics.boundingRect(room, Qt::TextWordWrap, m_notice).height();
    const int lines = (height + metrics.lineSpacing() - 1) / metrics.lineSpacing();
    return qBound(1, lines, mostLines) * metrics.lineSpacing() + 2 * paddingDown + borderTop;
}

void PanelNotice::resizeEvent(QResizeEvent* event)
{
    QLabel::resizeEvent(event);
    showWhatFits();
}

bool PanelNotice::fits(const QString& text, const QSize& room) const
{
    const QRect wide(0, 0, room.width(), QWIDGETSIZE_MAX);
    const QRect taken = fontMetrics().boundingRect(wide, Qt::TextWordWrap, text);
    return taken.width() <= room.width() && taken.height() <= room.height();
}

void PanelNotice::showWhatFits()
{
    const QSize room = size() - QSize(2 * paddingAcross, 2 * paddingDown + borderTop);
    if (fits(m_notice, room)) {
        setText(m_notice);
        return;
    }
    qsizetype shown = 0, tooLong = m_notice.size();
    while (tooLong - shown > 1) {
        const qsizetype middle = (shown + tooLong) / 2;
        (fits(m_notice.first(middle) + u'…', room) ? shown : tooLong) = middle;
    }
    setText(m_notice.first(shown).trimmed() + u'…');
}

} // namespace lumivane
