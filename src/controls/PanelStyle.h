#pragma once

#include <QFont>
#include <QProxyStyle>

namespace lumivane {

/// Draws panel windows: a slim title with the caption at its left (centring is done by the caption's own blanks), one
/// thin border, and buttons that are lines. All else is left to the style below it, but for buttons of dialogs, which
/// carry no icons.
class PanelStyle : public QProxyStyle
{
    Q_OBJECT

public:
    PanelStyle();

    static QFont captionFont();
    /// Light text on a dark ground.
    static bool isDark(const QPalette& palette);
    /// A panel window whose property of this name is true gets a sign in its title.
    static constexpr const char* noticeProperty = "panelNotice";
    enum class Frame { Plain, Marked, Base };
    /// What frame a panel window has, a Frame as a number.
    static constexpr const char* markProperty = "panelMark";

    int pixelMetric(PixelMetric metric, const QStyleOption* option, const QWidget* widget) const override;
    int styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
                  QStyleHintReturn* returned) const override;
    void drawComplexControl(ComplexControl control, const QStyleOptionComplex* option, QPainter* painter,
                            const QWidget* widget) const override;
    void drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                       const QWidget* widget) const override;
    QRect subControlRect(ComplexControl control, const QStyleOptionComplex* option, SubControl subControl,
                         const QWidget* widget) const override;
};

} // namespace lumivane
