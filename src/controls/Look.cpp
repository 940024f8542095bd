#include "controls/Look.h"

#include "controls/DrawnIcon.h"
#include "controls/PanelStyle.h"

#include <QApplication>
#include <QEvent>
#include <QFile>
#include <QWindow>

// Outside the namespace, as the macro demands.
static void initControlsResource()
{
    Q_INIT_RESOURCE(controls);
}

namespace lumivane {

using namespace Qt::StringLiterals;

namespace {

/// The colours that no palette role holds stand in the style sheet.
struct LookColors
{
    QRgb window, base, alternate, text, quietText, disabledText, link;
    QRgb menuHighlight, line, barGround, barHandle, barHandleHot;
};

constexpr LookColors lightLook = {0xfff1f4f7, 0xffffffff, 0xfff6f8fa, 0xff222f3c, 0xff8a96a3, 0xffa6afb9,
                                  0xff1f74b0, 0xffd7e6f2, 0xffd9e0e6, 0xfff3f5f8, 0xffbcc8d3, 0xff93a7b8};
constexpr LookColors darkLook = {0xff2a3037, 0xff20252b, 0xff262c33, 0xffdfe5eb, 0xff8a96a3, 0xff6f7a86,
                                 0xff63b1e6, 0xff3a5165, 0xff414a54, 0xff242a30, 0xff55616d, 0xff71808f};
constexpr QRgb lookHighlight = 0xff2f7fb8;

QPalette lookPalette(const LookColors& colors)
{
    QPalette palette{QColor(colors.window)};
    palette.setColor(QPalette::Base, colors.base);
    palette.setColor(QPalette::AlternateBase, colors.alternate);
    palette.setColor(QPalette::Highlight, lookHighlight);
    palette.setColor(QPalette::HighlightedText, Qt::white);
    palette.setColor(QPalette::Link, colors.link);
    palette.setColor(QPalette::ToolTipBase, colors.base);
    palette.setColor(QPalette::ToolTipText, colors.text);
    for (const QPalette::ColorRole role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText})
        palette.setColor(role, colors.text);
    palette.setColor(QPalette::PlaceholderText, colors.quietText);
    for (const QPalette::ColorRole role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText})
        palette.setColor(QPalette::Disabled, role, colors.disabledText);
    return palette;
}

QString lookStyleSheet(const LookColors& colors)
{
    const auto name = [](QRgb color) { return QColor(color).name(); };
    return u"QToolBar { border: 0; border-bottom: 1px solid %1; padding: 4px 6px; spacing: 4px; }"
           "QStatusBar { border-top: 1px solid %1; }"
           "QStatusBar::item { border: 0; }"
           "QMenuBar { background: transparent; border: 0; padding: 2px 4px; }"
           "QMenuBar::item { background: transparent; padding: 4px 9px; border-radius: 4px; }"
           "QMenuBar::item:selected { background: %2; }"
           "QScrollBar { background: %3; border: 0; }"
           "QScrollBar:vertical { width: 12px; }"
           "QScrollBar:horizontal { height: 12px; }"
           "QScrollBar::handle { background: %4; border-radius: 4px; margin: 2px; }"
           "QScrollBar::handle:vertical { min-height: 24px; }"
           "QScrollBar::handle:horizontal { min-width: 24px; }"
           "QScrollBar::handle:hover { background: %5; }"
           "QScrollBar::add-line, QScrollBar::sub-line { width: 0; height: 0; }"
           "QScrollBar::add-page, QScrollBar::sub-page { background: none; }"_s.arg(
               name(colors.line), name(colors.menuHighlight), name(colors.barGround), name(colors.barHandle),
               name(colors.barHandleHot));
}

/// Follows a desktop that changes its colours: the windows are told, then the palette is asked anew.
class DesktopColors : public QObject
{
public:
    using QObject::QObject;

    static bool areDark()
    {
        QApplication::setPalette(QPalette()); // what the desktop, or without one the style, has
        return PanelStyle::isDark(QApplication::palette());
    }

    bool eventFilter(QObject* watched, QEvent* event) override
    {
        if (event->type() == QEvent::ThemeChange && qobject_cast<QWindow*>(watched))
            applyColors(*qApp, areDark());
        return QObject::eventFilter(watched, event);
    }
};

} // namespace

QIcon dashboardIcon(const QString& name)
{
    initControlsResource();
    QFile file(u":/icons/"_s + name + u".svg"_s);
    return file.open(QIODevice::ReadOnly) ? QIcon(new DrawnIcon(file.readAll())) : QIcon();
}

void applyLook(QApplication& application)
{
    const bool dark = DesktopColors::areDark();
    QApplication::setStyle(new PanelStyle);
    applyColors(application, dark);
    QApplication::setFont(PanelStyle::captionFont(), "QMdiSubWindowTitleBar");
    QApplication::setWindowIcon(dashboardIcon(u"lumivane"_s));
    application.installEventFilter(new DesktopColors(&application));
}

void applyColors(QApplication& application, bool dark)
{
    const LookColors& colors = dark ? darkLook : lightLook;
    QApplication::setPalette(lookPalette(colors));
    // Icons of thin lines cannot be read on a strong highlight.
    QPalette menus = lookPalette(colors);
    menus.setColor(QPalette::Highlight, colors.menuHighlight);
    menus.setColor(QPalette::HighlightedText, menus.color(QPalette::Text));
    QApplication::setPalette(menus, "QMenu");
    QApplication::setPalette(menus, "QMenuBar");
    application.setStyleSheet(lookStyleSheet(colors));
}

} // namespace lumivane
