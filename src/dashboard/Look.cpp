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
    QApplication::setFont(PanelStyle::captionFont(), "QMdiSubWindowTitleBar");
    QApplication::setWindowIcon(dashboardIcon(u"lumivane"_s));
    application.setStyleSheet(
        u"QToolBar { border: 0; border-bottom: 1px solid #d9e0e6; padding: 4px 6px; spacing: 4px; }"
        "QStatusBar { border-top: 1px solid #d9e0e6; }"
        "QStatusBar::item { border: 0; }"
        "QMainWindow > QMenuBar { padding: 2px 4px; }"_s);
}

} // namespace lumivane
