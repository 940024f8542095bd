#include "controls/PanelStyle.h"

#include <QFontDatabase>
#include <QPainter>
#include <QStyleOption>
#include <algorithm>

namespace lumivane {

namespace {

constexpr int titlePadding = 8;
constexpr int titleButton = 18;
/// Wide enough to be caught with the mouse for resizing; only its outermost pixel is drawn as a line.
constexpr int panelBorder = 4;
constexpr int titleHeight = 22;
constexpr int noticeSign = 12;
constexpr int markedLine = 3;

struct PanelColors
{
    QColor title, text, line;
    int lineWidth = 1;
};

PanelColors darkPanelColors(bool active, int mark)
{
    if (mark == static_cast<int>(PanelStyle::Frame::Base))
        return {QColor(0x5c, 0x3c, 0x18), QColor(0xfb, 0xe6, 0xcf), QColor(0xe8, 0x8c, 0x26), markedLine};
    if (mark == static_cast<int>(PanelStyle::Frame::Marked))
        return {QColor(0x1f, 0x44, 0x62), QColor(0xd9, 0xec, 0xfa), QColor(0x3f, 0x9a, 0xdd), markedLine};
    if (active)
        return {QColor(0x3a, 0x46, 0x52), QColor(0xee, 0xf3, 0xf8), QColor(0x7d, 0x93, 0xa8)};
    return {QColor(0x2d, 0x33, 0x3a), QColor(0xa9, 0xb5, 0xc1), QColor(0x4b, 0x55, 0x60)};
}

PanelColors panelColors(bool active, const QWidget* panel)
{
    const int mark = panel ? panel->property(PanelStyle::markProperty).toInt() : 0;
    if (panel && PanelStyle::isDark(panel->palette()))
        return darkPanelColors(active, mark);
    if (mark == static_cast<int>(PanelStyle::Frame::Base))
        return {QColor(0xfc, 0xe4, 0xcb), QColor(0x4a, 0x2a, 0x06), QColor(0xd9, 0x78, 0x0d), markedLine};
    if (mark == static_cast<int>(PanelStyle::Frame::Marked))
        return {QColor(0xd3, 0xe7, 0xf7), QColor(0x10, 0x33, 0x50), QColor(0x1f, 0x7f, 0xc4), markedLine};
    if (active)
        return {QColor(0xe8, 0xef, 0xf5), QColor(0x1f, 0x2d, 0x3d), QColor(0x8f, 0xa9, 0xbf)};
    return {QColor(0xf4, 0xf6, 0xf8), QColor(0x5a, 0x67, 0x75), QColor(0xd5, 0xdb, 0xe1)};
}

bool isHot(const QStyleOptionTitleBar& title, QStyle::SubControl control)
{
    return title.activeSubControls.testFlag(control) && title.state.testFlag(QStyle::State_MouseOver);
}

/// An amber triangle with its sign: something about the panel's picture has to be read.
void drawNoticeSign(QPainter& painter, const QRect& title)
{
    const QRectF place(title.left() + titlePadding, title.top() + (title.height() - noticeSign) / 2.0, noticeSign,
                       noticeSign);
    const QColor amber(0xc9, 0x8a, 0x1b);
    painter.setPen(QPen(amber, 1.4, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    painter.setBrush(QColor(0xfd, 0xf2, 0xd8));
    painter.drawPolygon(QPolygonF({QPointF(place.center().x(), place.top()), place.bottomRight(), place.bottomLeft()}));
    painter.drawLine(place.center() - QPointF(0, 1), place.center() + QPointF(0, 2));
    painter.drawPoint(place.center() + QPointF(0, 4.2));
}

struct CaptionPlace
{
    QString text;
    QRect place;
};

/// A caption is centred by the blanks in front of it. They give way to the sign and to the button before the text does.
CaptionPlace captionPlace(const QString& caption, QRect room, int signRoom)
{
    const QFontMetrics metrics(PanelStyle::captionFont());
    const QString text = caption.trimmed();
    const qsizetype blanks = caption.indexOf(text);
    const int left = room.left() + metrics.horizontalAdvance(caption.first(blanks));
    const int last = room.right() + 1 - metrics.horizontalAdvance(text);
    room.setLeft(std::max(room.left() + signRoom, std::min(left, last)));
    return {metrics.elidedText(text, Qt::ElideRight, room.width()), room};
}

void fillEdges(QPainter& painter, const QRect& rect, const PanelColors& colors, bool withBottom)
{
    const int width = colors.lineWidth;
    painter.fillRect(rect.left(), rect.top(), rect.width(), width, colors.line);
    if (withBottom)
        painter.fillRect(rect.left(), rect.bottom() + 1 - width, rect.width(), width, colors.line);
    painter.fillRect(rect.left(), rect.top(), width, rect.height(), colors.line);
    painter.fillRect(rect.right() + 1 - width, rect.top(), width, rect.height(), colors.line);
}

void drawMinimizeButton(QPainter& painter, const QRect& button, const QColor& color, bool restores)
{
    painter.setPen(QPen(color, 1.4));
    const QRectF glyph = QRectF(button).adjusted(5, 5, -5, -5);
    const qreal middle = button.center().y() + 0.5;
    if (restores)
        painter.drawRect(glyph);
    else
        painter.drawLine(QPointF(glyph.left(), middle), QPointF(glyph.right(), middle));
}

} // namespace

PanelStyle::PanelStyle() : QProxyStyle(QStringLiteral("Fusion")) {}

bool PanelStyle::isDark(const QPalette& palette)
{
    return palette.color(QPalette::Active, QPalette::Window).lightness() <
           palette.color(QPalette::Active, QPalette::WindowText).lightness();
}

QFont PanelStyle::captionFont()
{
    QFont font = QFontDatabase::systemFont(QFontDatabase::TitleFont);
    font.setPointSizeF(qMax(8.0, QFontDatabase::systemFont(QFontDatabase::GeneralFont).pointSizeF()));
    font.setWeight(QFont::DemiBold);
    return font;
}

int PanelStyle::pixelMetric(PixelMetric metric, const QStyleOption* option, const QWidget* widget) const
{
    switch (metric) {
    case PM_TitleBarHeight:
        return qMax(titleHeight, QFontMetrics(captionFont()).height() + 6);
    case PM_MdiSubWindowFrameWidth:
        return panelBorder;
    case PM_MdiSubWindowMinimizedWidth:
        return 200;
    case PM_ScrollBarExtent:
        return 12;
    default:
        return QProxyStyle::pixelMetric(metric, option, widget);
    }
}

int PanelStyle::styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
                          QStyleHintReturn* returned) const
{
    // Square corners: a mask cannot round them without steps.
    if (hint == SH_WindowFrame_Mask)
        return 0;
    if (hint == SH_DialogButtonBox_ButtonsHaveIcons)
        return 0;
    return QProxyStyle::styleHint(hint, option, widget, returned);
}

QRect PanelStyle::subControlRect(ComplexControl control, const QStyleOptionComplex* option, SubControl subControl,
                                 const QWidget* widget) const
{
    const auto* title = qstyleoption_cast<const QStyleOptionTitleBar*>(option);
    if (control != CC_TitleBar || !title)
        return QProxyStyle::subControlRect(control, option, subControl, widget);

    const bool minimized = title->titleBarState & Qt::WindowMinimized;
    const QRect button(title->rect.right() - titlePadding / 2 - titleButton,
                       title->rect.top() + (title->rect.height() - titleButton) / 2, titleButton, titleButton);
    switch (subControl) {
    case SC_TitleBarLabel:
        return visualRect(title->direction, title->rect,
                          QRect(QPoint(title->rect.left() + titlePadding, title->rect.top()),
                                QPoint(button.left() - 2, title->rect.bottom())));
    case SC_TitleBarMinButton:
        return minimized ? QRect() : visualRect(title->direction, title->rect, button);
    case SC_TitleBarNormalButton:
        return minimized ? visualRect(title->direction, title->rect, button) : QRect();
    default:
        return {};
    }
}

void PanelStyle::drawComplexControl(ComplexControl control, const QStyleOptionComplex* option, QPainter* painter,
                                    const QWidget* widget) const
{
    const auto* title = qstyleoption_cast<const QStyleOptionTitleBar*>(option);
    if (control != CC_TitleBar || !title) {
        QProxyStyle::drawComplexControl(control, option, painter, widget);
        return;
    }

    const PanelColors colors = panelColors(title->titleBarState & State_Active, widget);
    painter->save();
    painter->setRenderHint(QPainter::Antialiasing, false);
    painter->fillRect(title->rect, colors.title);
    // The frame's own line is only drawn below the title.
    fillEdges(*painter, title->rect, colors, false);
    painter->setPen(colors.text);
    painter->setFont(captionFont());
    const bool hasNotice = widget && widget->property(noticeProperty).toBool();
    const CaptionPlace caption = captionPlace(title->text, subControlRect(control, title, SC_TitleBarLabel, widget),
                                              hasNotice ? noticeSign + titlePadding : 0);
    painter->drawText(caption.place, Qt::AlignLeft | Qt::AlignVCenter | Qt::TextSingleLine, caption.text);

    painter->setRenderHint(QPainter::Antialiasing);
    if (hasNotice)
        drawNoticeSign(*painter, title->rect);
    for (const SubControl button : {SC_TitleBarMinButton, SC_TitleBarNormalButton}) {
        const QRect place = subControlRect(control, title, button, widget);
        if (place.isEmpty())
            continue;
        if (isHot(*title, button))
            painter->fillRect(place, colors.line);
        drawMinimizeButton(*painter, place, colors.text, button == SC_TitleBarNormalButton);
    }
    painter->restore();
}

void PanelStyle::drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                               const QWidget* widget) const
{
    if (element != PE_FrameWindow || !widget || !widget->inherits("QMdiSubWindow")) {
        QProxyStyle::drawPrimitive(element, option, painter, widget);
        return;
    }
    fillEdges(*painter, option->rect, panelColors(option->state & State_Active, widget), true);
}

} // namespace lumivane
