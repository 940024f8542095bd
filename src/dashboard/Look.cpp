#include "dashboard/Look.h"

#include "panel/PanelStyle.h"

#include <QApplication>

// Outside the namespace, as the macro demands.
static void initDashboardResource()
{
    Q_INIT_RESOURCE(dashboard);
}

namespace lumivane {

using namespace Qt::StringLiterals;

namespace {

QPalette calmPalette()
{
    QPalette palette(QColor(0xf1, 0xf4, 0xf7));
    const QColor text(0x22, 0x2f, 0x3c);
    palette.setColor(QPalette::Base, Qt::white);
    palette.setColor(QPalette::AlternateBase, QColor(0xf6, 0xf8, 0xfa));
    palette.setColor(QPalette::Highlight, QColor(0x2f, 0x7f, 0xb8));
    palette.setColor(QPalette::HighlightedText, Qt::white);
    for (const QPalette::ColorRole role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText})
        palette.setColor(role, text);
    palette.setColor(QPalette::PlaceholderText, QColor(0x8a, 0x96, 0xa3));
    for (const QPalette::ColorRole role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText})
        palette.setColor(QPalette::Disabled, role, QColor(0xa6, 0xaf, 0xb9));
    return palette;
}

} // namespace

QIcon dashboardIcon(const QString& name)
{
    initDashboardResource();
    return QIcon(u":/icons/"_s + name + u".svg"_s);
}

void applyLook(QApplication& application)
{
    QApplication::setStyle(new PanelStyle);
    QApplication::setPalette(calmPalette());
    // Icons of dark lines cannot be read on a strong highlight.
    QPalette menus = calmPalette();
    menus.setColor(QPalette::Highlight, QColor(0xd7, 0xe6, 0xf2));
    menus.setColor(QPalette::HighlightedText, menus.color(QPalette::Text));
    QApplication::setPalette(menus, "QMenu");
    QApplication::setPalette(menus, "QMenuBar");
    QApplication::setFont(PanelStyle::captionFont(), "QMdiSubWindowTitleBar");
    QApplication::setWindowIcon(dashboardIcon(u"lumivane"_s));
    application.setStyleSheet(
        u"QToolBar { border: 0; border-bottom: 1px solid #d9e0e6; padding: 4px 6px; spacing: 4px; }"
        "QStatusBar { border-top: 1px solid #d9e0e6; }"
        "QStatusBar::item { border: 0; }"
        "QMenuBar { background: transparent; border: 0; padding: 2px 4px; }"
        "QMenuBar::item { background: transparent; padding: 4px 9px; border-radius: 4px; }"
        "QMenuBar::item:selected { background: #d7e6f2; }"
        "QScrollBar { background: #f3f5f8; border: 0; }"
        "QScrollBar:vertical { width: 12px; }"
        "QScrollBar:horizontal { height: 12px; }"
        "QScrollBar::handle { background: #bcc8d3; border-radius: 4px; margin: 2px; }"
        "QScrollBar::handle:vertical { min-height: 24px; }"
        "QScrollBar::handle:horizontal { min-width: 24px; }"
        "QScrollBar::handle:hover { background: #93a7b8; }"
        "QScrollBar::add-line, QScrollBar::sub-line { width: 0; height: 0; }"
        "QScrollBar::add-page, QScrollBar::sub-page { background: none; }"_s);
}

} // namespace lumivane
